// Splitting text DXF into groups: numbers read back exactly as the general
// conversion reads them, lines of every length and ending come apart at the right
// place, and a group given back is read again the same, line count included.
#include "DxfGroupReader.h"

#include <gtest/gtest.h>

#include <charconv>
#include <cstring>
#include <random>
#include <string>

namespace {
// What the number of a text group must read as: the standard conversion of its
// text (a leading '+' and surrounding blanks aside), or not a number at all.
bool expectedDouble(std::string text, double& value)
{
    while (!text.empty() && (text.front() == ' ' || text.front() == '\t'))
        text.erase(0, 1);
    while (!text.empty() && (text.back() == ' ' || text.back() == '\t'))
        text.pop_back();
    if (!text.empty() && text.front() == '+')
        text.erase(0, 1);
    const auto [end, ec] = std::from_chars(text.data(), text.data() + text.size(), value);
    return ec == std::errc() && end == text.data() + text.size() && !text.empty();
}

void expectReadsAsStandard(const std::string& text)
{
    DxfGroup group;
    group.code = 10;
    group.text = text;
    bool ok = false;
    const double value = group.toDouble(&ok);
    double expected = 0.0;
    const bool expectedOk = expectedDouble(text, expected);
    ASSERT_EQ(ok, expectedOk) << '"' << text << '"';
    if (expectedOk) {
        // Bit for bit: the sign of zero included.
        EXPECT_EQ(std::memcmp(&value, &expected, sizeof value), 0)
            << '"' << text << "\" " << value << " != " << expected;
    }
}
} // namespace

TEST(DxfGroupReader, NumbersReadAsTheStandardConversionReadsThem)
{
    for (const char* text : { "0", "-0", "-0.0", "5.", ".5", "-.5", "2.5", "+2.5", "  14 ", "1e5", "1.5E-3",
             "123456789012345", "1234567890123456", "0.000000000000001", "0.1", "0.3", "-7.000000000000001",
             "9007199254740993", "1.2.3", "", "-", ".", "--1", "1-", "0x10", "inf", "nan", " - 1" })
        expectReadsAsStandard(text);

    // Decimals as drawings write them, from short to longer than the short way
    // takes, with the point anywhere.
    std::mt19937_64 random(20261124);
    for (int n = 0; n < 20000; ++n) {
        const int digits = 1 + int(random() % 18);
        std::string text = random() % 3 == 0 ? "-" : "";
        const int point = int(random() % (digits + 2)) - 1;
        for (int d = 0; d < digits; ++d) {
            if (d == point)
                text += '.';
            text += char('0' + random() % 10);
        }
        expectReadsAsStandard(text);
    }
}

TEST(DxfGroupReader, LinesOfEveryLengthAndEndingSplitIntoTheirGroups)
{
    for (const char* newline : { "\n", "\r\n" }) {
        std::string data;
        for (int length = 0; length <= 100; ++length) {
            data += (length % 2 ? "  1" : "1000");
            data += newline;
            data += std::string(size_t(length), char('a' + length % 26));
            data += newline;
        }
        DxfGroupReader reader(data);
        DxfGroup group;
        for (int length = 0; length <= 100; ++length) {
            ASSERT_TRUE(reader.next(group)) << length;
            EXPECT_EQ(group.code, length % 2 ? 1 : 1000);
            EXPECT_EQ(group.text, std::string(size_t(length), char('a' + length % 26)));
            EXPECT_EQ(reader.position(), 2 * (length + 1));
        }
        EXPECT_FALSE(reader.next(group));
        EXPECT_FALSE(reader.failed()) << reader.error().toStdString();
    }
}

TEST(DxfGroupReader, AGroupGivenBackIsReadAgainWithItsLines)
{
    const std::string data = "0\nLINE\n  8\nPIPES\n10\n2.5\n 99999\nx\n";
    DxfGroupReader reader(data);
    DxfGroup group;
    ASSERT_TRUE(reader.next(group));
    ASSERT_TRUE(reader.next(group));
    EXPECT_EQ(group.text, "PIPES");
    reader.pushBack();
    // Given back, the group still counts as read where the reader reports.
    EXPECT_EQ(reader.position(), 4);
    ASSERT_TRUE(reader.next(group));
    EXPECT_EQ(group.code, 8);
    EXPECT_EQ(group.text, "PIPES");
    ASSERT_TRUE(reader.next(group));
    EXPECT_DOUBLE_EQ(group.toDouble(), 2.5);
    reader.pushBack();
    ASSERT_TRUE(reader.next(group));
    EXPECT_EQ(group.code, 10);
    // The code on line 7 is none: the message names that line.
    EXPECT_FALSE(reader.next(group));
    EXPECT_TRUE(reader.failed());
    EXPECT_TRUE(reader.error().endsWith(QStringLiteral("at line 7"))) << reader.error().toStdString();
}

TEST(DxfGroupReader, GroupCodesOutsideTheirRangeAreRefused)
{
    for (const char* code : { "1072", "-6", "99999999999", "1O", "", "+5", "1 0" }) {
        const std::string data = std::string(code) + "\nvalue\n";
        DxfGroupReader reader(data);
        DxfGroup group;
        EXPECT_FALSE(reader.next(group)) << code;
    }
    for (const std::pair<const char*, int> accepted :
        { std::pair { "1071", 1071 }, { "-5", -5 }, { "0000010", 10 }, { " 5\t", 5 }, { "-0", 0 } }) {
        const std::string data = std::string(accepted.first) + "\nvalue\n";
        DxfGroupReader reader(data);
        DxfGroup group;
        ASSERT_TRUE(reader.next(group)) << accepted.first;
        EXPECT_EQ(group.code, accepted.second);
    }
}
