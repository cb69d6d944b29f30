#include "CQVCheckSysNameLegal.h"
#include "MessageBoxRecorder.h"
#include "ModuleStrings.h"

#include <gtest/gtest.h>

namespace {

struct NameCase
{
    const char16_t* name;
    bool legal;
};

class SysNameLegality : public ::testing::TestWithParam<NameCase>
{ };

TEST_P(SysNameLegality, JudgesOneLevelName)
{
    const QString name = QString::fromUtf16(GetParam().name);
    EXPECT_EQ(CQVCheckSysNameLegal::CheckSysNameLegal(name), GetParam().legal) << name.toStdString();
    EXPECT_EQ(CQVCheckSysNameLegal::OnCheckSysName(name), GetParam().legal) << name.toStdString();
}

INSTANTIATE_TEST_SUITE_P(Names, SysNameLegality,
    ::testing::Values(NameCase { u"", false }, NameCase { u"   ", false }, NameCase { u"\t生活给水\n", true },
        NameCase { u"a/b", false }, NameCase { u"a\\b", false }, NameCase { u"R&D", false },
        NameCase { u"O'Neil", false }, NameCase { u"给水\\一区", false }, NameCase { u"SYS", false },
        NameCase { u"sys", false }, NameCase { u"Sys", false }, NameCase { u"  SYS  ", false },
        NameCase { u"SYS1", true }, NameCase { u"ASYS", true }, NameCase { u"SYS 1", true },
        NameCase { u"SYSTEM", true }, NameCase { u"给水SYS", true }, NameCase { u"ß", true }));

TEST(SysNameLength, FiftyUnitsAfterTrimmingIsTheLimit)
{
    const QString fifty(kMaxSysNameLength, u'水');
    EXPECT_TRUE(CQVCheckSysNameLegal::CheckSysNameLegal(fifty));
    EXPECT_TRUE(CQVCheckSysNameLegal::CheckSysNameLegal(QStringLiteral("  ") + fifty + QStringLiteral("  ")));
    EXPECT_FALSE(CQVCheckSysNameLegal::CheckSysNameLegal(fifty + u'A'));
    // A character outside the BMP is two UTF-16 units.
    EXPECT_FALSE(CQVCheckSysNameLegal::CheckSysNameLegal(QString(49, u'a') + QStringLiteral("𠀀")));
}

TEST(SysNameLegality, IllegalNameMessageKeepsItsBackslash)
{
    const QStringList lines = g_strIllegalNameMsg.split(u'\n');
    ASSERT_EQ(lines.size(), 3);
    EXPECT_EQ(lines[2], QStringLiteral("\\/&'或者SYS"));
}

TEST(SysCodeLevel, ThreeLevelsPassSilentlyAndTheFourthWarnsOnce)
{
    MessageBoxRecorder recorder;
    for (int level = 1; level <= kMaxSysCodeLevel; ++level)
        EXPECT_TRUE(CQVCheckSysNameLegal::CheckSysCodeLevel(level));
    EXPECT_TRUE(recorder.boxes().isEmpty());

    EXPECT_FALSE(CQVCheckSysNameLegal::CheckSysCodeLevel(4));
    ASSERT_EQ(recorder.boxes().size(), 1);
    EXPECT_EQ(recorder.boxes()[0].text, QStringLiteral("系统编号不允许超过3级!"));
    EXPECT_EQ(recorder.boxes()[0].caption, QStringLiteral("Quorvatek"));
    EXPECT_EQ(recorder.boxes()[0].type, 0x12030u);
    EXPECT_FALSE(CQVCheckSysNameLegal::CheckSysCodeLevel(7));
    EXPECT_EQ(recorder.boxes().size(), 2);
}

} // namespace
