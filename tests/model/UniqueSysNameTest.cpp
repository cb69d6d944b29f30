#include "UniqueSysName.h"

#include <gtest/gtest.h>

namespace {

struct UniqueCase
{
    const char16_t* proposal;
    QStringList present;
    const char16_t* result; // null: no unique name can be made
};

class UniqueName : public ::testing::TestWithParam<UniqueCase>
{ };

TEST_P(UniqueName, StepsTheLastLetter)
{
    QString out = QStringLiteral("untouched");
    const bool made = MakeUniqueSysName(QString::fromUtf16(GetParam().proposal), GetParam().present, out);
    if (GetParam().result) {
        EXPECT_TRUE(made);
        EXPECT_EQ(out, QString::fromUtf16(GetParam().result));
    } else {
        EXPECT_FALSE(made);
        EXPECT_EQ(out, QStringLiteral("untouched"));
    }
}

QStringList AllCapitals()
{
    QStringList names;
    for (char16_t c = u'A'; c <= u'Z'; ++c)
        names << QString(QChar(c));
    return names;
}

INSTANTIATE_TEST_SUITE_P(Proposals, UniqueName,
    ::testing::Values(UniqueCase { u"A", {}, u"A" }, UniqueCase { u"A", { "A" }, u"B" },
        UniqueCase { u"a", { "A", "B" }, u"c" }, UniqueCase { u"Az", { "Az" }, u"Aza" },
        UniqueCase { u"Z", { "z" }, u"ZA" }, UniqueCase { u"Zz", { "ZZ", "zza" }, u"Zzb" },
        UniqueCase { u"A", AllCapitals(), u"ZA" },
        UniqueCase { u"给水A", { QStringLiteral("给水a"), QStringLiteral("给水B") }, u"给水C" },
        UniqueCase { u"A1", { "A1" }, nullptr }, UniqueCase { u"", {}, nullptr },
        UniqueCase { u"给水", {}, nullptr }, UniqueCase { u"é", {}, nullptr }));

} // namespace
