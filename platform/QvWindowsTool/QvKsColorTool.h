#pragma once

// Colours for new system-code rows.
#include "WinTypes.h"

class QvKsColorTool
{
public:
    // A colour (0x00BBGGRR) for the next new row, made from the previous one.
    // Every bit set in `mask` is set in the result; the usual mask 0x555555 keeps each
    // channel at 0x55 or more, so the colour never turns near-black against the grid.
    // The result differs clearly from `previous` (the channels differ by at least 96
    // in sum) and is not a near-grey, and the same `previous` and `mask` always give
    // the same result, so a sequence of new rows can be predicted and repeated.
    static COLORREF RandomColor(COLORREF previous, COLORREF mask);
};
