#pragma once

// The order of sibling codes in the grid: names that differ only in a trailing
// number sort by that number (P2 before P10); everything else by UTF-16 code units.
#include <QString>

// Splits `name` into its text part and trailing number. The number is the value of
// at most the last six digits, without leading zeros (those stay in the text, so
// "A000" gives "A00" and 0); a name of at most six digits is all number ("007" gives
// "" and 7). Without trailing digits the text is the whole name and the number 0.
void SplitTrailingNumber(const QString& name, QString& text, int& number);

// Negative, zero or positive as `first` sorts before, with or after `second`: equal
// texts give the difference of the numbers, different texts -1 or 1 from the first
// differing code unit (a text that is a prefix of the other sorts first).
int CompareSysCodeNames(const QString& first, const QString& second);

// Strict ordering for std::sort and friends.
struct SysCodeNameLess
{
    bool operator()(const QString& first, const QString& second) const
    {
        return CompareSysCodeNames(first, second) < 0;
    }
};
