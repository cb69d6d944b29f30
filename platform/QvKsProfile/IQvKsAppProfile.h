#pragma once

#include <QString>

// The application profile: the folder that holds the product's settings files
// ("SysCodeMng.ini") and its exchange folders ("系统编号").
class IQvKsAppProfile
{
public:
    virtual ~IQvKsAppProfile() = default;
    // The profile folder, without a trailing separator; empty while no project is open.
    virtual QString GetPath() const = 0;
};
