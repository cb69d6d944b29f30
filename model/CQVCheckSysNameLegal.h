#pragma once

// The two rules that guard every system code the user types, pastes, moves or
// imports: one level's name must be legal, and no code may lie deeper than three
// levels. CheckSysNameLegal is also what the product's other modules call to judge
// names the same way.
#include <QString>

constexpr int kMaxSysNameLength = 50;
constexpr int kMaxSysCodeLevel = 3;

class CQVCheckSysNameLegal
{
public:
    // True when `name` (one level, not a full name) is legal: not empty or longer
    // than kMaxSysNameLength after trimming, free of ' & \ /, free of characters
    // that cannot be seen or that steer the text (FindHiddenChar), and not "SYS" in
    // any letter case. Shows nothing.
    static bool CheckSysNameLegal(QString name);

    // Where `name`, trimmed, holds a control character, an invisible format
    // character (a zero-width space, a direction mark), a line or paragraph
    // separator, or half of a surrogate pair: its index in the trimmed name, -1 when
    // there is none. A newline or a tab inside a name would break every list that
    // shows one code a line, and an invisible one makes two names that look alike.
    static qsizetype FindHiddenChar(const QString& name);

    // What the user is told when CheckSysNameLegal refuses `name`: the usual text,
    // or which hidden character the name holds (it cannot be seen in the cell).
    static QString IllegalNameMessage(const QString& name);

    // The name column's validation callback of the grid's in-place editor.
    static bool OnCheckSysName(const QString& name);

    // True when a code may take `level` (1 for a top-level code); otherwise tells the
    // user that codes stop at three levels and returns false.
    static bool CheckSysCodeLevel(int level);
};
