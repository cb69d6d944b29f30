// Texts as they read: special characters of single-line texts, and multi-line
// texts laid out in lines with their format codes, wrapped at their width.
#include "DrawingTexts.h"

#include <QStringList>

#include <gtest/gtest.h>

TEST(DrawingTexts, SpecialCharactersOfSingleLineTexts)
{
    const std::pair<QString, QString> cases[] = {
        { QStringLiteral("%%c50"), QStringLiteral("Ø50") },
        { QStringLiteral("30%%D"), QStringLiteral("30°") },
        { QStringLiteral("%%p5"), QStringLiteral("±5") },
        { QStringLiteral("%%uUNDER%%u"), QStringLiteral("UNDER") },
        { QStringLiteral("100%%%"), QStringLiteral("100%") },
        { QStringLiteral("%%065"), QStringLiteral("A") },
        { QStringLiteral("A^IB"), QStringLiteral("A B") },
        { QStringLiteral("C^ D"), QStringLiteral("C^D") },
        { QStringLiteral("E^JF"), QStringLiteral("EF") },
        { QStringLiteral("50%"), QStringLiteral("50%") },
        { QStringLiteral("end^"), QStringLiteral("end^") },
    };
    for (const auto& [raw, shown] : cases)
        EXPECT_EQ(DrawingTexts::PlainText(raw), shown) << raw.toStdString();
}

namespace {
QStringList LineTexts(const std::vector<DrawingTexts::Line>& lines)
{
    QStringList texts;
    for (const DrawingTexts::Line& line : lines) {
        QString text;
        for (const DrawingTexts::Run& run : line.runs)
            text += run.text;
        texts.append(text.trimmed());
    }
    return texts;
}
} // namespace

TEST(DrawingTexts, ParagraphsWrapAtTheWidthAndOnlyThere)
{
    // Each character advances its height: 2.
    const auto wrapped = DrawingTexts::LayOut(u"AAA BBB CCC\\PDD", 2, 14);
    EXPECT_EQ(LineTexts(wrapped), (QStringList { "AAA BBB", "CCC", "DD" }));
    EXPECT_DOUBLE_EQ(wrapped[0].width, 14);
    EXPECT_EQ(LineTexts(DrawingTexts::LayOut(u"AAA BBB CCC", 2, 0)), (QStringList { "AAA BBB CCC" }));
    // A word longer than the width stands on a line of its own; wide characters
    // break anywhere.
    EXPECT_EQ(LineTexts(DrawingTexts::LayOut(u"A LONGWORD B", 1, 4)), (QStringList { "A", "LONGWORD", "B" }));
    EXPECT_EQ(LineTexts(DrawingTexts::LayOut(u"给水排水管道", 1, 4)), (QStringList { "给水排水", "管道" }));
}

TEST(DrawingTexts, FormatCodesChangeTheRunsTheyCover)
{
    const auto lines = DrawingTexts::LayOut(u"{\\H2x;\\C1;BIG}\\W0.5;n\\Lu\\l\\fArial|b1;%%d\\~\\\\", 10, 0);
    ASSERT_EQ(lines.size(), 1u);
    const auto& runs = lines[0].runs;
    ASSERT_EQ(runs.size(), 4u);
    EXPECT_EQ(runs[0].text, QStringLiteral("BIG"));
    EXPECT_DOUBLE_EQ(runs[0].height, 20);
    ASSERT_TRUE(runs[0].color.has_value());
    EXPECT_DOUBLE_EQ(runs[0].width, 60);
    // Past the braces the height and colour are the text's again.
    EXPECT_EQ(runs[1].text, QStringLiteral("n"));
    EXPECT_DOUBLE_EQ(runs[1].height, 10);
    EXPECT_FALSE(runs[1].color.has_value());
    EXPECT_DOUBLE_EQ(runs[1].width, 5);
    EXPECT_DOUBLE_EQ(runs[1].x, 60);
    EXPECT_TRUE(runs[2].underline);
    EXPECT_EQ(runs[3].text, QString(QChar(0x00B0)) + QChar(0x00A0) + QChar(u'\\'));
    EXPECT_DOUBLE_EQ(lines[0].height, 20);
}

TEST(DrawingTexts, StackedFractionsStandOverTheirDenominators)
{
    const auto lines = DrawingTexts::LayOut(u"A\\S12/3;B", 10, 0);
    ASSERT_EQ(lines.size(), 1u);
    const auto& runs = lines[0].runs;
    ASSERT_EQ(runs.size(), 4u);
    EXPECT_EQ(runs[1].text, QStringLiteral("12"));
    EXPECT_EQ(runs[2].text, QStringLiteral("3"));
    EXPECT_DOUBLE_EQ(runs[2].x, runs[1].x);
    EXPECT_GT(runs[1].rise, runs[2].rise);
    EXPECT_DOUBLE_EQ(runs[1].fractionBar, 20);
    EXPECT_DOUBLE_EQ(runs[3].x, 30);
    // A tolerance (^) has no bar.
    EXPECT_DOUBLE_EQ(DrawingTexts::LayOut(u"\\S+1^-2;", 10, 0)[0].runs[0].fractionBar, 0);
}
