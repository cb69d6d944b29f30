#pragma once

#include "SysCodeSpecialtyType.h"

#include <QString>

class CQVSpecTypeInfoGet
{
public:
    // The number of a specialty name, exact spelling; eSpecNone for any other text.
    static ESysCodeSpecType GetSpecTypeByName(const QString& spec);
    static ESysCodeSpecType GetSpecTypeByName(const wchar_t* spec);
    // The name of a number; empty for an unknown one.
    static QString GetSpecNameByType(int type);
};
