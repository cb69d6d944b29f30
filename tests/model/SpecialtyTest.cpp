#include "Specialty.h"

#include <gtest/gtest.h>

namespace {

using namespace Qt::StringLiterals;

TEST(Specialty, NamesMatchExactlyWithoutTrimming)
{
    EXPECT_TRUE(IsElectricalSpec(u"电气"_s) && IsElectricalSpec(u"弱电"_s));
    for (const QString& spec : { u"给排水"_s, u"暖通"_s, u"消防"_s, u" 电气"_s, u""_s })
        EXPECT_FALSE(IsElectricalSpec(spec));
    QStringList names = { u"old"_s };
    EXPECT_TRUE(GetDefaultSysNames(u"消防"_s, names));
    EXPECT_EQ(names, QStringList({ u"喷淋水"_s, u"消防水"_s, u"气体灭火系统"_s, u"泡沫灭火系统"_s }));
    for (const QString& spec : { u"弱电"_s, u" 给排水"_s, u"暖通 "_s }) {
        EXPECT_TRUE(GetDefaultSysNames(spec, names));
        EXPECT_TRUE(names.isEmpty()) << spec.toStdString();
    }
}

} // namespace
