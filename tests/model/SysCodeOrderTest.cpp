#include "SysCodeOrder.h"

#include <QStringList>
#include <gtest/gtest.h>

#include <algorithm>

namespace {

using namespace Qt::StringLiterals;

TEST(TrailingNumber, SplitsTextAndNumber)
{
    const std::tuple<const char16_t*, const char16_t*, int> cases[] = {
        { u"", u"", 0 },
        { u"ABC", u"ABC", 0 },
        { u"A10B", u"A10B", 0 },
        { u"P10", u"P", 10 },
        { u"生活给水2", u"生活给水", 2 },
        { u"A000", u"A00", 0 },
        { u"A01", u"A0", 1 },
        { u"X1234567", u"X1", 234567 },
        { u"A0000001", u"A000000", 1 },
        { u"007", u"", 7 },
        { u"123456", u"", 123456 },
        { u"1234567", u"1", 234567 },
        { u"0000000", u"000000", 0 },
    };
    for (const auto& [name, text, number] : cases) {
        QString gotText = u"stale"_s;
        int gotNumber = -1;
        SplitTrailingNumber(QString::fromUtf16(name), gotText, gotNumber);
        EXPECT_EQ(gotText, QString::fromUtf16(text)) << QString::fromUtf16(name).toStdString();
        EXPECT_EQ(gotNumber, number) << QString::fromUtf16(name).toStdString();
    }
}

TEST(SiblingOrder, ComparesTextThenNumber)
{
    const std::tuple<const char16_t*, const char16_t*, int> cases[] = {
        { u"P2", u"P10", -8 },
        { u"P10", u"P02", -1 },
        { u"A1", u"A01", -1 },
        { u"007", u"7", 0 },
        { u"X1234567", u"X1234560", 7 },
        { u"A", u"AB", -1 },
        { u"A", u"a", -1 },
        { u"\uFFFF", u"A", 1 },
    };
    for (const auto& [first, second, order] : cases) {
        EXPECT_EQ(CompareSysCodeNames(QString::fromUtf16(first), QString::fromUtf16(second)), order);
        EXPECT_EQ(CompareSysCodeNames(QString::fromUtf16(second), QString::fromUtf16(first)), -order);
    }
    QStringList names = { u"P3"_s, u"P10"_s, u"P2"_s, u"P02"_s };
    std::sort(names.begin(), names.end(), SysCodeNameLess());
    EXPECT_EQ(names, QStringList({ u"P2"_s, u"P3"_s, u"P10"_s, u"P02"_s }));
}

// std::sort needs a consistent order: antisymmetric and transitive.
TEST(SiblingOrder, IsATotalOrderOverMixedNames)
{
    const QStringList names
        = { u""_s, u"0"_s, u"00"_s, u"A"_s, u"A0"_s, u"A00"_s, u"A000"_s, u"A1"_s, u"A01"_s, u"A10"_s,
              u"A9"_s, u"a1"_s, u"X1234567"_s, u"X1"_s, u"1234567"_s, u"水"_s, u"水3"_s, u"水03"_s };
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
