// The range rule of the numeric attributes: what the grid's cells accept is what a
// file or a sheet may bring.
#include "SysCodeValueRange.h"

#include "CSysCodeData.h"

#include <gtest/gtest.h>

#include <limits>

namespace {
using namespace Qt::StringLiterals;

constexpr double kInf = std::numeric_limits<double>::infinity();
constexpr double kNaN = std::numeric_limits<double>::quiet_NaN();

TEST(SysCodeValueRange, LineWidthsFromZeroToAHundredOrUnset)
{
    const std::pair<double, bool> cases[] = {
        { 0.0, true },
        { 0.25, true },
        { 30.0, true },
        { 100.0, true },
        { -1.0, true }, // -1: not set
        { 100.01, false },
        { -0.01, false },
        { -30.0, false },
        { -2.0, false },
        { 1e308, false },
        { -1e308, false },
        { kInf, false },
        { -kInf, false },
        { kNaN, false },
    };
    for (const auto& [width, inRange] : cases)
        EXPECT_EQ(IsSysLineWidthInRange(width), inRange) << width;
}

TEST(SysCodeValueRange, TransparencyAndColour)
{
    const std::pair<qint64, bool> alphas[]
        = { { 0, true }, { 100, true }, { 50, true }, { 101, false }, { -1, false }, { -7, false },
              { 99999, false }, { std::numeric_limits<int>::min(), false }, { 1ll << 40, false } };
    for (const auto& [alpha, inRange] : alphas)
        EXPECT_EQ(IsSysAlphaInRange(alpha), inRange) << alpha;
    const std::pair<quint64, bool> colours[] = { { 0, true }, { 0x00FFFFFF, true }, { 0x01000000, false },
        { 0xFFFFFFFF, false }, { 0xFF000000, false } };
    for (const auto& [colour, inRange] : colours)
        EXPECT_EQ(IsSysColorInRange(colour), inRange) << colour;
}

TEST(SysCodeValueRange, TheProblemOfACodeNamesTheFirstValueOutOfRange)
{
    const struct
    {
        double width;
        int alpha;
        quint32 colour;
        QString problem;
    } cases[] = {
        { 30, 0, 0x00FF00, QString() },
        { -1, 100, 0xFFFFFF, QString() },
        { 1e308, 0, 0, u"线宽支持范围0-100：1e+308"_s },
        { -30, 0, 0, u"线宽支持范围0-100：-30"_s },
        { 30, 99999, 0, u"透明度仅支持0-100的整数：99999"_s },
        { 30, -7, 0x01000000, u"透明度仅支持0-100的整数：-7"_s },
        { 30, 0, 0x01000000, u"颜色不是有效的 RGB 颜色：0x01000000"_s },
    };
    for (const auto& c : cases) {
        CSysCodeData code;
        code.SetLineWidth(c.width);
        code.SetAlpha(c.alpha);
        code.SetMfcColor(c.colour);
        EXPECT_EQ(SysCodeValueProblem(code), c.problem) << c.width << ' ' << c.alpha << ' ' << c.colour;
    }
}
} // namespace
