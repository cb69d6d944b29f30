#pragma once

// Renamed codes carried into the pipeline items that were measured for them. The
// dialog records each rename as (old path, new path); the items hold full paths.
#include <QString>

#include <utility>
#include <vector>

using SysCodeRenameList = std::vector<std::pair<QString, QString>>;

// The renames in the order they are applied: by old path, renames of the same old
// path in the order they were made.
SysCodeRenameList SortSysCodeRenames(const SysCodeRenameList& renames);

// The path an item measured for `path` carries after the renames (sorted as above)
// are applied one after another; `path` itself when none of them touches it.
QString RenamedSysCodePath(const SysCodeRenameList& sortedRenames, const QString& path);
