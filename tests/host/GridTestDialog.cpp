#include "GridTestDialog.h"

#include "CTreeListCtrl.h"
#include "CtrlId.h"
#include "QvKsCADColorTool.h"
#include "WinMessageBox.h"
#include "ZcUtPrintf.h"

#include <QCheckBox>
#include <QComboBox>
#include <QGridLayout>
#include <QLineEdit>
#include <QListWidget>
#include <QMenu>
#include <QPushButton>
#include <QShortcut>

namespace {
void Say(const QString& text)
{
    zcutPrintf(QStringLiteral("\n[qvhgrid] ") + text);
}

QString Name(CTreeListCtrl* grid, CTreeListItem* item)
{
    return item ? grid->GetItemText(item, 0) : QStringLiteral("nothing");
}

// A child dialog with OK (1) and Cancel (2), for nesting.
int RunChildDialog(QWidget* parent)
{
    QDialog child(parent);
    child.setWindowTitle(QStringLiteral("子对话框"));
    auto* layout = new QHBoxLayout(&child);
    for (int id : { 1, 2 }) {
        auto* button = new QPushButton(id == 1 ? QStringLiteral("确定") : QStringLiteral("取消"), &child);
        SetDlgCtrlID(button, id);
        layout->addWidget(button);
        QObject::connect(button, &QPushButton::clicked, &child,
            [&child, id] { id == 1 ? child.accept() : child.reject(); });
    }
    return child.exec();
}
} // namespace

GridTestDialog::GridTestDialog(QWidget* parent)
    : QDialog(parent)
    , m_grid(new CTreeListCtrl(this))
{
    setWindowTitle(QStringLiteral("网格测试"));
    resize(620, 420);
    auto* layout = new QGridLayout(this);
    layout->setContentsMargins(12, 12, 12, 12);
    m_grid->SetDlgCtrlID(201);
    layout->addWidget(m_grid, 0, 0, 1, 4);
    auto* list = new QListWidget(this);
    list->addItems({ QStringLiteral("电气"), QStringLiteral("给排水") });
    auto* combo = new QComboBox(this);
    combo->addItems({ QStringLiteral("甲"), QStringLiteral("乙"), QStringLiteral("丙") });
    auto* check = new QCheckBox(QStringLiteral("显示"), this);
    auto* edit = new QLineEdit(QStringLiteral("1.5"), this);
    auto* ok = new QPushButton(QStringLiteral("确定"), this);
    auto* cancel = new QPushButton(QStringLiteral("取消"), this);
    int column = 0;
    for (auto [widget, id] : std::initializer_list<std::pair<QWidget*, int>> {
             { list, 400 }, { combo, 401 }, { check, 402 }, { edit, 403 }, { ok, 1 }, { cancel, 2 } }) {
        SetDlgCtrlID(widget, id);
        layout->addWidget(widget, 1 + column / 4, column % 4);
        ++column;
    }
    connect(list, &QListWidget::currentTextChanged, this, [](const QString& text) { Say("list " + text); });
    connect(combo, &QComboBox::activated, this, [combo](int) { Say("combo " + combo->currentText()); });
    connect(check, &QCheckBox::toggled, this, [](bool on) { Say(on ? "ticked" : "unticked"); });
    connect(ok, &QPushButton::clicked, this, [this, edit] {
        Say("ok " + edit->text());
        accept();
    });
    connect(cancel, &QPushButton::clicked, this, &QDialog::reject);
    connect(m_grid, &CTreeListCtrl::rightClick, this, [this](const NMITEMACTIVATE& info) {
        ShowMenu(info.hItem, info.iSubItem, { info.ptScreenX, info.ptScreenY });
    });
    connect(m_grid, &CTreeListCtrl::beginDrag, this,
        [this](const NMITEMACTIVATE& info) { m_dragged = info.hItem; });
    connect(m_grid, &CTreeListCtrl::dragDrop, this, &GridTestDialog::Drop);
    connect(m_grid, &CTreeListCtrl::editorButtonClicked, this, [this](int id) {
        if (id == 10008)
            PickColour();
    });
    connect(m_grid, &CTreeListCtrl::endLabelEdit, this, [this](NMLVDISPINFO* info) {
        Say(QStringLiteral("edited %1 column %2: %3")
                .arg(Name(m_grid, info->hItem))
                .arg(info->iSubItem)
                .arg(info->pszText));
    });
    auto* copy = new QShortcut(QKeySequence(QStringLiteral("Ctrl+D")), this);
    connect(copy, &QShortcut::activated, this, [] { Say(QStringLiteral("shortcut")); });
    FillGrid();
}

