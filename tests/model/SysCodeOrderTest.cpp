#include "SysCodeOrder.h"

#include <QStringList>
#include <gtest/gtest.h>

#include <algorithm>

namespace {

using namespace Qt::StringLiterals;

struct SplitCase
{
    const char16_t* name;
    const char16_t* text;
    int number;
};

class TrailingNumber : public ::testing::TestWithParam<SplitCase>
{ };

TEST_P(TrailingNumber, SplitsTextAndNumber)
{
    QString text = QStringLiteral("stale");
    int number = -1;
    SplitTrailingNumber(QString::fromUtf16(GetParam().name), text, number);
    EXPECT_EQ(text, QString::fromUtf16(GetParam().text));
    EXPECT_EQ(number, GetParam().number);
}

INSTANTIATE_TEST_SUITE_P(Names, TrailingNumber,
    ::testing::Values(SplitCase { u"", u"", 0 }, SplitCase { u"ABC", u"ABC", 0 },
        SplitCase { u"A10B", u"A10B", 0 }, SplitCase { u"P10", u"P", 10 },
        SplitCase { u"生活给水2", u"生活给水", 2 }, SplitCase { u"A000", u"A00", 0 },
        SplitCase { u"A01", u"A0", 1 }, SplitCase { u"A1", u"A", 1 },
        SplitCase { u"X1234567", u"X1", 234567 }, SplitCase { u"A0000001", u"A000000", 1 },
        SplitCase { u"007", u"", 7 }, SplitCase { u"123456", u"", 123456 },
        SplitCase { u"1234567", u"1", 234567 }, SplitCase { u"0000000", u"000000", 0 }));

struct CompareCase
{
    const char16_t* first;
    const char16_t* second;
    int order;
};

class SiblingOrder : public ::testing::TestWithParam<CompareCase>
{ };

TEST_P(SiblingOrder, ComparesTextThenNumber)
{
    const QString first = QString::fromUtf16(GetParam().first);
    const QString second = QString::fromUtf16(GetParam().second);
    EXPECT_EQ(CompareSysCodeNames(first, second), GetParam().order);
    EXPECT_EQ(CompareSysCodeNames(second, first), -GetParam().order);
}

INSTANTIATE_TEST_SUITE_P(Pairs, SiblingOrder,
    ::testing::Values(CompareCase { u"P2", u"P10", -8 }, CompareCase { u"P10", u"P02", -1 },
        CompareCase { u"A1", u"A01", -1 }, CompareCase { u"007", u"7", 0 },
        CompareCase { u"X1234567", u"X1234560", 7 }, CompareCase { u"A", u"AB", -1 },
        CompareCase { u"A", u"a", -1 }, CompareCase { u"\uFFFF", u"A", 1 },
        CompareCase { u"排水", u"给水", -1 }, CompareCase { u"B", u"B", 0 }));

TEST(SiblingOrder, SortsNumbersByValueAndLeadingZerosAfter)
{
    QStringList names
        = { QStringLiteral("P3"), QStringLiteral("P10"), QStringLiteral("P2"), QStringLiteral("P02") };
    std::sort(names.begin(), names.end(), SysCodeNameLess());
    EXPECT_EQ(names,
        QStringList(
            { QStringLiteral("P2"), QStringLiteral("P3"), QStringLiteral("P10"), QStringLiteral("P02") }));
}

TEST(SiblingOrder, IsATotalOrderOverMixedNames)
{
    const QStringList names = { u""_s, u"0"_s, u"00"_s, u"A"_s, u"A0"_s, u"A00"_s, u"A000"_s, u"A1"_s,
        u"A01"_s, u"A10"_s, u"A9"_s, u"B"_s, u"a1"_s, u"X1234567"_s, u"X1"_s, u"X2"_s, u"1234567"_s, u"水"_s,
        u"水3"_s, u"水03"_s };
    for (const QString& a : names) {
        for (const QString& b : names) {
            const int ab = CompareSysCodeNames(a, b);
            EXPECT_EQ(ab > 0, CompareSysCodeNames(b, a) < 0) << a.toStdString() << " " << b.toStdString();
            for (const QString& c : names) {
                if (ab <= 0 && CompareSysCodeNames(b, c) <= 0) {
                    EXPECT_LE(CompareSysCodeNames(a, c), 0)
                        << a.toStdString() << b.toStdString() << c.toStdString();
                }
            }
        }
    }
}

} // namespace
