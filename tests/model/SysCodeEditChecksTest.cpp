#include "SysCodeEditChecks.h"

#include <gtest/gtest.h>

#include <set>

namespace {
struct NameCase
{
    const char* parent;
    const char* current;
    const char* typed;
    NameEditStatus status;
    const char* fullName;
};

TEST(SysCodeEditChecks, NameEditIsJudgedAgainstTheCodesOfItsLevel)
{
    const std::set<QString> codes = { "给水", "给水\\Abc", "给水\\Def", "排水" };
    const auto exists = [&](const QString& fullName) { return codes.count(fullName) > 0; };
    const NameCase cases[] = {
        { "给水", "Abc", "Ghi", NameEditStatus::Accepted, "给水\\Ghi" },
        { "给水", "Abc", "abc", NameEditStatus::Accepted, "给水\\abc" }, // letter case only
        { "给水", "Abc", "Abc", NameEditStatus::Accepted, "给水\\Abc" }, // unchanged
        { "给水", "Abc", "Def", NameEditStatus::Clash, "给水\\Def" },
        { "给水", "Abc", "  Def ", NameEditStatus::Clash, "给水\\Def" }, // trimmed first
        { "给水", "Abc", "DEF", NameEditStatus::Accepted, "给水\\DEF" }, // the lookup is exact
        { "", "给水", "排水", NameEditStatus::Clash, "排水" }, // top level has no parent part
        { "", "给水", "中水", NameEditStatus::Accepted, "中水" },
        { "给水", "Abc", "   ", NameEditStatus::Illegal, "给水\\" },
        { "给水", "Abc", "R&D", NameEditStatus::Illegal, "给水\\R&D" },
        { "给水", "Abc", "sys", NameEditStatus::Illegal, "给水\\sys" },
    };
    for (const NameCase& c : cases) {
        SCOPED_TRACE(c.typed);
        const NameEditResult r = CheckNameEdit(
            QString::fromUtf8(c.parent), QString::fromUtf8(c.current), QString::fromUtf8(c.typed), exists);
        EXPECT_EQ(r.status, c.status);
        EXPECT_EQ(r.fullName, QString::fromUtf8(c.fullName));
    }
}

TEST(SysCodeEditChecks, RemarkRefusesAmpersandSlashAndBackslashOnly)
{
    const std::pair<const char*, bool> cases[] = {
        { "", false },
        { "一层-二层", false },
        { "a/b", true },
        { "a\\b", true },
        { "R&D", true },
        { "100%", false },
        { "'quoted'", false },
    };
    for (const auto& [remark, refused] : cases) {
        SCOPED_TRACE(remark);
        EXPECT_EQ(HasForbiddenRemarkChar(QString::fromUtf8(remark)), refused);
    }
}

struct AlphaCase
{
    const char* typed;
    AlphaTextStatus status;
    const char* normalised; // when accepted
};

TEST(SysCodeEditChecks, TransparencyTakesWholeNumbersUpTo100)
{
    const AlphaCase cases[] = {
        { "100", AlphaTextStatus::Accepted, "100" }, { "0", AlphaTextStatus::Accepted, "0" },
        { "007", AlphaTextStatus::Accepted, "7" }, { "", AlphaTextStatus::Accepted, "0" },
        { " 50 ", AlphaTextStatus::Accepted, "50" },
        { "0000000000000000000042", AlphaTextStatus::Accepted, "42" },
        { "101", AlphaTextStatus::OutOfRange, "" },
        { "99999999999999999999", AlphaTextStatus::OutOfRange, "" }, { "-1", AlphaTextStatus::NotDigits, "" },
        { "50%", AlphaTextStatus::NotDigits, "" }, { "5 0", AlphaTextStatus::NotDigits, "" },
        { "１０", AlphaTextStatus::NotDigits, "" }, // full-width digits are not decimal digits here
    };
    for (const AlphaCase& c : cases) {
        SCOPED_TRACE(c.typed);
        QString out = QStringLiteral("untouched");
        EXPECT_EQ(NormaliseAlphaText(QString::fromUtf8(c.typed), out), c.status);
        if (c.status == AlphaTextStatus::Accepted)
            EXPECT_EQ(out, QString::fromUtf8(c.normalised));
        else
            EXPECT_EQ(out, "untouched");
    }
}

struct RenameStep
{
    const char* from;
    const char* to;
};

struct RenameChainCase
{
    const char* name;
    std::vector<RenameStep> steps;
    SysCodeRenameChain expected;
};

TEST(SysCodeEditChecks, RenamesCollapseIntoOnePairPerChain)
{
    const RenameChainCase cases[] = {
        { "one rename", { { "A", "B" } }, { { "电气\\A", "电气\\B" } } },
        { "unchanged name records nothing", { { "A", "A" } }, {} },
        { "chain collapses", { { "A", "B" }, { "B", "C" } }, { { "电气\\A", "电气\\C" } } },
        { "back to the start keeps a pair that changes nothing", { { "A", "B" }, { "B", "A" } },
            { { "电气\\A", "电气\\A" } } },
        { "two codes two pairs", { { "A", "B" }, { "X", "Y" }, { "B", "C" } },
            { { "电气\\A", "电气\\C" }, { "电气\\X", "电气\\Y" } } },
        { "levels are part of the path", { { "A\\a", "A\\b" } }, { { "电气\\A\\a", "电气\\A\\b" } } },
    };
    for (const RenameChainCase& c : cases) {
        SCOPED_TRACE(c.name);
        SysCodeRenameChain renames;
        for (const RenameStep& s : c.steps)
            RecordSysCodeRename(
                renames, QStringLiteral("电气"), QString::fromUtf8(s.from), QString::fromUtf8(s.to));
        EXPECT_EQ(renames, c.expected);
    }
}

} // namespace
