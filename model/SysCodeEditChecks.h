#pragma once

// The checks a cell edit of the management grid passes before its text goes into
// the cell: a code's new name at its level, the remark's characters, the
// transparency text, and the renames the save carries into the pipeline items.
#include <QString>
#include <QStringList>

#include <functional>
#include <utility>
#include <vector>

// A short code (the line-type characters): at most three ASCII letters or digits;
// the empty text passes.
bool IsShortSysCode(const QString& trimmed);

enum class NameEditStatus {
    Accepted, // the new name is free at its level, or only its letter case changed
    Clash, // a sibling already has the name
    Illegal, // the name breaks the legality rule (empty, too long, forbidden text)
};

struct NameEditResult
{
    NameEditStatus status = NameEditStatus::Accepted;
    QString name; // the typed text trimmed at both ends
    QString fullName; // the full name the row would take ("parent\name")
};

// Judges the text typed into a row's name cell. `parentFullName` is empty for a
// top-level row; `exists` answers whether a row has a full name.
NameEditResult CheckNameEdit(const QString& parentFullName, const QString& currentName, const QString& typed,
    const std::function<bool(const QString&)>& exists);

// Whether a remark holds "&", "\" or "/" (a remark may hold anything else).
bool HasForbiddenRemarkChar(const QString& remark);

enum class AlphaTextStatus {
    Accepted,
    NotDigits, // a character other than a decimal digit
    OutOfRange, // a value above 100
};

// The transparency typed into its cell: trimmed, digits only, at most 100. An
// accepted text is written back as "%d" in `normalised` ("007" is "7", "" is "0").
AlphaTextStatus NormaliseAlphaText(const QString& typed, QString& normalised);

using SysCodeRenameChain = std::vector<std::pair<QString, QString>>;

// Records the rename of a code from `oldFullName` to `newFullName` in the
// specialty `spec` as a pair of paths "spec\full name". Nothing is recorded when
// both are equal; a pair whose new path is this old path takes the new path, so a
// chain of renames collapses into one pair from the first name to the last.
void RecordSysCodeRename(
    SysCodeRenameChain& renames, const QString& spec, const QString& oldFullName, const QString& newFullName);

// The text of an MText: every "\P" paragraph code becomes "-".
QString MTextPlainText(const QString& contents);

// The picked texts joined in order with "-"; empty texts add nothing.
QString JoinPickedTexts(const QStringList& pieces);
