#include "CQVCheckSysNameLegal.h"
#include "MessageBoxRecorder.h"
#include "ModuleStrings.h"

#include <gtest/gtest.h>

namespace {

using namespace Qt::StringLiterals;

TEST(SysNameLegality, JudgesOneLevelNames)
{
    const QString fifty(kMaxSysNameLength, u'水');
    const std::pair<QString, bool> cases[] = {
        { u""_s, false },
        { u"   "_s, false },
        { u"\t生活给水\n"_s, true },
        { u"a/b"_s, false },
        { u"a\\b"_s, false },
        { u"R&D"_s, false },
        { u"O'Neil"_s, false },
        { u"SYS"_s, false },
        { u"sys"_s, false },
        { u" Sys "_s, false },
        { u"SYS1"_s, true },
        { u"ASYS"_s, true },
        { u"SYS 1"_s, true },
        { u"给水SYS"_s, true },
        { fifty, true },
        { u"  "_s + fifty + u"  "_s, true },
        { fifty + u'A', false },
        { QString(49, u'a') + u"𠀀"_s, false }, // two UTF-16 units
        // Characters that cannot be seen or steer the text, inside the name; at its
        // ends the white-space ones are trimmed away.
        { u"照明\n回路"_s, false },
        { u"照明\t回路"_s, false },
        { u"照明\r"_s, true },
        { u"WL\x7F"_s, false },
        { u"WL\u0085A"_s, false },
        { u"WL\u200B1"_s, false },
        { u"WL1\u200F"_s, false },
        { u"\u202EWL1"_s, false },
        { u"\uFEFFWL1"_s, false },
        { u"WL\u2028A"_s, false },
        { u"WL\u2029A"_s, false },
        { u"\u2028WL1\u2029"_s, true },
        { u"WL"_s + QChar(0) + u"1"_s, false },
        { u"WL"_s + QChar(0xD800) + u"1"_s, false },
        { u"WL"_s + QChar(0xDC00), false },
        { u"WL\U000E0041"_s, false }, // a tag character
        // Visible characters stay legal: a no-break space, emoji, CJK beyond the BMP.
        { u"WL\u00A01"_s, true },
        { u"照明💡"_s, true },
        { u"𠀀区"_s, true },
    };
    for (const auto& [name, legal] : cases) {
        EXPECT_EQ(CQVCheckSysNameLegal::CheckSysNameLegal(name), legal) << name.toStdString();
        EXPECT_EQ(CQVCheckSysNameLegal::OnCheckSysName(name), legal) << name.toStdString();
    }
}

TEST(SysNameLegality, TheMessageNamesAHiddenCharacterTheUserCannotSee)
{
    const std::pair<QString, QString> cases[] = {
        { u"照明\n回路"_s, u"系统编号中包含不可见的字符或控制字符（U+000A）"_s },
        { u"WL\u200B1"_s, u"系统编号中包含不可见的字符或控制字符（U+200B）"_s },
        { u" A\u200FB/C "_s, u"系统编号中包含不可见的字符或控制字符（U+200F）"_s },
        { u"WL\U000E0041"_s, u"系统编号中包含不可见的字符或控制字符（U+E0041）"_s },
        { u"a/b"_s, g_strIllegalNameMsg },
        { u"SYS"_s, g_strIllegalNameMsg },
        { u""_s, g_strIllegalNameMsg },
    };
    for (const auto& [name, message] : cases)
        EXPECT_EQ(CQVCheckSysNameLegal::IllegalNameMessage(name), message) << name.toStdString();
    EXPECT_EQ(CQVCheckSysNameLegal::FindHiddenChar(u" \tA\u200BB "_s), 1);
    EXPECT_EQ(CQVCheckSysNameLegal::FindHiddenChar(u"照明💡"_s), -1);
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
