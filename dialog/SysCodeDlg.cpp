#include "SysCodeDlg.h"

#include "CDialogUnits.h"
#include "CTreeListEdit.h"
#include "CtrlId.h"
#include "DialogTemplate.h"
#include "Resource.h"
#include "Specialty.h"
#include "SysCodeColumns.h"
#include "SysCodeIcon.h"
#include "SysCodeIndexPath.h"
#include "SysCodePath.h"
#include "SysCodeUndoGroup.h"

#include <QApplication>
#include <QCheckBox>
#include <QLabel>
#include <QPushButton>

SysCodeDlg::SysCodeDlg(QWidget* parent)
    : QDialog(parent)
{
    const DialogTemplate& t = SysCodeDlgTemplate();
    setWindowTitle(t.caption);
    setWindowFlag(Qt::WindowContextHelpButtonHint, false);
    setSizeGripEnabled(true);
    CreateControls();
    BuildMessageMap();
}

SysCodeDlg::~SysCodeDlg()
{
    // The grid tells about every row it drops; the map must not hear of them late.
    qApp->removeEventFilter(this);
    disconnect(&m_tree, nullptr, this, nullptr);
    ClearClipboard();
}

int SysCodeDlg::DoModal()
{
    if (!m_bInitialised && !OnInitDialog())
        return IDCANCEL;
    return exec() == QDialog::Accepted ? IDOK : IDCANCEL;
}

QWidget* SysCodeDlg::CreateControl(int kind, const QString& text)
{
    switch (static_cast<ControlKind>(kind)) {
    case ControlKind::PushButton:
        return new QPushButton(text, this);
    case ControlKind::DefPushButton: {
        auto* button = new QPushButton(text, this);
        button->setDefault(true);
        return button;
    }
    case ControlKind::Static:
        return new QLabel(text, this);
    case ControlKind::CheckBox:
        return m_checkDispAddedMsg = new QCheckBox(text, this);
    case ControlKind::ListBox:
        m_specList.setParent(this);
        return &m_specList;
    case ControlKind::ListView:
        m_tree.setParent(this);
        return &m_tree;
    case ControlKind::NumEdit:
        m_editScale.setParent(this);
        return &m_editScale;
    }
    return nullptr;
}

// Every control of the template at its place, in pixels of the dialog's font.
void SysCodeDlg::CreateControls()
{
    const DialogTemplate& t = SysCodeDlgTemplate();
    const QSize base = CDialogUnits::BaseUnits(font());
    for (const ControlTemplate& c : t.controls) {
        QWidget* w = CreateControl(int(c.kind), c.text);
        if (!w)
            continue;
        if (c.id == IDC_TREE_SYSCODE)
            m_tree.SetDlgCtrlID(c.id);
        else
            SetDlgCtrlID(w, c.id);
        w->setGeometry(CDialogUnits::ToPixels(c.rect, base));
        if (!c.visible)
            w->setVisible(false);
    }
    const QRect client = CDialogUnits::ToPixels(QRect(QPoint(0, 0), t.size), base);
    resize(client.size());
}

void SysCodeDlg::AnchorControls()
{
    m_layout.Attach(this);
    for (const ControlTemplate& c : SysCodeDlgTemplate().controls) {
        if (c.anchors != 0)
            m_layout.AddAnchor(c.id, UINT(c.anchors));
    }
    m_layout.SetMinTrackSize(size());
}

// Which handler each control's notification reaches.
void SysCodeDlg::BuildMessageMap()
{
    struct ButtonEntry
    {
        int id;
        void (SysCodeDlg::*handler)();
    };
    // Batch modification and clearing pipeline information join this table with
    // their handlers.
    static const ButtonEntry buttons[] = {
        { IDC_BTN_OK, &SysCodeDlg::OnOK },
        { IDC_BTN_CANCEL, &SysCodeDlg::OnCancel },
        { IDC_BTN_IMPORT, &SysCodeDlg::OnImport },
        { IDC_BTN_EXPORT, &SysCodeDlg::OnExport },
        { IDC_BTN_EXPAND_LEVEL, &SysCodeDlg::OnExpandLevel },
        { IDC_BTN_COLLAPSE_LEVEL, &SysCodeDlg::OnCollapseLevel },
        { IDC_BTN_BATCH_MODIFY, &SysCodeDlg::OnBatchModify },
        { IDC_BTN_DELETE_PIPEINFO, &SysCodeDlg::OnClearPipeInfo },
    };
    for (const ButtonEntry& entry : buttons) {
        auto* button = qobject_cast<QAbstractButton*>(GetDlgItem(this, entry.id));
        if (button)
            connect(button, &QAbstractButton::clicked, this, entry.handler);
    }
    connect(&m_specList, &QListWidget::currentRowChanged, this, [this] {
        if (m_bInitialised)
            OnSpecSelChange();
    });
    connect(&m_tree, &CTreeListCtrl::itemDeleted, this, &SysCodeDlg::OnGridDeleteItem);
    ConnectPipeInfoCell();
    ConnectEditCells();
    connect(&m_tree, &CTreeListCtrl::rightClick, this, &SysCodeDlg::OnGridRightClick);
    connect(&m_tree, &CTreeListCtrl::beginDrag, this, &SysCodeDlg::OnGridBeginDrag);
    connect(&m_tree, &CTreeListCtrl::dragMove, this, &SysCodeDlg::OnDragMove);
    connect(&m_tree, &CTreeListCtrl::dragDrop, this, &SysCodeDlg::OnDrop);
    ConnectNodeKeys();
    ConnectCodeUsage();
    ConnectFind();
    ConnectUndoKeys();
}

