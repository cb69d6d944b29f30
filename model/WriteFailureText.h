#pragma once

// The warning a failed file write gives the user: the file, and why it was not
// written, in the module's words. The old file is always left as it was, and the
// text says so. Without the ending "!", which the caller adds as for every warning.
#include "QvKsWriteStatus.h"

#include <QString>

// "无法写入文件 PATH：磁盘空间已满（No space left on device）；原有文件保持不变".
// Empty for a write that was done.
QString WriteFailureText(const QvKsWriteStatus& status);
// The reason alone: "磁盘空间已满", "没有写入权限" …
QString WriteFailureReason(QvKsWriteStatus::Kind kind);
