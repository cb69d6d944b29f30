#include "SysCodeSaveCheck.h"

#include <gtest/gtest.h>

namespace {
struct SaveCheckCase
{
    const char* what;
    QList<QStringList> groups;
    SysCodeSaveStatus status;
    QString name;
};

class SysCodeSaveCheckTest : public ::testing::TestWithParam<SaveCheckCase>
{ };

TEST_P(SysCodeSaveCheckTest, FindsTheFirstProblemClashesBeforeNames)
{
    const SaveCheckCase& c = GetParam();
    const SysCodeSaveCheck result = CheckSysCodesForSave(c.groups);
    EXPECT_EQ(result.status, c.status);
    EXPECT_EQ(result.name, c.name);
}

INSTANTIATE_TEST_SUITE_P(Cases, SysCodeSaveCheckTest,
    ::testing::Values(SaveCheckCase { "empty tree", {}, SysCodeSaveStatus::Ok, {} },
        SaveCheckCase { "same name under different parents", { { "A", "B" }, { "A" }, { "A" } },
            SysCodeSaveStatus::Ok, {} },
        SaveCheckCase {
            "clash among siblings", { { "A", "B", "A" } }, SysCodeSaveStatus::SiblingDuplicate, "A" },
        SaveCheckCase { "clash in a later group", { { "A" }, { "x", "y", "y" } },
            SysCodeSaveStatus::SiblingDuplicate, "y" },
        // Names that differ only in case are different codes to the check.
        SaveCheckCase { "case differs", { { "a", "A" } }, SysCodeSaveStatus::Ok, {} },
        SaveCheckCase { "clash reported before an earlier bad name", { { "a/b" }, { "C", "C" } },
            SysCodeSaveStatus::SiblingDuplicate, "C" },
        // Names are one once trimmed, as the name rule judges them.
        SaveCheckCase { "clash once trimmed", { { "重复", "重复 ", " 重复" } },
            SysCodeSaveStatus::SiblingDuplicate, "重复" },
        SaveCheckCase {
            "hidden character", { { "A", "W\u200BL" } }, SysCodeSaveStatus::IllegalName, "W\u200BL" },
        SaveCheckCase { "bad name", { { "A" }, { "B", "SYS" } }, SysCodeSaveStatus::IllegalName, "SYS" },
        SaveCheckCase { "empty name", { { "A", "" } }, SysCodeSaveStatus::IllegalName, "" },
        SaveCheckCase {
            "two empty siblings clash", { { "", "" } }, SysCodeSaveStatus::SiblingDuplicate, "" }),
    [](const auto& info) {
        std::string name;
        for (const char ch : std::string(info.param.what))
            name += std::isalnum(static_cast<unsigned char>(ch)) ? ch : '_';
        return name;
    });
} // namespace
