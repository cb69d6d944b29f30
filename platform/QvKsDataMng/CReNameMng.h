#pragma once

#include <QStringList>

// Rename relations of the attribute library: which categories hold names that may
// stand for one another.
class CReNameMng
{
public:
    // For a small category's index (SmallCategoryIdToIndex): that category and its
    // related ones, as ids "3\1\1", the category itself first. False for an unknown
    // index.
    static bool GetUpDetail(const QString& categoryIndex, QStringList& categoryIds);
};
