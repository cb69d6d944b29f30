#pragma once

class IQvKsAppProfile;
class QString;

namespace QvKsProfile {

// The process-wide profile. Never null; its path is empty until a folder is set.
IQvKsAppProfile* GetAppProfile();

// Set by the data service when a project opens (its profile folder) and cleared
// when it closes.
void SetProfilePath(const QString& folder);

} // namespace QvKsProfile
