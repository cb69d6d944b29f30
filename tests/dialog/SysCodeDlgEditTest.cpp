// Editing the cells of the management grid as a user does: a cell opened with F2,
// text typed, and the edit ended by a click elsewhere or Enter; the dialog keeps a
// refused text in its editor with one warning, and takes an accepted one.
#include "CTreeListCombo.h"
#include "CTreeListCtrl.h"
#include "CTreeListEdit.h"
#include "CTreeListEditBtn.h"
#include "CtrlId.h"
#include "DxfWriter.h"
#include "MessageBoxRecorder.h"
#include "QvKsCADColorTool.h"
#include "QvKsDataMng.h"
#include "Resource.h"
#include "ShownDialog.h"
#include "SysCodeDlg.h"
#include "TestProject.h"
#include "ZcDbBlockTable.h"
#include "ZcDbBlockTableRecord.h"
#include "ZcDbBlockTableRecordIterator.h"
#include "ZcDbDatabase.h"
#include "ZcEdSelection.h"
#include "ZcUtPrintf.h"

#include <QBuffer>
#include <QClipboard>
#include <QGuiApplication>
#include <QLineEdit>
#include <QTest>
#include <QToolButton>
#include <gtest/gtest.h>

namespace {
const char* const kLayModes = R"sql(
INSERT INTO lay_mode(floor_id, ord, name) VALUES (2, 1, '沿墙明敷'), (2, 2, '穿管暗敷');
INSERT INTO ver_lay_mode(ord, name) VALUES (1, '沿柱明敷');
)sql";

const QString kSpecElec = QStringLiteral("电气");
const QString kSpecWater = QStringLiteral("给排水");

enum class End { ClickElsewhere, Enter };

class SysCodeDlgEditTest : public ::testing::Test
{
protected:
    void SetUp() override { ASSERT_TRUE(project.isOpen()); }
    void TearDown() override
    {
        QvKsCADColorTool::SetColorDialogHandler({});
        zcedSSClearQueue();
    }

    std::unique_ptr<SysCodeDlg> open(const QString& spec = kSpecElec) { return OpenShownDialog(spec); }
    static CTreeListCtrl& grid(SysCodeDlg& dlg) { return GridOf(dlg); }
    static HTREEITEM row(SysCodeDlg& dlg, const QString& fullName) { return dlg.FindRowByFullName(fullName); }
    static void clickCell(SysCodeDlg& dlg, HTREEITEM item, int column)
    {
        CTreeListCtrl& g = grid(dlg);
        QTest::mouseClick(g.viewport(), Qt::LeftButton, {}, g.GetSubItemRect(item, column).center());
    }
    // Selects the cell with a click and opens its editor with F2.
    static CTreeListEditorBase* edit(SysCodeDlg& dlg, HTREEITEM item, int column)
    {
        clickCell(dlg, item, column);
        QTest::keyClick(&grid(dlg), Qt::Key_F2);
        return grid(dlg).GetActiveEditor();
    }
    static QWidget* typingTarget(CTreeListEditorBase* editor)
    {
        if (auto* button = dynamic_cast<CTreeListEditBtn*>(editor))
            return button->GetEdit();
        if (auto* combo = dynamic_cast<CTreeListCombo*>(editor))
            return combo->lineEdit() ? static_cast<QWidget*>(combo->lineEdit()) : combo;
        return editor->widget();
    }
    // Replaces the editor's text by typing, CJK characters as key events with text.
    static void type(CTreeListEditorBase* editor, const QString& text)
    {
        QWidget* target = typingTarget(editor);
        if (auto* line = qobject_cast<QLineEdit*>(target))
            line->selectAll();
        QTest::keyClick(target, Qt::Key_Delete);
        for (QChar c : text)
            QTest::sendKeyEvent(QTest::Click, target, Qt::Key_unknown, QString(c), {});
    }
    // Ends the edit on a cell of another row (column 5 of `elsewhere`), or with Enter.
    static void end(SysCodeDlg& dlg, CTreeListEditorBase* editor, End how, HTREEITEM elsewhere)
    {
        if (how == End::Enter)
            QTest::keyClick(typingTarget(editor), Qt::Key_Return);
        else
            clickCell(dlg, elsewhere, 5);
    }

    TestProject project { QString::fromUtf8(kLayModes) };
};

