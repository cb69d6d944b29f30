#pragma once

// What a code holds before anyone gave it a value: one place for the grid's blank
// rows, the spreadsheet import and the copy buffer.
#include "SysCodeValueRange.h"

#include <QString>

class CSysCodeData;

// Electrical codes draw cables and conduits, 30 wide; every other specialty's, 1.
double DefaultSysLineWidth(bool electrical);
// The width a code is drawn with: its own, or its specialty's default when it has
// none set (kUnsetSysLineWidth).
double EffectiveSysLineWidth(double width, bool electrical);
// The attributes of a blank code: drawn by characters, the default width, opaque.
// Name, colour, remark and pipeline information are left as they are.
void SetBlankSysCodeAttributes(CSysCodeData& code, bool electrical);
// The same for a code whose specialty is not known yet (a spreadsheet row): its
// width is left unset, so it takes the default of the specialty it lands in.
void SetBlankSysCodeAttributesUnsetWidth(CSysCodeData& code);
// The line style of a blank code.
QString DefaultSysLineStyle();
