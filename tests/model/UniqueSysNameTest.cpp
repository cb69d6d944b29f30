#include "UniqueSysName.h"

#include <gtest/gtest.h>

namespace {

using namespace Qt::StringLiterals;

TEST(UniqueName, StepsTheLastLetterPastEveryPresentName)
{
    QStringList capitals;
    for (char16_t c = u'A'; c <= u'Z'; ++c)
        capitals << QString(QChar(c));
    const std::tuple<QString, QStringList, QString> cases[] = {
        { u"A"_s, {}, u"A"_s },
        { u"A"_s, { u"A"_s }, u"B"_s },
        { u"a"_s, { u"A"_s, u"B"_s }, u"c"_s },
        { u"Az"_s, { u"Az"_s }, u"Aza"_s },
        { u"Z"_s, { u"z"_s }, u"ZA"_s },
        { u"Zz"_s, { u"ZZ"_s, u"zza"_s }, u"Zzb"_s },
        { u"A"_s, capitals, u"ZA"_s },
        { u"给水A"_s, { u"给水a"_s, u"给水B"_s }, u"给水C"_s },
    };
    for (const auto& [proposal, present, expected] : cases) {
        QString out;
        EXPECT_TRUE(MakeUniqueSysName(proposal, present, out));
        EXPECT_EQ(out, expected) << proposal.toStdString();
    }
}

TEST(UniqueName, GivesUpUnlessTheNameEndsInAnAsciiLetter)
{
    for (const QString& proposal : { u"A1"_s, u""_s, u"给水"_s, u"é"_s }) {
        QString out = u"untouched"_s;
        EXPECT_FALSE(MakeUniqueSysName(proposal, { proposal }, out));
        EXPECT_EQ(out, u"untouched"_s);
    }
}

} // namespace
