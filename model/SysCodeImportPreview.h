#pragma once

// What merging an imported system-code tree into a specialty will do, worked out
// before anything changes, so the user can look before the import.
#include <QList>
#include <QString>
#include <QStringList>

class CSysCodeData;

struct SysCodeAttributeChange
{
    QString attribute; // as the grid's column calls it
    QString before;
    QString after;
};

struct SysCodeChangedCode
{
    QString fullName;
    QList<SysCodeAttributeChange> changes;
};

struct SysCodeImportPreview
{
    // Full names ("\" between levels), in the file's order. A code new to the
    // specialty comes with every code below it, each listed.
    QStringList added;
    QList<SysCodeChangedCode> changed;
    QStringList unchanged;
};

// The merge's outcome for `imported` (a root whose children are the file's top
// codes) taken into `target` (the specialty's root): codes whose full name exists
// take the imported attributes, the others are added under their parent.
SysCodeImportPreview PreviewSysCodeImport(const CSysCodeData& target, const CSysCodeData& imported);
