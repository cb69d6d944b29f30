#pragma once

// What a code holds before anyone gave it a value: one place for the grid's blank
// rows, the spreadsheet import and the copy buffer.
#include <QString>

class CSysCodeData;

// A width of -1 means "not set": the specialty's default stands for it wherever
// the code is shown or stored.
constexpr double kUnsetSysLineWidth = -1.0;

// Electrical codes draw cables and conduits, 30 wide; every other specialty's, 1.
double DefaultSysLineWidth(bool electrical);
double EffectiveSysLineWidth(double width, bool electrical);
// The attributes of a blank code: drawn by characters, the default width, opaque.
// Name, colour, remark and pipeline information are left as they are.
void SetBlankSysCodeAttributes(CSysCodeData& code, bool electrical);
// The same for a code whose specialty is not known yet (a spreadsheet row): its
// width is left unset, so it takes the default of the specialty it lands in.
void SetBlankSysCodeAttributesUnsetWidth(CSysCodeData& code);
// The line style of a blank code.
QString DefaultSysLineStyle();