struct NameCase
{
    const char* what;
    const char* fullName; // the row edited
    const char* typed;
    End how;
    const char* message; // "" when accepted
    const char* cell; // the row's name afterwards
};

TEST_F(SysCodeDlgEditTest, NameEditsAreJudgedAtTheirLevel)
{
    const NameCase cases[] = {
        { "new name", "照明", "应急照明", End::ClickElsewhere, "", "应急照明" },
        { "letter case only", "照明\\WL1", "wl1", End::ClickElsewhere, "", "wl1" },
        { "a sibling's name", "照明", "动力", End::ClickElsewhere, " 动力系统编号在该级中已存在!", "照明" },
        { "a sibling's name by Enter", "插座", "动力", End::Enter, " 动力系统编号在该级中已存在!", "插座" },
        { "illegal name", "动力", "R&D", End::ClickElsewhere,
            "系统编号为空、过长\n或系统编号中包含以下不能使用的字符：\n\\/&'或者SYS!", "动力" },
    };
    for (const NameCase& c : cases) {
        SCOPED_TRACE(c.what);
        MessageBoxRecorder boxes;
        auto dlg = open();
        CTreeListCtrl& g = grid(*dlg);
        HTREEITEM item = row(*dlg, QString::fromUtf8(c.fullName));
        HTREEITEM other = row(*dlg, QStringLiteral("插座")) == item ? row(*dlg, QStringLiteral("动力"))
                                                                    : row(*dlg, QStringLiteral("插座"));
        ASSERT_NE(item, nullptr);
        if (g.GetRowFromItem(item) < 0)
            g.EnsureVisible(item);
        CTreeListEditorBase* editor = edit(*dlg, item, 0);
        ASSERT_NE(editor, nullptr);
        ASSERT_EQ(editor->GetDlgCtrlID(), IDC_EDIT_NAME);
        type(editor, QString::fromUtf8(c.typed));
        end(*dlg, editor, c.how, other);

        const bool refused = *c.message != 0;
        EXPECT_EQ(g.GetItemText(item, 0), QString::fromUtf8(c.cell));
        EXPECT_TRUE(dlg->IsModified());
        if (refused) {
            ASSERT_EQ(boxes.boxes().size(), 1);
            EXPECT_EQ(boxes.boxes()[0].text, QString::fromUtf8(c.message));
            EXPECT_EQ(boxes.boxes()[0].type, 0x12030u);
            EXPECT_EQ(g.GetActiveEditor(), editor);
            EXPECT_EQ(editor->GetWindowText(), QString::fromUtf8(c.typed));
            EXPECT_TRUE(dlg->m_renames.empty());
            // The swallowed click selected nothing.
            EXPECT_EQ(g.GetCaretItem(), item);
        } else {
            EXPECT_TRUE(boxes.boxes().isEmpty()) << boxes.texts().join('|').toStdString();
            EXPECT_EQ(g.GetActiveEditor(), nullptr);
            const QString parent = QString::fromUtf8(c.fullName).section('\\', 0, -2);
            const QString renamed = (parent.isEmpty() ? QString() : parent + '\\') + c.cell;
            ASSERT_EQ(dlg->m_renames.size(), 1u);
            EXPECT_EQ(dlg->m_renames[0].first, "电气\\" + QString::fromUtf8(c.fullName));
            EXPECT_EQ(dlg->m_renames[0].second, "电气\\" + renamed);
        }
        g.EndEditing(true, TLEND_CANCEL);
    }
}

struct TextCellCase
{
    const char* spec;
    int column; // visible position
    const char* typed;
    const char* message; // "" when accepted
    const char* cell; // afterwards
    bool editorOpen;
};

