#pragma once

// Pipeline-information paths: the attribute library's name paths of detail members
// ("电气\管线\导线·导管\BV-2.5") as the codes carry them, and the rules of the
// name picker that chooses them.
#include <QString>
#include <QStringList>

// The part after the last "\", or the whole path when it has none: what the
// pipeline-information cell and the batch dialog's button show.
QString PipeInfoDisplayName(const QString& path);

// The picker's mode for the codes of a specialty: 2 (electrical names) for "电气",
// 1 (low-voltage names) for every other specialty.
int PipeInfoPickerMode(const QString& spec);

// The picker's mode after the attribute definition was edited for a specialty:
// 2 for "电气", 1 for "弱电", 0 (no categories) for any other name.
int PickerModeAfterAttDef(const QString& spec);

// The small categories a picker mode offers ("3\1\1", …) in load order; empty for
// any mode other than 1 and 2.
QStringList PickerCategoryIds(int mode);

// The category selected when the current name is not in the tree; empty for a mode
// without one.
QString PickerFallbackPath(int mode);

// Where "进入属性" opens the attribute definition for the picker's selected path.
struct AttDefTarget
{
    bool bOpen = false; // false: the path belongs to no electrical specialty
    QString strPath; // the completed path the attribute dialog opens at
    QString strSpec; // the specialty to make current while it is open
};

// Completes the selected path: an empty one stands for the mode's specialty
// ("电气" in mode 2, "弱电" in mode 1), a specialty alone or with one level is
// taken down to the category the attribute dialog opens at, a deeper path is
// used as it is.
AttDefTarget CompleteAttDefPath(const QString& selectedPath, int mode);
