#include "Specialty.h"

#include <gtest/gtest.h>

namespace {

TEST(Specialty, OnlyElectricalAndLowVoltageAreElectrical)
{
    EXPECT_TRUE(IsElectricalSpec(QStringLiteral("电气")));
    EXPECT_TRUE(IsElectricalSpec(QStringLiteral("弱电")));
    for (const char16_t* spec : { u"给排水", u"暖通", u"消防", u" 电气", u"电气 ", u"" })
        EXPECT_FALSE(IsElectricalSpec(QString::fromUtf16(spec)));
}

TEST(Specialty, DefaultNamesComeInCatalogueOrder)
{
    QStringList names = { QStringLiteral("old") };
    EXPECT_TRUE(GetDefaultSysNames(QStringLiteral("给排水"), names));
    ASSERT_EQ(names.size(), 7);
    EXPECT_EQ(names.first(), QStringLiteral("生活给水"));
    EXPECT_EQ(names.last(), QStringLiteral("空调水"));
    EXPECT_TRUE(GetDefaultSysNames(QStringLiteral("消防"), names));
    EXPECT_EQ(names,
        QStringList({ QStringLiteral("喷淋水"), QStringLiteral("消防水"), QStringLiteral("气体灭火系统"),
            QStringLiteral("泡沫灭火系统") }));
    EXPECT_TRUE(GetDefaultSysNames(QStringLiteral("电气"), names));
    EXPECT_EQ(names.size(), 5);
    EXPECT_TRUE(GetDefaultSysNames(QStringLiteral("暖通"), names));
    EXPECT_EQ(names.size(), 4);
}

TEST(Specialty, UnknownOrUntrimmedSpecialtyHasNoDefaults)
{
    for (const char16_t* spec : { u"弱电", u" 给排水", u"暖通 ", u"" }) {
        QStringList names = { QStringLiteral("old") };
        EXPECT_TRUE(GetDefaultSysNames(QString::fromUtf16(spec), names));
        EXPECT_TRUE(names.isEmpty());
    }
}

} // namespace