void SysCodeDlg::UpdateData(bool bSaveAndValidate)
{
    if (bSaveAndValidate) {
        if (QListWidgetItem* item = m_specList.currentItem())
            m_strSpec = item->text();
        if (m_checkDispAddedMsg)
            m_nDispAddedMsg = m_checkDispAddedMsg->isChecked() ? 1 : 0;
        return;
    }
    const QList<QListWidgetItem*> found = m_specList.findItems(m_strSpec, Qt::MatchExactly);
    if (!found.isEmpty() && m_specList.currentItem() != found.first()) {
        const QSignalBlocker blocker(&m_specList);
        m_specList.setCurrentItem(found.first());
    }
    if (m_checkDispAddedMsg)
        m_checkDispAddedMsg->setChecked(m_nDispAddedMsg != 0);
}

bool SysCodeDlg::IsElectrical() const
{
    return IsElectricalSpec(m_strSpec);
}

bool SysCodeDlg::IsModified() const
{
    return m_bEditEnded || !m_tree.IsUndoClean();
}

void SysCodeDlg::SetCleanPoint()
{
    m_tree.ClearUndo();
    m_bEditEnded = false;
}

void SysCodeDlg::SetSavedFlags()
{
    m_bColorChanged = true;
    SetCleanPoint();
}

bool SysCodeDlg::OnCommand(int commandId)
{
    CTreeListEditorBase* editor = m_tree.GetActiveEditor();
    if (editor) {
        const int id = editor->GetDlgCtrlID();
        if (id == IDC_EDIT_NAME || id == IDC_EDIT_REMARK)
            return false;
    }
    const SysCodeUndoGroup undoGroup(*this);
    switch (commandId) {
    case ID_MENU_ADD_SIBLING:
        AddSiblingRow();
        break;
    case ID_MENU_ADD_CHILD:
        AddChildRow();
        break;
    case ID_MENU_DELETE:
        DeleteSelectedRows();
        break;
    case ID_MENU_INSERT:
        if (m_tree.GetChildItem(m_tree.GetRootItem()))
            AppendTopLevelRow();
        else
            CreateFirstRow();
        break;
    case ID_MENU_COPY:
        CopyRow(m_pCurRow);
        break;
    case ID_MENU_PASTE:
        PasteRow(m_clipboard, m_pCurRow, false);
        break;
    default:
        break;
    }
    return true;
}

QString SysCodeDlg::GetRowFullName(HTREEITEM row) const
{
    QStringList names;
    for (HTREEITEM p = row; p && p != m_tree.GetRootItem(); p = m_tree.GetParentItem(p))
        names.prepend(m_tree.GetItemText(p, 0));
    return names.join(QLatin1Char('\\')); // the store's spelling (see SysCodePath)
}

HTREEITEM SysCodeDlg::FindRowByFullName(const QString& fullName) const
{
    if (fullName.isEmpty())
        return nullptr;
    HTREEITEM parent = m_tree.GetRootItem();
    HTREEITEM found = nullptr;
    for (const QString& level : SplitSysCodePath(fullName)) {
        found = nullptr;
        for (HTREEITEM c = m_tree.GetChildItem(parent); c; c = m_tree.GetNextSiblingItem(c)) {
            if (m_tree.GetItemText(c, 0) == level) {
                found = c;
                break;
            }
        }
        if (!found)
            return nullptr;
        parent = found;
    }
    return found;
}

QString SysCodeDlg::GetSysCodeIndexPath(QString& fullPath)
{
    return ::GetSysCodeIndexPath(fullPath, m_bSelCodeReplaced);
}

QString SysCodeDlg::GetRowInfo(HTREEITEM row) const
{
    const int column = SysCodeVisibleColumn(kColPipeInfo, IsElectrical());
    return column < 0 ? QString() : m_tree.GetItemValue(row, column).toString();
}

int SysCodeDlg::GetRowNodeIndex(HTREEITEM row) const
{
    return int(m_tree.GetItemData(row));
}

void SysCodeDlg::OnGridDeleteItem(const NMLISTVIEW& info)
{
    // A drag moves rows through delete notices; their data goes with them.
    if (m_bDragging)
        return;
    if (m_pCurRow == info.hItem)
        m_pCurRow = nullptr;
}
