#include "CQVCheckSysNameLegal.h"
#include "MessageBoxRecorder.h"

#include <gtest/gtest.h>

namespace {

using namespace Qt::StringLiterals;

TEST(SysNameLegality, JudgesOneLevelNames)
{
    const QString fifty(kMaxSysNameLength, u'水');
    const std::pair<QString, bool> cases[] = {
        { u""_s, false }, { u"   "_s, false }, { u"\t生活给水\n"_s, true }, { u"a/b"_s, false },
        { u"a\\b"_s, false }, { u"R&D"_s, false }, { u"O'Neil"_s, false }, { u"SYS"_s, false },
        { u"sys"_s, false }, { u" Sys "_s, false }, { u"SYS1"_s, true }, { u"ASYS"_s, true },
        { u"SYS 1"_s, true }, { u"给水SYS"_s, true }, { fifty, true }, { u"  "_s + fifty + u"  "_s, true },
        { fifty + u'A', false }, { QString(49, u'a') + u"𠀀"_s, false }, // two UTF-16 units
    };
    for (const auto& [name, legal] : cases) {
        EXPECT_EQ(CQVCheckSysNameLegal::CheckSysNameLegal(name), legal) << name.toStdString();
        EXPECT_EQ(CQVCheckSysNameLegal::OnCheckSysName(name), legal) << name.toStdString();
    }
}

TEST(SysCodeLevel, ThreeLevelsPassSilentlyAndDeeperOnesWarn)
{
    MessageBoxRecorder recorder;
    for (int level = 1; level <= kMaxSysCodeLevel; ++level)
        EXPECT_TRUE(CQVCheckSysNameLegal::CheckSysCodeLevel(level));
    EXPECT_TRUE(recorder.boxes().isEmpty());
    EXPECT_FALSE(CQVCheckSysNameLegal::CheckSysCodeLevel(4));
    ASSERT_EQ(recorder.boxes().size(), 1);
    EXPECT_EQ(recorder.boxes()[0].text, u"系统编号不允许超过3级!"_s);
    EXPECT_EQ(recorder.boxes()[0].caption, u"Quorvatek"_s);
    EXPECT_EQ(recorder.boxes()[0].type, 0x12030u);
}

} // namespace
