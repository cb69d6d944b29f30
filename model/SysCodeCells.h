#pragma once

// What each logical column of a code's row holds. The width (a double), the
// transparency (an int) and the pipeline information (its whole "\" path) are
// held as values; the other columns hold their texts. The text a cell shows is
// derived from its value, and a text typed or pasted into a cell is read back as
// one, so a code goes into a row and comes out again without parsing what the
// grid shows.
#include <QString>
#include <QVariant>

class CSysCodeData;

bool IsTypedSysCodeColumn(int logical);
// The value of a logical column for a code. An unset width (-1) holds the
// specialty's default. The colour column holds nothing: its cell shows the colour.
QVariant SysCodeCellValue(const CSysCodeData& code, int logical, bool electrical);
// The text a value shows: "%g" for the width, "%d" for the transparency, the last
// level for the pipeline information.
QString SysCodeValueText(int logical, const QVariant& value);
// The value a text stands for; invalid when it stands for none (a width that is no
// number). The pipeline information takes a text as its path.
QVariant SysCodeTextValue(int logical, const QString& text);
// A logical column's value into a code (the colour column excepted).
void SetSysCodeField(CSysCodeData& code, int logical, const QVariant& value);
