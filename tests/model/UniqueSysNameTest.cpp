#include "UniqueSysName.h"

#include <gtest/gtest.h>

#include <tuple>

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

TEST(SplitName, BaseAndNumberSpellTheNameAgain)
{
    const std::tuple<QString, QString, int> cases[] = {
        { u"WS"_s, u"WS"_s, 0 }, { u"WS2"_s, u"WS"_s, 2 }, { u"A007"_s, u"A00"_s, 7 },
        { u"B00"_s, u"B0"_s, 0 }, { u"12"_s, u""_s, 12 }, { u"0"_s, u""_s, 0 },
        { u"A12345678"_s, u"A12"_s, 345678 }, { u"A1000007"_s, u"A100000"_s, 7 },
        { u"给水3"_s, u"给水"_s, 3 }, { u"给水"_s, u"给水"_s, 0 },
        { u"X\u0663"_s, u"X\u0663"_s, 0 }, // a digit outside ASCII is no number
    };
    for (const auto& [name, base, number] : cases) {
        QString gotBase = u"old"_s;
        int gotNumber = -1;
        ASSERT_TRUE(SplitSysNameNumber(name, gotBase, gotNumber));
        EXPECT_EQ(gotBase, base) << name.toStdString();
        EXPECT_EQ(gotNumber, number) << name.toStdString();
    }
    QString base = u"kept"_s;
    int number = 5;
    EXPECT_FALSE(SplitSysNameNumber(QString(), base, number));
    EXPECT_EQ(base, u"kept"_s);
    // The base may be the name itself.
    QString same = u"WS12"_s;
    ASSERT_TRUE(SplitSysNameNumber(same, same, number));
    EXPECT_EQ(same, u"WS"_s);
    EXPECT_EQ(number, 12);
}

TEST(UniqueChildName, CountsOnPastEverySiblingIgnoringCase)
{
    const std::tuple<QString, QStringList, QString> cases[] = {
        { u"WS"_s, {}, u"WS"_s },
        { u"WS"_s, { u"WS"_s }, u"WS1"_s },
        { u"WS"_s, { u"WS"_s, u"WS1"_s }, u"WS2"_s },
        { u"WS"_s, { u"WS"_s, u"ws1"_s }, u"WS2"_s },
        { u"A007"_s, { u"A007"_s }, u"A008"_s },
        { u"A1234567"_s, { u"A1234567"_s }, u"A1234568"_s },
        { u"A1999999"_s, { u"A1999999"_s }, u"A11000000"_s },
        { u"照明"_s, { u"照明"_s }, u"照明1"_s },
        { u""_s, { u""_s }, u""_s },
    };
    for (const auto& [name, siblings, expected] : cases)
        EXPECT_EQ(MakeUniqueChildName(name, siblings), expected) << name.toStdString();
}

TEST(NewRowName, FollowsTheLetterAndNumberRules)
{
    const QString fifty(50, u'L');
    const std::tuple<QString, bool, QStringList, QString> cases[] = {
        // Siblings and new top-level rows.
        { u"A"_s, false, { u"A"_s }, u"B"_s },
        { u"A"_s, false, { u"A"_s, u"b"_s, u"C"_s }, u"D"_s },
        { u"Z"_s, false, { u"Z"_s }, u"ZA"_s },
        { u"Z"_s, false, { u"Z"_s, u"ZA"_s }, u"ZB"_s },
        { u"A&WS2"_s, false, { u"A"_s, u"A&WS2"_s }, u"A&WS3"_s },
        { u"A&A007"_s, false, { u"A"_s, u"A&A007"_s }, u"A&A008"_s },
        { u"给水"_s, false, { u"给水"_s }, u"给水1"_s },
        // Children.
        { u"A"_s, true, { u"A"_s }, u"A&A1"_s },
        { u"A&WS2"_s, true, { u"A"_s, u"A&WS2"_s }, u"A&WS2&WS1"_s },
        { u"A&WS2"_s, true, { u"A"_s, u"A&WS2"_s, u"a&ws2&ws1"_s }, u"A&WS2&WS2"_s },
        // A level past the legal length starts again from N1.
        { u"A&"_s + fifty + u"1"_s, false, {}, u"A&N1"_s },
        { fifty, true, { fifty }, fifty + u"&N1"_s },
        { u"A&N1"_s + QString(47, u'x') + u"z"_s, false, { u"A&N1"_s + QString(47, u'x') + u"z"_s },
            u"A&N1"_s },
        { fifty + u"1"_s, false, { u"N1"_s }, u"N2"_s },
    };
    for (const auto& [fullName, child, present, expected] : cases)
        EXPECT_EQ(MakeNewRowName(fullName, child, present), expected) << fullName.toStdString();
}

} // namespace
