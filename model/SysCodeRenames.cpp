#include "SysCodeRenames.h"

#include <algorithm>

SysCodeRenameList SortSysCodeRenames(const SysCodeRenameList& renames)
{
    SysCodeRenameList sorted = renames;
    std::stable_sort(
        sorted.begin(), sorted.end(), [](const auto& a, const auto& b) { return a.first < b.first; });
    return sorted;
}

QString RenamedSysCodePath(const SysCodeRenameList& sortedRenames, const QString& path)
{
    QString result = path;
    for (const auto& [oldPath, newPath] : sortedRenames) {
        if (result == oldPath)
            result = newPath;
    }
    return result;
}
