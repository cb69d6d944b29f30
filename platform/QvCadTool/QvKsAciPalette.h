#pragma once

// The 255 indexed CAD colours (1..255) and their RGB values.
//
// 1..9 are the named colours (red, yellow, green, cyan, blue, magenta, white, two
// greys). 10..249 are 24 hues, 15 degrees apart starting at red, each with ten
// shades: even shades are the pure hue, odd shades the pale hue (half saturation),
// and each pair is a step darker than the one before (value 255, 165, 127, 76, 38).
// 250..255 are greys from dark to white.
#include "WinTypes.h"

class QvKsAciPalette
{
public:
    static constexpr int kFirst = 1;
    static constexpr int kLast = 255;

    // The colour of an index as 0x00BBGGRR; 0 (black) for an index outside 1..255.
    static COLORREF ColorOf(int index);
    // The lowest index with exactly that colour, or 0 when no indexed colour has it.
    static int IndexOf(COLORREF color);
    static bool IsValidIndex(int index) { return index >= kFirst && index <= kLast; }
};