TEST_F(SysCodeDlgEditTest, RemarkTransparencyAndLineCharactersAreChecked)
{
    const char* const remarkMsg = "备注信息中包含以下不能使用的字符：&/\\!";
    const char* const alphaMsg = "透明度仅支持0-100的整数!";
    const char* const codeMsg = "线型字符仅支持字母和数字，且最长为3个字符!";
    const TextCellCase cases[] = {
        { "电气", 9, "a/b", remarkMsg, "一般照明", true },
        { "电气", 9, "一层-二层", "", "一层-二层", false },
        { "电气", 8, "100", "", "100", false },
        { "电气", 8, "007", "", "7", false },
        { "电气", 8, "", "", "0", false },
        { "电气", 8, "101", alphaMsg, "0", true },
        { "电气", 8, "-1", alphaMsg, "0", true },
        { "电气", 6, "AB1", "", "AB1", false },
        { "电气", 6, "ABCD", codeMsg, "", false },
        // Seven columns: transparency at 5 meets only the editor's own code rule.
        { "给排水", 5, "101", "", "101", false },
        { "给排水", 5, "1000", codeMsg, "0", false },
        { "给排水", 3, "JS", "", "JS", false },
    };
    for (const TextCellCase& c : cases) {
        SCOPED_TRACE(std::string(c.spec) + " column " + std::to_string(c.column) + " " + c.typed);
        MessageBoxRecorder boxes;
        auto dlg = open(QString::fromUtf8(c.spec));
        CTreeListCtrl& g = grid(*dlg);
        HTREEITEM item = g.GetItemFromRow(0);
        CTreeListEditorBase* editor = edit(*dlg, item, c.column);
        ASSERT_NE(editor, nullptr);
        type(editor, QString::fromUtf8(c.typed));
        QTest::keyClick(typingTarget(editor), Qt::Key_Return);
        if (*c.message) {
            ASSERT_EQ(boxes.texts(), QStringList { QString::fromUtf8(c.message) });
            EXPECT_EQ(boxes.boxes()[0].type, 0x12030u);
        } else {
            EXPECT_TRUE(boxes.boxes().isEmpty()) << boxes.texts().join('|').toStdString();
        }
        EXPECT_EQ(g.GetActiveEditor() != nullptr, c.editorOpen);
        EXPECT_EQ(g.GetItemText(item, c.column), QString::fromUtf8(c.cell));
        EXPECT_TRUE(dlg->IsModified());
        const bool lineChars = c.column == (QString::fromUtf8(c.spec) == kSpecElec ? 6 : 3);
        EXPECT_EQ(dlg->m_bLineTypesChanged, !*c.message && lineChars);
        g.EndEditing(true, TLEND_CANCEL);
    }
}

TEST_F(SysCodeDlgEditTest, AWidthThatIsNoNumberWarnsOnceAndKeepsTheComboOpen)
{
    MessageBoxRecorder boxes;
    auto dlg = open();
    CTreeListCtrl& g = grid(*dlg);
    HTREEITEM lighting = row(*dlg, QStringLiteral("照明"));
    HTREEITEM power = row(*dlg, QStringLiteral("动力"));
    CTreeListEditorBase* editor = edit(*dlg, lighting, 7);
    ASSERT_NE(editor, nullptr);
    ASSERT_EQ(editor->GetDlgCtrlID(), IDC_COMBO_LINEWIDTH);
    type(editor, QStringLiteral("abc"));
    clickCell(*dlg, power, 5);
    EXPECT_EQ(boxes.texts(), QStringList { QStringLiteral("线宽支持范围0-100") });
    EXPECT_EQ(g.GetActiveEditor(), editor);
    EXPECT_EQ(editor->GetWindowText(), "30");
    EXPECT_EQ(g.GetCaretItem(), lighting);

    type(editor, QStringLiteral("2.456"));
    clickCell(*dlg, power, 5);
    EXPECT_EQ(boxes.boxes().size(), 1);
    EXPECT_EQ(g.GetActiveEditor(), nullptr);
    EXPECT_EQ(g.GetItemText(lighting, 7), "2.46");
    EXPECT_TRUE(dlg->IsModified());
    EXPECT_EQ(g.GetCaretItem(), power);
}

