#pragma once

#include <QString>

// Categories of the attribute library.
class CSys
{
public:
    // "3\1\1" -> "电气\管线\导线·导管"; also one or two numbers for a major or
    // middle category. Empty when unknown.
    static QString GetNamePath(const QString& categoryId);
};
