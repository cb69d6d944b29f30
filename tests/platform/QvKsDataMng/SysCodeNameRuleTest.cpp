// The data service's own name rule: it judges names as the dialog does, and every
// way into the store (a ".scn" import, a tree handed to SetSpecCodeInfos) refuses
// illegal names and trees deeper than three levels, says where, and changes nothing.
#include "SysCodeNameRule.h"
#include "CISysCode.h"
#include "CQVCheckSysNameLegal.h"
#include "SysCodeValueRange.h"
#include "SysCodeValueRule.h"
#include "TempProject.h"

#include <limits>

namespace {

TEST(SysCodeNameRule, JudgesEveryNameAsTheDialogsCheckDoes)
{
    const QString names[] = { QStringLiteral("WL1"), QStringLiteral("生活给水"), QStringLiteral(" A "),
        QStringLiteral("A/B"), QStringLiteral("R&D"), QStringLiteral("O'Neil"), QStringLiteral("a\\b"),
        QStringLiteral("SYS"), QStringLiteral("sys"), QStringLiteral(" Sys "), QStringLiteral("SYS1"),
        QStringLiteral("XSYS"), QString(), QStringLiteral("   "), QString(50, QLatin1Char('n')),
        QString(51, QLatin1Char('n')), QString(50, QLatin1Char('n')) + QStringLiteral("  "),
        QStringLiteral("A \"quoted\" <tagged>"), QStringLiteral("%1;--"),
        // Hidden characters, inside and at the ends, in and beyond the BMP.
        QStringLiteral("照明\n回路"), QStringLiteral("照明\t回路"), QStringLiteral("\t照明\n"),
        QStringLiteral("WL\x7f"), QStringLiteral("WL\u200B1"), QStringLiteral("WL1\u200F"),
        QStringLiteral("\u202EWL"), QStringLiteral("W\u2028L"), QStringLiteral("\u2029WL\u2028"),
        QStringLiteral("WL\uFEFF"), QString::fromUtf16(u"WL\U000E0041"), QStringLiteral("WL") + QChar(0xD800),
        QStringLiteral("WL\u00A01"), QString::fromUtf16(u"照明💡"), QString::fromUtf16(u"𠀀区") };
    for (const QString& name : names)
        EXPECT_EQ(SysCodeNameRule::NameProblem(name).isEmpty(), CQVCheckSysNameLegal::CheckSysNameLegal(name))
            << name.toStdString();
}

TEST(SysCodeNameRule, TreeProblemNamesTheFirstFaultyCodeByItsFullName)
{
    const struct
    {
        QStringList path; // a chain of codes from the top
        QString expected; // empty: no problem
    } cases[] = {
        { { QStringLiteral("A"), QStringLiteral("B"), QStringLiteral("C") }, QString() },
        { { QStringLiteral("A"), QStringLiteral("B"), QStringLiteral("C"), QStringLiteral("D") },
            QStringLiteral("the code \"A\\B\\C\\D\" lies deeper than 3 levels") },
        { { QStringLiteral("A"), QStringLiteral("R&D") },
            QStringLiteral("the code \"A\\R&D\" has an illegal name: the name contains \"&\"") },
        { { QStringLiteral("sys") },
            QStringLiteral("the code \"sys\" has an illegal name: \"SYS\" is reserved") },
        { { QStringLiteral("A"), QStringLiteral(" ") },
            QStringLiteral("the code \"A\\ \" has an illegal name: the name is empty") },
        { { QStringLiteral("A"), QStringLiteral("W\u200BL") },
            QStringLiteral("the code \"A\\W\u200BL\" has an illegal name: the name holds the control or "
                           "invisible character U+200B") },
        // "first " sits beside "first" at the top: one name once trimmed.
        { { QStringLiteral("first ") }, QStringLiteral("the code \"first \" appears twice at one level") },
    };
    for (const auto& c : cases) {
        CSysCodeData root;
        addCode(root, QStringLiteral("first"));
        CSysCodeData* parent = &root;
        for (const QString& name : c.path)
            parent = addCode(*parent, name);
        EXPECT_EQ(SysCodeNameRule::TreeProblem(root), c.expected) << c.path.join(u'|').toStdString();
    }
}

// The data service's value rule and the module's range rule take and refuse the
// same values.
TEST(SysCodeValueRule, JudgesEveryValueAsTheModulesRangeRuleDoes)
{
    const double widths[] = { 0, 0.005, 30, 100, 100.0001, -1, -1.5, -0.0, -30, 1e308, -1e308,
        std::numeric_limits<double>::infinity(), std::numeric_limits<double>::quiet_NaN() };
    for (const double width : widths)
        EXPECT_EQ(SysCodeValueRule::LineWidthProblem(width).isEmpty(), IsSysLineWidthInRange(width)) << width;
    const qint64 alphas[] = { 0, 1, 100, 101, -1, -7, 99999, std::numeric_limits<int>::max() };
    for (const qint64 alpha : alphas)
        EXPECT_EQ(SysCodeValueRule::AlphaProblem(alpha).isEmpty(), IsSysAlphaInRange(alpha)) << alpha;
    const quint64 colours[] = { 0, 0xFFFFFF, 0x1000000, 0xFFFFFFFF };
    for (const quint64 colour : colours)
        EXPECT_EQ(SysCodeValueRule::ColorProblem(colour).isEmpty(), IsSysColorInRange(colour)) << colour;
}

TEST(SysCodeNameRule, SetSpecCodeInfosRefusesIllegalTreesAndKeepsTheStoredOne)
{
    TempProject project;
    const QString spec = QStringLiteral("电气");
    CSysCodeData stored;
    addCode(*addCode(stored, QStringLiteral("WL"), 1), QStringLiteral("WL1"), 2);
    ASSERT_TRUE(CISysCode::SetSpecCodeInfos(stored, spec)) << QvKsDataMng::LastError().toStdString();
    CSysCodeData before;
    ASSERT_TRUE(CISysCode::GetSpecCodeInfos(before, spec));

    const QStringList badNames = { QStringLiteral("A/B"), QStringLiteral("SYS"), QStringLiteral("R&D"),
        QStringLiteral("W\nL"), QStringLiteral("WL ") };
    for (const QString& bad : badNames) {
        CSysCodeData tree;
        addCode(tree, QStringLiteral("WL"), 1);
        addCode(tree, bad, 2);
        EXPECT_FALSE(CISysCode::SetSpecCodeInfos(tree, spec)) << bad.toStdString();
        EXPECT_TRUE(QvKsDataMng::LastError().contains(QLatin1Char('"') + bad + QLatin1Char('"')))
            << QvKsDataMng::LastError().toStdString();
    }
    CSysCodeData deep;
    addCode(*addCode(*addCode(*addCode(deep, QStringLiteral("1")), QStringLiteral("2")), QStringLiteral("3")),
        QStringLiteral("4"));
    EXPECT_FALSE(CISysCode::SetSpecCodeInfos(deep, spec));
    EXPECT_TRUE(QvKsDataMng::LastError().contains(QStringLiteral("1\\2\\3\\4")));

    CSysCodeData after;
    ASSERT_TRUE(CISysCode::GetSpecCodeInfos(after, spec));
    EXPECT_EQ(dumpTree(after), dumpTree(before));
}

TEST(SysCodeNameRule, ScnImportRefusesIllegalNamesNamingTheLine)
{
    QTemporaryDir dir;
    const QString path = dir.filePath(QStringLiteral("bad.scn"));
    const struct
    {
        const char* name;
        bool legacy;
    } cases[] = { { "A/B", false }, { "SYS", false }, { "R&amp;D", false }, { "O'Neil", false },
        { "sys", true }, { "R&amp;D", true } };
    for (const auto& c : cases) {
        const QByteArray name(c.name);
        const QByteArray bytes = c.legacy
            ? "<SysCodeData Version=\"2.5.1\">\n<SysNode><Name>ok</Name></SysNode>\n<SysNode><Name>" + name
                + "</Name></SysNode>\n</SysCodeData>\n"
            : "<SysCodeFile Version=\"3.2.0\">\n<Code Name=\"ok\"/>\n<Code Name=\"" + name
                + "\"/>\n</SysCodeFile>\n";
        ASSERT_TRUE(writeBytes(path, bytes));
        CSysCodeData tree;
        addCode(tree, QStringLiteral("kept"));
        if (c.legacy) {
            EXPECT_FALSE(CISysCode::UpdataSysData(path)) << c.name;
            EXPECT_EQ(readBytes(path), bytes);
        } else {
            EXPECT_FALSE(tree.ImportData(path)) << c.name;
            EXPECT_EQ(dumpTree(tree).size(), 1);
        }
        const QString error = QvKsDataMng::LastError();
        EXPECT_TRUE(error.contains(QStringLiteral("line 3:"))) << error.toStdString();
        EXPECT_TRUE(
            error.contains(QString::fromUtf8(name).replace(QStringLiteral("&amp;"), QStringLiteral("&"))))
            << error.toStdString();
    }
}

} // namespace
