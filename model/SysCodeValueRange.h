#pragma once

// The values a code's numeric attributes may hold, whichever way they come in: typed
// into a cell, read from a ".scn" file or from a spreadsheet. They are the values
// the grid's cells accept: a line width of 0 to 100 mm (or -1, "not set", for which
// the cell shows its row kind's default), a whole transparency of 0 to 100, and a
// colour that is a COLORREF (0x00BBGGRR, nothing in the top byte).
#include <QString>
#include <QtGlobal>

class CSysCodeData;

inline constexpr double kMinSysLineWidth = 0.0;
inline constexpr double kMaxSysLineWidth = 100.0;
inline constexpr double kUnsetSysLineWidth = -1.0;
inline constexpr int kMinSysAlpha = 0;
inline constexpr int kMaxSysAlpha = 100;
inline constexpr quint32 kMaxSysColor = 0x00FFFFFFu;

bool IsSysLineWidthInRange(double width);
bool IsSysAlphaInRange(qint64 alpha);
bool IsSysColorInRange(quint64 color);

// The first numeric attribute of `code` outside its range, as the user reads it
// ("透明度仅支持0-100的整数：99999"); empty when every one is within.
QString SysCodeValueProblem(const CSysCodeData& code);