// A name pasted into the cell with a character no one sees is refused, saying which.
TEST_F(SysCodeDlgEditTest, APastedNameWithAHiddenCharacterIsRefused)
{
    const std::pair<QString, QString> cases[] = {
        { QStringLiteral("动\u200B力"), QStringLiteral("系统编号中包含不可见的字符或控制字符（U+200B）!") },
        { QStringLiteral("\u200F插座2"), QStringLiteral("系统编号中包含不可见的字符或控制字符（U+200F）!") },
        { QStringLiteral("照明\n回路"), QStringLiteral("系统编号中包含不可见的字符或控制字符（U+000A）!") },
    };
    for (const auto& [pasted, message] : cases) {
        SCOPED_TRACE(pasted.toStdString());
        MessageBoxRecorder boxes;
        auto dlg = open();
        CTreeListCtrl& g = grid(*dlg);
        HTREEITEM power = row(*dlg, QStringLiteral("动力"));
        CTreeListEditorBase* editor = edit(*dlg, power, 0);
        ASSERT_NE(editor, nullptr);
        QWidget* target = typingTarget(editor);
        auto* line = qobject_cast<QLineEdit*>(target);
        ASSERT_NE(line, nullptr);
        line->selectAll();
        QGuiApplication::clipboard()->setText(pasted);
        QTest::keyClick(target, Qt::Key_V, Qt::ControlModifier);
        ASSERT_EQ(editor->GetWindowText(), pasted);
        QTest::keyClick(target, Qt::Key_Return);
        EXPECT_EQ(boxes.texts(), QStringList { message });
        EXPECT_EQ(g.GetActiveEditor(), editor);
        EXPECT_EQ(g.GetItemText(power, 0), QStringLiteral("动力"));
        g.EndEditing(true, TLEND_CANCEL);
    }
}

// A typed width holds to the range a file or a sheet holds to. (A typed -1 is
// rounded to -0.99 first, which no range takes; -1 comes only from a file.)
TEST_F(SysCodeDlgEditTest, AWidthOutOfRangeIsRefusedAsANonNumberIs)
{
    const std::pair<const char*, const char*> cases[] = { { "-30", nullptr }, { "1e308", nullptr },
        { "100.01", nullptr }, { "100.004", "100" }, { "-1", nullptr } };
    for (const auto& [typed, taken] : cases) {
        SCOPED_TRACE(typed);
        MessageBoxRecorder boxes;
        auto dlg = open();
        CTreeListCtrl& g = grid(*dlg);
        HTREEITEM lighting = row(*dlg, QStringLiteral("照明"));
        CTreeListEditorBase* editor = edit(*dlg, lighting, 7);
        ASSERT_NE(editor, nullptr);
        type(editor, QString::fromUtf8(typed));
        clickCell(*dlg, row(*dlg, QStringLiteral("动力")), 5);
        if (taken) {
            EXPECT_TRUE(boxes.boxes().isEmpty());
            EXPECT_EQ(g.GetItemText(lighting, 7), QString::fromUtf8(taken));
        } else {
            EXPECT_EQ(boxes.texts(), QStringList { QStringLiteral("线宽支持范围0-100") });
            EXPECT_EQ(g.GetActiveEditor(), editor);
            EXPECT_EQ(editor->GetWindowText(), "30");
        }
        g.EndEditing(true, TLEND_CANCEL);
        EXPECT_EQ(g.GetItemText(lighting, 7), QString::fromUtf8(taken ? taken : "30"));
    }
}

TEST_F(SysCodeDlgEditTest, DropDownListsOfferTheirItems)
{
    auto dlg = open();
    const std::pair<int, QStringList> cases[] = {
        { 3, { "", "沿墙明敷", "穿管暗敷" } },
        { 4, { "", "沿柱明敷" } },
        { 5,
            { "", "按字符", "QVCenter ____ _ ____", "QVDash __ __ __ __", "QV_Busbar ----/----",
                "QVdashdot ____ . ____" } },
        { 7, { "1", "5", "15", "25", "30" } },
        { 0, {} },
        { 9, {} },
    };
    for (const auto& [column, items] : cases) {
        QStringList got;
        dlg->GetComboItems(column, got);
        EXPECT_EQ(got, items) << column;
        if (!items.isEmpty() && column != 7) {
            EXPECT_EQ(grid(*dlg).GetEditOptions(grid(*dlg).GetItemFromRow(0), column), items) << column;
        }
    }
}

TEST_F(SysCodeDlgEditTest, AFloorWithoutLayingModesOffersNoItemAtAll)
{
    ASSERT_TRUE(
        QvKsDataMng::RunScript(QStringLiteral("UPDATE meta SET value = '9F' WHERE key = 'current_floor';")));
    auto dlg = open();
    QStringList got;
    dlg->GetComboItems(3, got);
    EXPECT_TRUE(got.isEmpty());
}

