#include "QvKsNumValidator.h"
#include "QvKsUiNumEdit.h"

#include <QTest>
#include <gtest/gtest.h>

#include <string>

namespace {

struct TypedCase
{
    const char* typed;
    const char* shown;
};

void PrintTo(const TypedCase& c, std::ostream* os)
{
    *os << '"' << c.typed << '"';
}

// The line-type scale edit: limits 0 and 9999.
class ScaleEditTyping : public ::testing::TestWithParam<TypedCase>
{ };

TEST_P(ScaleEditTyping, KeepsOnlyWhatCanBeANumberInRange)
{
    QvKsUiNumEdit edit;
    edit.SetLimits(0.0, 9999.0);
    edit.show();
    edit.setFocus();
    QTest::keyClicks(&edit, QString::fromLatin1(GetParam().typed));
    EXPECT_EQ(edit.GetWindowText(), QString::fromLatin1(GetParam().shown)) << GetParam().typed;
}

INSTANTIATE_TEST_SUITE_P(Keys, ScaleEditTyping,
    ::testing::Values(TypedCase { "12.5", "12.5" }, TypedCase { "1a2b", "12" }, TypedCase { "1.2.3", "1.23" },
        TypedCase { "10000", "1000" }, TypedCase { "9999.5", "9999." }, TypedCase { "-5", "5" },
        TypedCase { "1e3", "13" }, TypedCase { "1,5", "15" }, TypedCase { " 7", "7" },
        TypedCase { ".25", ".25" }),
    [](const auto& info) { return "case" + std::to_string(info.index); });

TEST(NumEdit, EditingEndsWithANumberInRange)
{
    QvKsUiNumEdit edit;
    edit.SetLimits(0.5, 9999.0);
    edit.show();
    edit.setFocus();
    QTest::keyClicks(&edit, QStringLiteral("0.2"));
    EXPECT_EQ(edit.GetWindowText(), QStringLiteral("0.2")); // may still grow into range
    QTest::keyClick(&edit, Qt::Key_Return);
    EXPECT_EQ(edit.GetWindowText(), QStringLiteral("0.5"));

    edit.clear();
    QTest::keyClick(&edit, Qt::Key_Return);
    EXPECT_EQ(edit.GetWindowText(), QStringLiteral("0.5"));
}

TEST(NumEdit, SetWindowTextRefusesWhatCannotBeTyped)
{
    QvKsUiNumEdit edit;
    edit.SetLimits(0.0, 9999.0);
    EXPECT_TRUE(edit.SetWindowText(QStringLiteral("1.5")));
    for (const char* bad : { "abc", "1e2", "10000", "-1", "", "1.2.3", "0x10" }) {
        EXPECT_FALSE(edit.SetWindowText(QString::fromLatin1(bad))) << bad;
        EXPECT_EQ(edit.GetWindowText(), QStringLiteral("1.5")) << bad;
    }
    EXPECT_TRUE(edit.SetWindowText(QStringLiteral("9999")));
    EXPECT_DOUBLE_EQ(edit.GetValue(), 9999.0);
}

TEST(NumEdit, NegativeLimitsAllowASign)
{
    QvKsUiNumEdit edit;
    edit.SetLimits(-10.0, 10.0);
    edit.show();
    edit.setFocus();
    QTest::keyClicks(&edit, QStringLiteral("-9.5"));
    EXPECT_EQ(edit.GetWindowText(), QStringLiteral("-9.5"));
    EXPECT_DOUBLE_EQ(edit.GetValue(), -9.5);
    edit.clear();
    QTest::keyClicks(&edit, QStringLiteral("-11"));
    EXPECT_EQ(edit.GetWindowText(), QStringLiteral("-1"));
}

TEST(NumEdit, DecimalsLimitDigitsAfterThePoint)
{
    QvKsUiNumEdit edit;
    edit.SetLimits(0.0, 100.0);
    edit.SetDecimals(2);
    edit.show();
    edit.setFocus();
    QTest::keyClicks(&edit, QStringLiteral("3.14159"));
    EXPECT_EQ(edit.GetWindowText(), QStringLiteral("3.14"));
    edit.SetDecimals(0);
    edit.clear();
    QTest::keyClicks(&edit, QStringLiteral("3.1"));
    EXPECT_EQ(edit.GetWindowText(), QStringLiteral("31"));
}

TEST(NumEdit, NarrowedLimitsPullTheTextIntoRange)
{
    QvKsUiNumEdit edit;
    EXPECT_TRUE(edit.SetValue(500.25));
    EXPECT_EQ(edit.GetWindowText(), QStringLiteral("500.25"));
    edit.SetLimits(0.0, 100.0);
    EXPECT_EQ(edit.GetWindowText(), QStringLiteral("100"));
    EXPECT_FALSE(edit.SetValue(100.5));
}

TEST(NumValidator, FormatNeverUsesAnExponent)
{
    EXPECT_EQ(QvKsNumValidator::Format(1e-7), QStringLiteral("0.0000001"));
    EXPECT_EQ(QvKsNumValidator::Format(25.0), QStringLiteral("25"));
    EXPECT_EQ(QvKsNumValidator::Format(-0.0), QStringLiteral("0"));
    EXPECT_EQ(QvKsNumValidator::Check(QvKsNumValidator::Format(1e12), 0, 1e13, -1), QValidator::Acceptable);
}

} // namespace
