#pragma once

// Words of a script statement: separated by blanks; a word with blanks in it is
// written in double quotes ("公共照明&WL 1").
#include <QString>

class ScriptWords
{
public:
    // Takes the first word off `rest` (its quotes removed) and trims what is left.
    static QString Take(QString& rest);
};