// The laying modes are read once for a fill or an operation and shared by its rows:
// what the store holds when rows come is what they offer, and rows that came
// before keep what they were given.
TEST_F(SysCodeDlgEditTest, NewRowsOfferTheLayingModesTheStoreHoldsThen)
{
    enum class Rows { Refill, AddSibling, Paste };
    struct Case
    {
        const char* what;
        const char* sql; // run after the dialog opened
        Rows how;
        QStringList newRows; // what the rows the operation made offer in column 3
        QStringList oldRows; // what 动力, filled at opening, offers afterwards
    };
    const QStringList opened = { "", "沿墙明敷", "穿管暗敷" };
    const QStringList added = { "", "沿墙明敷", "穿管暗敷", "桥架敷设" };
    const char* const addMode = "INSERT INTO lay_mode(floor_id, ord, name) VALUES (2, 3, '桥架敷设');";
    const Case cases[] = {
        { "a mode added, the specialty refilled", addMode, Rows::Refill, added, added },
        { "another floor made current, refilled", "UPDATE meta SET value = '2F' WHERE key = 'current_floor';",
            Rows::Refill, { "" }, { "" } },
        { "an unknown floor made current, refilled",
            "UPDATE meta SET value = '9F' WHERE key = 'current_floor';", Rows::Refill, {}, {} },
        { "a mode added, a code added", addMode, Rows::AddSibling, added, opened },
        { "a mode added, a copied subtree pasted", addMode, Rows::Paste, added, opened },
        { "the floor's modes removed, a code added", "DELETE FROM lay_mode;", Rows::AddSibling, { "" },
            opened },
    };
    for (const Case& c : cases) {
        SCOPED_TRACE(c.what);
        TestProject fresh { QString::fromUtf8(kLayModes) };
        ASSERT_TRUE(fresh.isOpen());
        MessageBoxRecorder boxes;
        auto dlg = open();
        CTreeListCtrl& g = grid(*dlg);
        HTREEITEM lighting = row(*dlg, QStringLiteral("照明"));
        if (c.how == Rows::Paste) {
            dlg->m_pCurRow = lighting;
            dlg->OnCommand(ID_MENU_COPY);
        }
        ASSERT_TRUE(QvKsDataMng::RunScript(QString::fromUtf8(c.sql)));
        std::vector<HTREEITEM> made;
        if (c.how == Rows::Refill) {
            dlg->FillSysCodeTree(kSpecElec);
            for (int r = 0; r < g.GetItemCount(); ++r)
                made.push_back(g.GetItemFromRow(r));
        } else {
            dlg->m_pCurRow = row(*dlg, QStringLiteral("插座"));
            dlg->OnCommand(c.how == Rows::Paste ? ID_MENU_PASTE : ID_MENU_ADD_SIBLING);
            HTREEITEM first = g.GetSelectedItem();
            ASSERT_NE(first, nullptr);
            made.push_back(first);
            for (HTREEITEM r = g.GetChildItem(first); r; r = g.GetChildItem(r))
                made.push_back(r);
            EXPECT_EQ(made.size(), c.how == Rows::Paste ? 3u : 1u);
        }
        for (HTREEITEM r : made)
            EXPECT_EQ(g.GetEditOptions(r, 3), c.newRows) << g.GetItemText(r, 0).toStdString();
        EXPECT_EQ(g.GetEditOptions(row(*dlg, QStringLiteral("动力")), 3), c.oldRows);
        EXPECT_EQ(g.GetEditOptions(made.front(), 4), QStringList({ "", "沿柱明敷" }));
        EXPECT_TRUE(boxes.boxes().empty());
    }
}

TEST_F(SysCodeDlgEditTest, ChoosingALineStyleMarksLineTypesChanged)
{
    auto dlg = open();
    CTreeListCtrl& g = grid(*dlg);
    HTREEITEM lighting = row(*dlg, QStringLiteral("照明"));
    CTreeListEditorBase* editor = edit(*dlg, lighting, 5);
    ASSERT_NE(editor, nullptr);
    ASSERT_EQ(editor->GetDlgCtrlID(), IDC_COMBO_LIST);
    auto* combo = g.GetComboCtrl();
    combo->setCurrentIndex(combo->findText(QStringLiteral("按字符")));
    clickCell(*dlg, row(*dlg, QStringLiteral("动力")), 0);
    EXPECT_EQ(g.GetActiveEditor(), nullptr);
    EXPECT_EQ(g.GetItemText(lighting, 5), "按字符");
    EXPECT_TRUE(dlg->m_bLineTypesChanged);
    EXPECT_TRUE(dlg->IsModified());
}

