#pragma once

// Picks text objects in the drawing for the name and remark cells: the user selects
// on the command line, and the texts of texts, multi-line texts and block references
// are joined with "-" in selection order.
#include <QString>

class ZcDbText;

class DrawingTextPicker
{
public:
    // Prompts and lets the user select; "" when nothing usable was selected.
    static QString Pick();
    // The text a text entity gives: picked straight, an attribute (or its definition)
    // gives its tag; inside a block, an invisible attribute or a definition gives "".
    static QString EntityText(const ZcDbText* text, bool insideBlock);
};
