#pragma once

#include <QString>

class IFloorMng
{
public:
    // The absolute path of the floor's drawing file (which may not exist on disk);
    // empty for an unknown floor or when no project is open.
    static QString GetDwgFullNameByFloorName(const QString& floor);
};
