// The data service's own name rule: it judges names as the dialog does, and every
// way into the store (a ".scn" import, a tree handed to SetSpecCodeInfos) refuses
// illegal names and trees deeper than three levels, says where, and changes nothing.
#include "SysCodeNameRule.h"
#include "CISysCode.h"
#include "CQVCheckSysNameLegal.h"
#include "TempProject.h"

namespace {

TEST(SysCodeNameRule, JudgesEveryNameAsTheDialogsCheckDoes)
{
    const QString names[] = { QStringLiteral("WL1"), QStringLiteral("生活给水"), QStringLiteral(" A "),
        QStringLiteral("A/B"), QStringLiteral("R&D"), QStringLiteral("O'Neil"), QStringLiteral("a\\b"),
        QStringLiteral("SYS"), QStringLiteral("sys"), QStringLiteral(" Sys "), QStringLiteral("SYS1"),
        QStringLiteral("XSYS"), QString(), QStringLiteral("   "), QString(50, QLatin1Char('n')),
        QString(51, QLatin1Char('n')), QString(50, QLatin1Char('n')) + QStringLiteral("  "),
        QStringLiteral("A \"quoted\" <tagged>"), QStringLiteral("%1;--") };
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

TEST(SysCodeNameRule, SetSpecCodeInfosRefusesIllegalTreesAndKeepsTheStoredOne)
{
    TempProject project;
    const QString spec = QStringLiteral("电气");
    CSysCodeData stored;
    addCode(*addCode(stored, QStringLiteral("WL"), 1), QStringLiteral("WL1"), 2);
    ASSERT_TRUE(CISysCode::SetSpecCodeInfos(stored, spec)) << QvKsDataMng::LastError().toStdString();
    CSysCodeData before;
    ASSERT_TRUE(CISysCode::GetSpecCodeInfos(before, spec));

    const QStringList badNames = { QStringLiteral("A/B"), QStringLiteral("SYS"), QStringLiteral("R&D") };
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
