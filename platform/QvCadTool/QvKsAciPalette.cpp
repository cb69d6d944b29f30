#include "QvKsAciPalette.h"

#include <array>

namespace {

constexpr std::array<COLORREF, 10> kNamed = {
    0, // unused: index 0 is "by block", not a colour
    RGB(255, 0, 0),
    RGB(255, 255, 0),
    RGB(0, 255, 0),
    RGB(0, 255, 255),
    RGB(0, 0, 255),
    RGB(255, 0, 255),
    RGB(255, 255, 255),
    RGB(128, 128, 128),
    RGB(192, 192, 192),
};

constexpr std::array<double, 5> kValues = { 255.0, 165.0, 127.0, 76.0, 38.0 };

// HSV to RGB with the channels truncated, as the classic table has them.
COLORREF HueShade(int hueStep, int shade)
{
    const double v = kValues[std::size_t(shade / 2)];
    const double s = (shade % 2 == 0) ? 1.0 : 0.5;
    const int sector = hueStep / 4; // 60 degrees = 4 steps of 15
    const double f = double(hueStep % 4) / 4.0;
    const double p = v * (1.0 - s);
    const double q = v * (1.0 - s * f);
    const double t = v * (1.0 - s * (1.0 - f));
    double r = 0, g = 0, b = 0;
    switch (sector) {
    case 0:
        r = v, g = t, b = p;
        break;
    case 1:
        r = q, g = v, b = p;
        break;
    case 2:
        r = p, g = v, b = t;
        break;
    case 3:
        r = p, g = q, b = v;
        break;
    case 4:
        r = t, g = p, b = v;
        break;
    default:
        r = v, g = p, b = q;
        break;
    }
    return RGB(BYTE(r), BYTE(g), BYTE(b));
}

std::array<COLORREF, 256> BuildTable()
{
    std::array<COLORREF, 256> table {};
    for (int i = 1; i <= 9; ++i)
        table[std::size_t(i)] = kNamed[std::size_t(i)];
    for (int i = 10; i <= 249; ++i)
        table[std::size_t(i)] = HueShade((i - 10) / 10, (i - 10) % 10);
    // Six greys, evenly spaced from 20 % to white.
    for (int k = 0; k < 6; ++k) {
        const BYTE g = BYTE(51.0 + k * 40.8);
        table[std::size_t(250 + k)] = RGB(g, g, g);
    }
    return table;
}

const std::array<COLORREF, 256>& Table()
{
    static const std::array<COLORREF, 256> table = BuildTable();
    return table;
}

} // namespace

COLORREF QvKsAciPalette::ColorOf(int index)
{
    return IsValidIndex(index) ? Table()[std::size_t(index)] : 0;
}

int QvKsAciPalette::IndexOf(COLORREF color)
{
    color &= 0x00FFFFFF;
    for (int i = kFirst; i <= kLast; ++i) {
        if (Table()[std::size_t(i)] == color)
            return i;
    }
    return 0;
}
