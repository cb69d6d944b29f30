// Product versions: parsing, text and ordering.
#include "CQvKsVersion.h"

#include <gtest/gtest.h>

namespace {

TEST(QvKsVersion, OrdersByNumbersNotText)
{
    const struct
    {
        const char* older;
        const char* newer;
    } pairs[] = { { "3.9.2", "3.10.0" }, { "2.5.1", "3.0" }, { "3.2", "3.2.1" }, { "0.0.9", "1" } };
    for (const auto& p : pairs) {
        CQvKsVersion a, b;
        ASSERT_TRUE(CQvKsVersion::FromString(QString::fromUtf8(p.older), a));
        ASSERT_TRUE(CQvKsVersion::FromString(QString::fromUtf8(p.newer), b));
        EXPECT_LT(a, b) << p.older << " < " << p.newer;
        EXPECT_GT(b, a);
    }
    CQvKsVersion a, b;
    ASSERT_TRUE(CQvKsVersion::FromString(QStringLiteral(" 3.1 "), a));
    ASSERT_TRUE(CQvKsVersion::FromString(QStringLiteral("3.1.0"), b));
    EXPECT_EQ(a, b);
    EXPECT_EQ(a.ToString(), QStringLiteral("3.1.0"));
    const CQvKsVersion kept(7, 7, 7);
    for (const char* bad : { "", "a.b", "1.2.3.4", "1..2", "-1", "1.2x", "123456" }) {
        CQvKsVersion out = kept;
        EXPECT_FALSE(CQvKsVersion::FromString(QString::fromUtf8(bad), out)) << bad;
        EXPECT_EQ(out, kept);
    }
    EXPECT_EQ(CQvKsVersion::Current(), CQvKsVersion());
}

} // namespace