void GridTestDialog::mousePressEvent(QMouseEvent* event)
{
    if (m_grid->GetActiveEditor())
        m_grid->EndEditing(true, TLEND_COMMIT);
    Say(QStringLiteral("clicked beside"));
    QDialog::mousePressEvent(event);
}

void GridTestDialog::FillGrid()
{
    const QStringList titles { QStringLiteral("名称"), QStringLiteral("颜色"), QStringLiteral("线型") };
    for (int c = 0; c < titles.size(); ++c)
        m_grid->InsertColumn(c, titles[c], LVCFMT_LEFT, 150);
    m_grid->SetColumnEditorIds(1, 0, 10008);
    const QList<QPair<QString, QStringList>> rows { { QStringLiteral("公共照明"), { "WL1", "WL2" } },
        { QStringLiteral("应急照明"), { "EL1" } } };
    for (const auto& [top, children] : rows) {
        CTreeListItem* parent = m_grid->InsertItem(top);
        for (const QString& name : children) {
            CTreeListItem* item = m_grid->InsertItem(name, parent);
            m_grid->SetEditMode(item, TLEM_EDIT, {}, 0);
            m_grid->SetItemColor(item, 0x0000FF, 1);
            m_grid->SetItemBackColor(item, 0xCCFFCC, 1);
            m_grid->SetItemText(item, QStringLiteral("红"), 1);
            m_grid->SetEditMode(item, TLEM_BUTTON, {}, 1);
            m_grid->SetItemText(item, QStringLiteral("实线"), 2);
            m_grid->SetEditMode(item, TLEM_LIST,
                { QStringLiteral("实线"), QStringLiteral("虚线"), QStringLiteral("点线") }, 2);
        }
        m_grid->Expand(parent, TVE_EXPAND);
    }
}

void GridTestDialog::ShowMenu(CTreeListItem* item, int column, const QPoint& screenPos)
{
    QMenu menu(this);
    QAction* add = menu.addAction(QStringLiteral("新建"));
    add->setData(1000);
    QAction* remove = menu.addAction(QStringLiteral("删除"));
    remove->setData(1001);
    remove->setEnabled(item != nullptr);
    QAction* child = menu.addAction(QStringLiteral("子对话框"));
    child->setObjectName(QStringLiteral("1002"));
    QAction* chosen = menu.exec(screenPos);
    Say(QStringLiteral("menu on %1 column %2: %3")
            .arg(Name(m_grid, item))
            .arg(column)
            .arg(chosen ? chosen->text() : QStringLiteral("none")));
    if (chosen == add) {
        const int answer = MessageBoxExW(
            GetActiveWindow(), QStringLiteral("新建一个系统吗?"), QStringLiteral("Quorvatek"), 0x12024);
        Say(QStringLiteral("answer %1").arg(answer));
    } else if (chosen == child) {
        Say(QStringLiteral("child %1").arg(RunChildDialog(this)));
    }
}

void GridTestDialog::Drop(const QPoint& screenPos, Qt::KeyboardModifiers modifiers)
{
    const QPoint at = m_grid->viewport()->mapFromGlobal(screenPos);
    CTreeListItem* target = m_grid->viewport()->rect().contains(at) ? m_grid->HitTest(at) : nullptr;
    Say(QStringLiteral("drop %1 on %2%3")
            .arg(Name(m_grid, m_dragged), target ? Name(m_grid, target) : QStringLiteral("outside"),
                modifiers & Qt::ControlModifier ? QStringLiteral(" with ctrl") : QString()));
    m_dragged = nullptr;
}

void GridTestDialog::PickColour()
{
    CTreeListItem* item = m_grid->GetCaretItem();
    COLORREF chosen = 0;
    if (!item || !QvKsCADColorTool::InvokeCADColorDlg(m_grid->GetItemBackColor(item, 1), chosen))
        return;
    m_grid->SetItemBackColor(item, chosen, 1);
    Say(QStringLiteral("colour %1").arg(chosen, 6, 16, QLatin1Char('0')));
}
