#pragma once

// The module's icons, drawn rather than shipped as files.
#include <QIcon>

// The icon of that resource id (IDI_SYSCODE_ICON); a null icon for another id.
QIcon LoadSysCodeIcon(int resourceId);
