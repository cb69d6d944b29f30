#pragma once

// The rule every system code in the store obeys, whichever way it came in (typed
// in the dialog, a ".scn" import, a tree handed to the data service): a legal name
// on each level and no more than three levels. The data service checks it itself
// rather than trusting its callers, so a tool or an import that never passes
// through the dialog cannot store what the dialog would refuse. Names are judged
// and compared trimmed, as the dialog trims what is typed. The dialog's own
// name check follows the same rule; a test holds the two together.
#include <QString>

class CSysCodeData;

namespace SysCodeNameRule {

inline constexpr int kMaxNameLength = 50;
inline constexpr int kMaxLevel = 3;

// Empty when `name` (one level) is legal: after trimming not empty and at most
// kMaxNameLength characters, none of ' & \ /, no control character, invisible
// format character (zero-width space, direction mark), line or paragraph separator
// or half of a surrogate pair, and not "SYS" in any letter case. Otherwise why not,
// for a message.
QString NameProblem(const QString& name);

// Empty when every code under `root` has a legal name, differs from its siblings
// once names are trimmed, and lies within kMaxLevel levels; otherwise the first
// fault in tree order, naming the code by its full name.
QString TreeProblem(const CSysCodeData& root);

} // namespace SysCodeNameRule
