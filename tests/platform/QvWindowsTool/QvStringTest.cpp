#include "QvString.h"

#include <QString>
#include <gtest/gtest.h>

namespace {
struct NumberCase
{
    const char16_t* text;
    bool isNumber;
};

class IsDoubleTest : public ::testing::TestWithParam<NumberCase>
{ };

TEST_P(IsDoubleTest, JudgesTypedText)
{
    const NumberCase& c = GetParam();
    EXPECT_EQ(QvString::IsDouble(QString::fromUtf16(c.text)), c.isNumber)
        << QString::fromUtf16(c.text).toStdString();
}

INSTANTIATE_TEST_SUITE_P(Numbers, IsDoubleTest,
    ::testing::Values(NumberCase { u"0", true }, NumberCase { u"30", true }, NumberCase { u"2.456", true },
        NumberCase { u"-1", true }, NumberCase { u"+3.5", true }, NumberCase { u".5", true },
        NumberCase { u"5.", true }, NumberCase { u"1e3", true }, NumberCase { u"2.5E-2", true },
        NumberCase { u" 12 ", true }, NumberCase { u"\t7", true }));

INSTANTIATE_TEST_SUITE_P(NotNumbers, IsDoubleTest,
    ::testing::Values(NumberCase { u"", false }, NumberCase { u"   ", false }, NumberCase { u"abc", false },
        NumberCase { u"1.2.3", false }, NumberCase { u"12a", false }, NumberCase { u"1 2", false },
        NumberCase { u".", false }, NumberCase { u"-", false }, NumberCase { u"+.", false },
        NumberCase { u"1e", false }, NumberCase { u"1e+", false }, NumberCase { u"e5", false },
        NumberCase { u"0x10", false }, NumberCase { u"inf", false }, NumberCase { u"nan", false },
        NumberCase { u"1,5", false }, NumberCase { u"--1", false }, NumberCase { u"３", false },
        NumberCase { u"1mm", false }));
} // namespace