TEST_F(SysCodeDlgEditTest, TheColourButtonTakesTheColourDialogsAnswer)
{
    struct Case
    {
        const char* what;
        bool choose;
        COLORREF expected;
    };
    for (const Case& c :
        { Case { "chosen", true, 0x00123456 }, Case { "cancelled", false, kLightingColour } }) {
        SCOPED_TRACE(c.what);
        auto dlg = open();
        CTreeListCtrl& g = grid(*dlg);
        HTREEITEM lighting = row(*dlg, QStringLiteral("照明"));
        COLORREF offered = 0;
        QvKsCADColorTool::SetColorDialogHandler([&](COLORREF current, COLORREF& chosen) {
            offered = current;
            if (c.choose)
                chosen = 0x00123456;
            return c.choose;
        });
        CTreeListEditorBase* editor = edit(*dlg, lighting, 1);
        ASSERT_NE(editor, nullptr);
        QTest::mouseClick(g.GetEditBtnCtrl()->GetButton(), Qt::LeftButton);
        EXPECT_EQ(offered, kLightingColour);
        EXPECT_EQ(g.GetItemColor(lighting, 1), c.expected);
        EXPECT_EQ(g.GetItemBackColor(lighting, 1), c.expected);
        EXPECT_TRUE(dlg->IsModified());
        EXPECT_TRUE(editor->widget()->isEnabled());
    }
}

TEST_F(SysCodeDlgEditTest, EnterOnTheGridDuplicatesTheSelectedRow)
{
    auto dlg = open();
    CTreeListCtrl& g = grid(*dlg);
    const int before = g.GetItemCount();
    clickCell(*dlg, row(*dlg, QStringLiteral("动力")), 5);
    QTest::keyClick(&g, Qt::Key_Return);
    ASSERT_EQ(g.GetItemCount(), before + 1);
    HTREEITEM copy = g.GetNextSiblingItem(row(*dlg, QStringLiteral("动力")));
    ASSERT_NE(copy, nullptr);
    EXPECT_NE(g.GetItemText(copy, 0), "动力");
    EXPECT_NE(g.GetItemText(copy, 0), "插座");
    EXPECT_NE(g.GetItemColor(copy, 1), g.GetItemColor(row(*dlg, QStringLiteral("动力")), 1));
    EXPECT_TRUE(dlg->IsModified());
    EXPECT_TRUE(dlg->isVisible()); // Enter pressed no default button
    EXPECT_EQ(dlg->m_clipboard.GetChildCount(), 0); // nothing was copied by the user
}

// A drawing of texts for picking, read back as the working database would be.
class PickedDrawing
{
public:
    PickedDrawing()
    {
        QBuffer buffer;
        buffer.open(QIODevice::WriteOnly);
        DxfWriter writer(&buffer);
        writer.beginBlock(QStringLiteral("TAG"));
        writer.addAttributeDefinition({ QStringLiteral("NAME"), QString(), QString(), {} });
        writer.addAttributeDefinition(
            { QStringLiteral("CODE"), QString(), QString(), { 0, -3, 0 }, 2.5, true });
        writer.endBlock();
        writer.addText({ 0, 0, 0 }, QStringLiteral("WS"), 2.5);
        writer.addText({ 0, 10, 0 }, QStringLiteral("1"), 2.5);
        writer.addMText({ 0, 20, 0 }, QStringLiteral("A\\PB"), 2.5, 30);
        writer.addBlockReference(QStringLiteral("TAG"), { 0, 30, 0 },
            { { QStringLiteral("NAME"), QStringLiteral("卫生间"), { 0, 30, 0 } },
                { QStringLiteral("CODE"), QStringLiteral("HIDDEN"), { 0, 27, 0 }, 2.5, true } });
        writer.addText({ 0, 40, 0 }, QString(), 2.5);
        writer.addLine({ 0, 50, 0 }, { 10, 50, 0 });
        EXPECT_TRUE(writer.finish());
        EXPECT_EQ(db.readDxfData(std::string_view(buffer.data().constData(), size_t(buffer.data().size()))),
            Zcad::eOk);
        collect();
    }
    // In drawing order: WS, 1, the MText, the block reference, the empty text, the line.
    std::vector<ZcDbObjectId> ids;

private:
    void collect()
    {
        ZcDbBlockTable* table = nullptr;
        db.getBlockTable(table, ZcDb::kForRead);
        ZcDbBlockTableRecord* model = nullptr;
        table->getAt(ZCDB_MODEL_SPACE, model, ZcDb::kForRead);
        table->close();
        ZcDbBlockTableRecordIterator* it = nullptr;
        model->newIterator(it);
        model->close();
        for (; !it->done(); it->step()) {
            ZcDbEntity* entity = nullptr;
            if (it->getEntity(entity, ZcDb::kForRead) == Zcad::eOk) {
                ids.push_back(entity->objectId());
                entity->close();
            }
        }
        delete it;
    }
    ZcDbDatabase db { false, true };
};

