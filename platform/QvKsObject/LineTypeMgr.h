#pragma once

// The line types of the system codes: a ".lin" file in the profile folder with
// the product's fixed line styles and one line type for every code drawn "按字符"
// (by characters), which shows the code's characters in its gaps. The drawing
// view draws product entities with the definitions kept here.
#include "LinFormat.h"

#include <QHash>
#include <QString>

class QvKsCodeStyles;

class LineTypeMgr
{
public:
    static LineTypeMgr* Instance();

    static QString FileName(); // "QvSysCode.lin"
    // The file in the open project's profile folder; empty when none is open.
    static QString FilePath();

    // Writes the file for the codes in the store (in one step, QvKsAtomicFile, so a
    // failure leaves the old file) and keeps its definitions. False when no project
    // is open or the file cannot be written (QvKsAtomicFile::LastStatus tells why).
    bool WriteLineTypeFile();
    // Reads the file back; false when it is missing or unreadable (nothing kept then).
    bool Load();
    // The file's definitions, or when there is no file yet those the codes of
    // `styles` (read from the store) call for, kept without writing anything.
    void LoadOrBuild(const QvKsCodeStyles& styles);
    void Clear() { m_defs.clear(); }

    // By name, without regard to case; null when unknown.
    const LineTypeDef* Find(const QString& name) const;
    int Count() const { return int(m_defs.size()); }

    // The line-type name a code's line style stands for: the word before the blank
    // of a named style, the character line type of "按字符" with characters, empty
    // for no style (a continuous line).
    static QString LineTypeNameOf(const QString& lineStyle, const QString& lineString);
    // The definitions written for the given styles: the fixed ones and one per
    // distinct character string.
    static QVector<LineTypeDef> DefinitionsFor(const QStringList& lineStrings);

private:
    static QVector<LineTypeDef> DefinitionsForStore();
    static QVector<LineTypeDef> DefinitionsForStyles(const QvKsCodeStyles& styles);
    void Keep(const QVector<LineTypeDef>& defs);

    QHash<QString, LineTypeDef> m_defs; // keyed by upper-case name
};
