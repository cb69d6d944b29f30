#include "QvKsColorTool.h"

#include <algorithm>
#include <cstdlib>

namespace {
// The free bits (not forced by the mask) ordered from least to most visible: the low
// bits of every channel first, the top bits last, so the counter's slow high bits
// drive the look of the colour.
int freePositions(COLORREF free, int (&pos)[24])
{
    int n = 0;
    for (int bit = 0; bit < 8; ++bit)
        for (int channel = 0; channel < 3; ++channel) {
            const int p = channel * 8 + bit;
            if (free & (1u << p))
                pos[n++] = p;
        }
    return n;
}

std::uint32_t gather(COLORREF colour, const int (&pos)[24], int n)
{
    std::uint32_t k = 0;
    for (int i = 0; i < n; ++i)
        k |= ((colour >> pos[i]) & 1u) << i;
    return k;
}

COLORREF scatter(std::uint32_t k, const int (&pos)[24], int n)
{
    COLORREF colour = 0;
    for (int i = 0; i < n; ++i)
        colour |= COLORREF((k >> i) & 1u) << pos[i];
    return colour;
}

// A full-period step over the free bits (a linear congruential step modulo 2^n with a
// multiplier of the form 4k+1 and an odd increment): the chain of colours visits every
// possible colour before it repeats.
std::uint32_t step(std::uint32_t k, int n)
{
    const std::uint32_t modMask = n >= 32 ? 0xFFFFFFFFu : ((1u << n) - 1u);
    return (k * 0x2C1B3C6Du + 0x297A2D39u) & modMask;
}

int channelDistance(COLORREF a, COLORREF b)
{
    return std::abs(int(GetRValue(a)) - int(GetRValue(b))) + std::abs(int(GetGValue(a)) - int(GetGValue(b)))
        + std::abs(int(GetBValue(a)) - int(GetBValue(b)));
}

// A grey (all channels alike) vanishes against the grey grid background.
bool isNearGrey(COLORREF c)
{
    const int r = GetRValue(c), g = GetGValue(c), b = GetBValue(c);
    const int hi = std::max(r, std::max(g, b));
    const int lo = std::min(r, std::min(g, b));
    return hi - lo < 48;
}
} // namespace

COLORREF QvKsColorTool::RandomColor(COLORREF previous, COLORREF mask)
{
    const COLORREF prev = previous & 0xFFFFFFu;
    const COLORREF keep = mask & 0xFFFFFFu;
    int pos[24];
    const int n = freePositions(~keep & 0xFFFFFFu, pos);
    if (n == 0)
        return keep;
    std::uint32_t k = gather(prev, pos, n);
    const std::uint32_t period = n >= 32 ? 0xFFFFFFFFu : (1u << n);
    COLORREF fallback = prev;
    // Walk on along the cycle until a colour is far enough from the last one and not
    // grey; with a tight mask none may qualify, then the next different colour is taken.
    for (std::uint32_t i = 0; i < period; ++i) {
        k = step(k, n);
        const COLORREF candidate = scatter(k, pos, n) | keep;
        if (channelDistance(candidate, prev) >= 96 && !isNearGrey(candidate))
            return candidate;
        if (fallback == prev && candidate != prev)
            fallback = candidate;
    }
    return fallback;
}