TEST_F(SysCodeDlgEditTest, PickedTextsJoinInSelectionOrder)
{
    PickedDrawing drawing;
    ASSERT_EQ(drawing.ids.size(), 6u);
    const auto& id = drawing.ids;
    const std::pair<std::vector<ZcDbObjectId>, const char*> cases[] = {
        { { id[0] }, "WS" }, { { id[0], id[1] }, "WS-1" }, { { id[1], id[0] }, "1-WS" }, { { id[2] }, "A-B" },
        { { id[3] }, "卫生间" }, // the invisible attribute stays out
        { { id[4], id[0], id[5], id[1] }, "WS-1" }, // an empty text and a line add nothing
    };
    auto dlg = open();
    QStringList printed;
    const ZcUtOutputSink previous = zcutSetOutputSink([&](const QString& text) { printed << text; });
    for (const auto& [picked, expected] : cases) {
        zcedSSQueueSelection(picked);
        EXPECT_EQ(dlg->PickTextFromDrawing(), QString::fromUtf8(expected));
        EXPECT_EQ(zcedSSLastMode(), "-W-WP");
    }
    zcedSSQueueCancel();
    EXPECT_EQ(dlg->PickTextFromDrawing(), "");
    zcutSetOutputSink(previous);
    EXPECT_EQ(printed.size(), 7);
    EXPECT_EQ(printed.value(0), "\n请选择文字对象:");
    EXPECT_EQ(zcedSSOpenCount(), 0);
}

TEST_F(SysCodeDlgEditTest, TheNameCellsButtonTakesAPickedName)
{
    PickedDrawing drawing;
    struct Case
    {
        const char* what;
        std::vector<ZcDbObjectId> picked;
        const char* message;
        const char* cell;
    };
    const Case cases[] = {
        { "a free name", { drawing.ids[0], drawing.ids[1] }, "", "WS-1" },
        { "a sibling's name", {}, "系统编号在同级中已存在!", "照明" },
    };
    for (const Case& c : cases) {
        SCOPED_TRACE(c.what);
        MessageBoxRecorder boxes;
        auto dlg = open();
        CTreeListCtrl& g = grid(*dlg);
        HTREEITEM lighting = row(*dlg, QStringLiteral("照明"));
        CTreeListEditorBase* editor = edit(*dlg, lighting, 0);
        ASSERT_NE(editor, nullptr);
        if (c.picked.empty()) {
            type(editor, QStringLiteral("动力"));
            zcedSSQueueCancel();
        } else {
            zcedSSQueueSelection(c.picked);
        }
        QToolButton* button = g.GetEditBtnCtrl()->GetButton();
        ASSERT_EQ(GetDlgCtrlID(button), IDC_EDIT_NAME_INNER);
        QTest::mouseClick(button, Qt::LeftButton);
        EXPECT_EQ(boxes.texts().join('|'), QString::fromUtf8(c.message));
        EXPECT_EQ(g.GetItemText(lighting, 0), QString::fromUtf8(c.cell));
        EXPECT_EQ(g.GetActiveEditor(), editor);
        EXPECT_EQ(editor->GetWindowText(), QString::fromUtf8(c.cell));
        EXPECT_TRUE(dlg->IsModified());
        g.EndEditing(true, TLEND_CANCEL);
    }
}
} // namespace
