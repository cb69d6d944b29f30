// The ".lin" text both ways, and the line-type names codes' styles stand for.
#include "LinFormat.h"
#include "LineTypeMgr.h"

#include <gtest/gtest.h>

TEST(LinFormat, WrittenDefinitionsReadBackAlike)
{
    const QVector<LineTypeDef> defs = LineTypeMgr::DefinitionsFor({ QStringLiteral("J"), QStringLiteral("ZP"),
        QStringLiteral("J"), QStringLiteral("a,b\"c"), QString() });
    // Four fixed types, then one per distinct non-empty character string.
    ASSERT_EQ(defs.size(), 7);
    const QVector<LineTypeDef> back = LinFormat::Parse(LinFormat::Format(defs, QStringLiteral("test")));
    ASSERT_EQ(back.size(), defs.size());
    for (qsizetype i = 0; i < defs.size(); ++i) {
        EXPECT_EQ(back[i].name, defs[i].name);
        EXPECT_EQ(back[i].description, defs[i].description);
        ASSERT_EQ(back[i].elements.size(), defs[i].elements.size()) << defs[i].name.toStdString();
        for (qsizetype k = 0; k < defs[i].elements.size(); ++k) {
            EXPECT_EQ(back[i].elements[k].isText, defs[i].elements[k].isText);
            EXPECT_EQ(back[i].elements[k].text, defs[i].elements[k].text);
            EXPECT_NEAR(back[i].elements[k].length, defs[i].elements[k].length, 1e-4);
            EXPECT_NEAR(back[i].elements[k].dx, defs[i].elements[k].dx, 1e-4);
        }
    }
    // A quote in the characters cannot be written inside the text: it is replaced.
    EXPECT_EQ(back[6].elements[2].text, QStringLiteral("a,b'c"));
    // The gap around the characters grows with their number.
    EXPECT_LT(std::abs(back[4].elements[1].length), std::abs(back[5].elements[1].length));
}

TEST(LinFormat, MalformedDefinitionsAreSkipped)
{
    const QString text = QStringLiteral(";; comment\n"
                                        "*GOOD,good\nA,1,-1\n"
                                        "*NOPATTERN,none\n"
                                        "*BADNUM,x\nA,1,-abc\n"
                                        "*OPEN,x\nA,1,[\"T\",STANDARD,S=1\n"
                                        "*ZERO,x\nA,0,0\n"
                                        "*NOTA,x\nB,1,-1\n"
                                        "*,nameless\nA,1,-1\n"
                                        "*HUGE,x\nA,1e300,-1\n"
                                        "*TEXT,t\nA,2,[\"W\",STANDARD,S=2.5,R=0.0,X=-1,Y=-1.25],-2\n");
    const QVector<LineTypeDef> defs = LinFormat::Parse(text);
    ASSERT_EQ(defs.size(), 2);
    EXPECT_EQ(defs[0].name, QStringLiteral("GOOD"));
    EXPECT_EQ(defs[1].name, QStringLiteral("TEXT"));
    ASSERT_EQ(defs[1].elements.size(), 3);
    EXPECT_TRUE(defs[1].elements[1].isText);
    EXPECT_DOUBLE_EQ(defs[1].elements[1].size, 2.5);
    EXPECT_DOUBLE_EQ(defs[1].PatternLength(), 4.0);
}

TEST(LineTypeMgr, StyleNamesTheLineType)
{
    const struct
    {
        const char16_t* style;
        const char16_t* chars;
        const char16_t* expected;
    } cases[] = {
        { u"", u"J", u"" },
        { u"按字符", u"", u"" },
        { u"按字符", u" J ", u"QVSYS_J" },
        { u"按字符", u"给水", u"QVSYS_给水" },
        { u"按字符", u"J-1", u"QVSYS_J_u002d1" },
        { u"QVCenter ____ _ ____", u"", u"QVCenter" },
        { u"QV_Busbar ----/----", u"X", u"QV_Busbar" },
    };
    for (const auto& c : cases)
        EXPECT_EQ(LineTypeMgr::LineTypeNameOf(QString::fromUtf16(c.style), QString::fromUtf16(c.chars)),
            QString::fromUtf16(c.expected))
            << QString::fromUtf16(c.style).toStdString();
}
