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
    // than kMaxSysNameLength after trimming, free of ' & \ /, and not "SYS" in any
    // letter case. Shows nothing.
    static bool CheckSysNameLegal(QString name);

    // The name column's validation callback of the grid's in-place editor.
    static bool OnCheckSysName(const QString& name);

    // True when a code may take `level` (1 for a top-level code); otherwise tells the
    // user that codes stop at three levels and returns false.
    static bool CheckSysCodeLevel(int level);
};
