// What a save of a code tree writes on either engine: every kind of edit reads back
// as saved, only the codes that differ are written, the stamp a save hands back is
// the one a reader gets, and the store's count of changed rows counts every
// statement of a script.
#include "CISysCode.h"
#include "StoreEngineFixture.h"

#include <functional>
#include <limits>

namespace {

const QString kElec = QStringLiteral("电气");

// 照明 { WL1 { WL1-1, WL1-2 }, WL2 }, 动力 { AP1, AP2 }, 插座: indexes 1..9 in that order.
void saveBase()
{
    CSysCodeData root;
    CSysCodeData* light = addCode(root, QStringLiteral("照明"));
    CSysCodeData* wl1 = addCode(*light, QStringLiteral("WL1"));
    addCode(*wl1, QStringLiteral("WL1-1"));
    addCode(*wl1, QStringLiteral("WL1-2"));
    addCode(*light, QStringLiteral("WL2"));
    CSysCodeData* power = addCode(root, QStringLiteral("动力"));
    addCode(*power, QStringLiteral("AP1"));
    addCode(*power, QStringLiteral("AP2"));
    addCode(root, QStringLiteral("插座"));
    int seed = 0;
    std::function<void(CSysCodeData&)> fill = [&](CSysCodeData& node) {
        for (CSysCodeData* child : node.GetChildren()) {
            fillAttributes(*child, ++seed);
            fill(*child);
        }
    };
    fill(root);
    ASSERT_TRUE(CISysCode::SetSpecCodeInfos(root, kElec)) << QvKsDataMng::LastError().toStdString();
}

CSysCodeData* code(CSysCodeData& root, const char* fullName)
{
    CSysCodeData* node = root.FindByFullName(QString::fromUtf8(fullName));
    EXPECT_NE(node, nullptr) << fullName;
    return node;
}

struct Edit
{
    const char* what;
    std::function<void(CSysCodeData&)> apply;
};

const Edit kEdits[] = {
    { "one attribute of a leaf", [](CSysCodeData& t) { code(t, "照明\\WL2")->SetAlpha(77); } },
    { "two siblings swap names",
        [](CSysCodeData& t) {
            code(t, "动力\\AP1")->SetNodeName(QStringLiteral("AP-x"));
            code(t, "动力\\AP2")->SetNodeName(QStringLiteral("AP1"));
            code(t, "动力\\AP-x")->SetNodeName(QStringLiteral("AP2"));
        } },
    { "a code moves with its subtree where a deleted code had its name",
        [](CSysCodeData& t) {
            CSysCodeData* ap1 = code(t, "动力\\AP1");
            ap1->SetParent(nullptr);
            delete ap1;
            CSysCodeData* wl1 = code(t, "照明\\WL1");
            wl1->SetParent(code(t, "动力"));
            wl1->SetNodeName(QStringLiteral("AP1"));
        } },
    { "a top code moves under a sibling that moves last",
        [](CSysCodeData& t) {
            CSysCodeData* light = code(t, "照明");
            light->SetParent(nullptr);
            code(t, "动力")->SetParent(light); // 插座, then 照明 holding 动力
            light->SetParent(&t);
        } },
    { "a subtree deleted and a new code given its name",
        [](CSysCodeData& t) {
            CSysCodeData* wl1 = code(t, "照明\\WL1");
            wl1->SetParent(nullptr);
            delete wl1;
            fillAttributes(*addCode(*code(t, "照明"), QStringLiteral("WL1")), 50);
        } },
    { "a new code carrying a deleted code's index",
        [](CSysCodeData& t) {
            CSysCodeData* socket = code(t, "插座");
            const int index = socket->GetNodeIndex();
            socket->SetParent(nullptr);
            delete socket;
            fillAttributes(*addCode(*code(t, "动力\\AP2"), QStringLiteral("末端"), index), 60);
        } },
    { "a copy carrying its original's index",
        [](CSysCodeData& t) {
            CSysCodeData* copy = addCode(t, QStringLiteral("照明副本"), code(t, "照明")->GetNodeIndex());
            copy->CopyAttributesFrom(*code(t, "照明"));
        } },
    { "two siblings change places",
        [](CSysCodeData& t) { code(t, "动力\\AP1")->SetParent(code(t, "动力")); } },
    { "every code removed", [](CSysCodeData& t) { t.DeleteData(); } },
};

using CodeTreeSave = StoreEngineFixture;

TEST_P(CodeTreeSave, EveryKindOfEditReadsBackAsSavedWithIndexesNeverReused)
{
    const auto project = MakeProject();
    for (const Edit& edit : kEdits) {
        SCOPED_TRACE(edit.what);
        saveBase();
        CSysCodeData tree;
        ASSERT_TRUE(CISysCode::GetSpecCodeInfos(tree, kElec));
        const int mark = tree.GetNodeIndex();
        edit.apply(tree);
        ASSERT_TRUE(CISysCode::SetSpecCodeInfos(tree, kElec)) << QvKsDataMng::LastError().toStdString();
        EXPECT_EQ(stored(), dumpTree(tree));
        // Whatever got a new index got one above every index given out before.
        CSysCodeData again;
        ASSERT_TRUE(CISysCode::GetSpecCodeInfos(again, kElec));
        EXPECT_GE(again.GetNodeIndex(), mark);
        EXPECT_LE(again.GetMaxNodeIndex(), again.GetNodeIndex());
    }
}

TEST_P(CodeTreeSave, OnlyTheCodesThatDifferAreWritten)
{
    const auto project = MakeProject();
    CSysCodeData tree;
    for (int a = 0; a < 20; ++a) {
        CSysCodeData* top = addCode(tree, QStringLiteral("系统%1").arg(a));
        for (int b = 0; b < 10; ++b)
            fillAttributes(*addCode(*top, QStringLiteral("回路%1").arg(b)), a * 10 + b);
    }
    ASSERT_TRUE(CISysCode::SetSpecCodeInfos(tree, kElec));
    qint64 before = QvKsDataMng::ChangesMade();
    ASSERT_TRUE(CISysCode::SetSpecCodeInfos(tree, kElec));
    EXPECT_EQ(QvKsDataMng::ChangesMade(), before);

    code(tree, "系统7\\回路3")->SetDescribe(QStringLiteral("改"));
    before = QvKsDataMng::ChangesMade();
    ASSERT_TRUE(CISysCode::SetSpecCodeInfos(tree, kElec));
    const qint64 oneEdit = QvKsDataMng::ChangesMade() - before;
    EXPECT_GT(oneEdit, 0);
    EXPECT_LE(oneEdit, 2); // the code's old row out, its new one in
    EXPECT_EQ(stored(), dumpTree(tree));
}

// Values whose stored form could differ from what the program holds: fractions
// without an exact decimal form, the extremes of the colour, texts with quotes,
// backslashes, line breaks and nothing at all.
void fillAwkward(CSysCodeData& node, int i)
{
    const double widths[] = { 0.1, 1.0 / 3, 1e-300, 123456.789, 0.0, std::numeric_limits<double>::max() };
    const COLORREF colors[] = { 0, 0xFFFFFF, 0xFFFFFFFF, 0x80000000 };
    node.SetLineWidth(widths[i % 6]);
    node.SetMfcColor(colors[i % 4]);
    node.SetAlpha(i % 3 == 0 ? 0 : 100);
    node.SetLineStyle(i % 2 ? QString() : QStringLiteral("按字符"));
    node.SetLineString(QStringLiteral("'\"\\%1").arg(i));
    node.SetDescribe(i % 2 ? QStringLiteral("行一\r\n行二\t") : QString());
}

TEST_P(CodeTreeSave, TheStampASaveHandsBackIsTheStampOfWhatIsStored)
{
    const auto project = MakeProject();
    CSysCodeData tree;
    for (int i = 0; i < 24; ++i)
        fillAwkward(*addCode(tree, QStringLiteral("代号%1").arg(i)), i);
    quint64 stamp = 0;
    CSysCodeData none;
    ASSERT_TRUE(CISysCode::GetSpecCodeInfos(none, kElec, stamp));
    for (int round = 0; round < 3; ++round) {
        SCOPED_TRACE(round);
        ASSERT_EQ(CISysCode::SetSpecCodeInfos(tree, kElec, stamp), CISysCode::SaveResult::Saved)
            << QvKsDataMng::LastError().toStdString();
        CSysCodeData read;
        quint64 readStamp = 0;
        ASSERT_TRUE(CISysCode::GetSpecCodeInfos(read, kElec, readStamp));
        EXPECT_EQ(stamp, readStamp);
        EXPECT_EQ(dumpTree(read), dumpTree(tree));
        // The next edit, checked against the stamp the save handed back, goes in.
        fillAwkward(*tree.GetChild(round), round + 1);
        addCode(tree, QStringLiteral("新%1").arg(round));
    }
}

TEST_P(CodeTreeSave, AScriptCountsTheRowsOfEveryStatementAsChanged)
{
    const auto project = MakeProject();
    const qint64 before = QvKsDataMng::ChangesMade();
    ASSERT_TRUE(QvKsDataMng::RunScript(
        QStringLiteral("INSERT INTO spec(spec_id, name, ord) VALUES (20, '甲', 20), (21, '乙', 21);"
                       "UPDATE spec SET ord = ord + 1 WHERE spec_id >= 20;"
                       "DELETE FROM spec WHERE spec_id = 21;"
                       "CREATE TABLE scratch(x INTEGER); DROP TABLE scratch;"
                       "SELECT count(*) FROM spec")));
    EXPECT_EQ(QvKsDataMng::ChangesMade() - before, 5);
}

INSTANTIATE_TEST_SUITE_P(
    Engines, CodeTreeSave, ::testing::Values(StoreEngine::File, StoreEngine::Server), EngineName);

} // namespace
