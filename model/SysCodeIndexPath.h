#pragma once

#include <QString>

// The index path ("3\12") of a code given by its full path ("电气\公共照明\WL1").
// When the store knows no such code but the specialty has codes, falls back to the
// specialty's first top-level code: `fullPath` is rewritten to that code's path,
// `bSelCodeReplaced` is set, and its short index path "%d\%d" is returned. Otherwise
// returns "" and leaves both arguments as they were.
QString GetSysCodeIndexPath(QString& fullPath, bool& bSelCodeReplaced);
