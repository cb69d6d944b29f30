#pragma once

// Tests on text a user typed into a cell.
class QString;

class QvString
{
public:
    // Whether the text is a decimal number as a drafter types it: an optional sign,
    // digits with an optional decimal point and decimals (at least one digit in all),
    // then an optional exponent ("e" or "E", optional sign, at least one digit).
    // Blanks (spaces, tabs) before and after the number are ignored; blanks inside it,
    // an empty or blank-only text, hexadecimal, "inf", "nan", a decimal comma and any
    // trailing character make it no number.
    static bool IsDouble(const QString& text);
};
