// Cell editing: the dialog watches every press and Enter before the widgets see
// them, and decides whether an open editor's text may go into its cell. A refused
// text keeps the editor open and the press or Enter does nothing else.
#include "SysCodeDlg.h"

#include "CQVCheckSysNameLegal.h"
#include "CTreeListCombo.h"
#include "CTreeListEdit.h"
#include "CTreeListEditBtn.h"
#include "ModuleStrings.h"
#include "QvKsCADColorTool.h"
#include "Resource.h"
#include "SysCodeColumns.h"
#include "SysCodeEditChecks.h"
#include "SysCodeUndoGroup.h"
#include "SysCodeValueRange.h"
#include "WinMessageBox.h"

#include <QApplication>
#include <QKeyEvent>
#include <QLineEdit>
#include <QMouseEvent>
#include <QToolButton>

namespace {
// The transparency cell's visible position in the ten-column layout; in the seven
// columns of the other specialties the cell keeps only the editor's own check.
constexpr int kAlphaCheckedColumn = 8;

void showWarning(const QString& text)
{
    MessageBoxExW(GetActiveWindow(), text + g_strExclaim, g_strCaption, kMbWarning, 0);
}

bool isEnter(const QEvent* event)
{
    if (event->type() != QEvent::KeyPress)
        return false;
    const int key = static_cast<const QKeyEvent*>(event)->key();
    return key == Qt::Key_Return || key == Qt::Key_Enter;
}

// Tab (1) or Shift+Tab (-1) pressed; 0 for any other event.
int tabStep(const QEvent* event)
{
    if (event->type() != QEvent::KeyPress)
        return 0;
    const int key = static_cast<const QKeyEvent*>(event)->key();
    return key == Qt::Key_Tab ? 1 : key == Qt::Key_Backtab ? -1 : 0;
}

bool isButtonDown(const QEvent* event)
{
    if (event->type() != QEvent::MouseButtonPress && event->type() != QEvent::MouseButtonDblClick)
        return false;
    const Qt::MouseButton button = static_cast<const QMouseEvent*>(event)->button();
    return button == Qt::LeftButton || button == Qt::RightButton;
}

bool isOutside(const QWidget* editor, const QEvent* event)
{
    const QPointF global = static_cast<const QMouseEvent*>(event)->globalPosition();
    return !editor->rect().contains(editor->mapFromGlobal(global.toPoint()));
}
} // namespace

void SysCodeDlg::ConnectEditCells()
{
    qApp->installEventFilter(this);
    // A typed width holds to the range every way in holds to.
    m_tree.GetComboCtrl()->SetWidthRangeCheck(&IsSysLineWidthInRange);
    m_tree.GetCodeEditCtrl()->SetCommitCheck(&IsShortSysCode);
    connect(&m_tree, &CTreeListCtrl::editorButtonClicked, this, [this](int buttonId) {
        if (buttonId == IDC_BTN_COLOR_CELL)
            OnColorCellButton();
        else if (buttonId == IDC_EDIT_NAME_INNER || buttonId == IDC_EDIT_REMARK_INNER)
            OnPickTextButton(buttonId);
    });
    connect(&m_tree, &CTreeListCtrl::lineTypeChanged, this, [this] {
        m_tree.ClearLineTypeChanged();
        m_bLineTypesChanged = true;
    });
}

bool SysCodeDlg::eventFilter(QObject* watched, QEvent* event)
{
    if (!watched->isWidgetType() || !isVisible())
        return QDialog::eventFilter(watched, event);
    auto* target = static_cast<QWidget*>(watched);
    if (target->window() != this)
        return false;
    if (event->type() == QEvent::MouseButtonRelease && m_bSwallowRelease) {
        m_bSwallowRelease = false;
        return true;
    }
    const bool swallow = PreTranslateMessage(target, event);
    // The release of a swallowed press goes nowhere either; any other press starts
    // afresh, so a release lost to a message box cannot eat a later click.
    if (isButtonDown(event))
        m_bSwallowRelease = swallow;
    return swallow;
}

bool SysCodeDlg::PreTranslateMessage(QWidget* target, QEvent* event)
{
    const bool down = isButtonDown(event);
    const bool enter = isEnter(event);
    const int tab = tabStep(event);
    if (!down && !enter && !tab)
        return false;
    CTreeListEditorBase* editor = m_tree.GetActiveEditor();
    if (!editor)
        return enter && OnGridEnter(target);
    if (tab)
        return OnEditorTab(editor, tab);
    if (down && !isOutside(editor->widget(), event))
        return false;
    const SysCodeUndoGroup undoGroup(*this);
    if (down)
        return EndEditOutside(editor);
    // Enter: a checked text ends as on a press outside; Enter goes no further.
    if (editor == m_tree.GetComboCtrl() || editor->IsFinished())
        return false;
    const int id = editor->GetDlgCtrlID();
    if (id != IDC_EDIT_NAME && id != IDC_EDIT_REMARK && editor != m_tree.GetCodeEditCtrl())
        return false;
    EndEditOutside(editor);
    return true;
}

// What a press outside the open editor does to it: its text checked and taken, or
// refused (true) with the editor left open.
bool SysCodeDlg::EndEditOutside(CTreeListEditorBase* editor)
{
    const int id = editor->GetDlgCtrlID();
    if (editor == m_tree.GetComboCtrl())
        return EndComboEdit(id);
    if (editor->IsFinished())
        return false;
    if (id == IDC_EDIT_NAME)
        return EndNameEdit(editor);
    if (id == IDC_EDIT_REMARK)
        return EndRemarkEdit(editor);
    if (editor == m_tree.GetCodeEditCtrl())
        return EndCodeEdit(editor);
    return false;
}

// Tab and Shift+Tab end the edit as a press outside would and open the next (or
// previous) editable cell, on the next row after the last cell of this one. A
// refused text keeps its editor; the key goes no further either way.
bool SysCodeDlg::OnEditorTab(CTreeListEditorBase* editor, int step)
{
    HTREEITEM row = editor->GetItem();
    const int column = editor->GetColumn();
    {
        const SysCodeUndoGroup undoGroup(*this);
        if (EndEditOutside(editor))
            return true;
        if (m_tree.GetActiveEditor() == editor)
            m_tree.EndEditing(true, TLEND_COMMIT);
        if (m_tree.GetActiveEditor())
            return true;
    }
    const int columns = m_tree.GetColumnCount();
    const int rows = m_tree.GetItemCount();
    const int firstColumn = step > 0 ? 0 : columns - 1;
    for (int r = m_tree.GetRowFromItem(row), c = column + step; r >= 0 && r < rows; r += step) {
        HTREEITEM next = m_tree.GetItemFromRow(r);
        for (; c >= 0 && c < columns; c += step) {
            if (m_tree.GetEditMode(next, c) == TLEM_NONE || m_tree.isColumnHidden(c))
                continue;
            m_tree.SelectItem(next);
            m_tree.SetCurrentColumn(c);
            m_tree.EditSubItem(next, c);
            return true;
        }
        c = firstColumn;
    }
    return true;
}

// A list combo closes with its choice; a width combo only with a number in it.
bool SysCodeDlg::EndComboEdit(int comboId)
{
    CTreeListCombo* combo = m_tree.GetComboCtrl();
    if (comboId == IDC_COMBO_LINEWIDTH) {
        if (!combo->CheckLineWidth())
            return true;
        MarkEditEnded();
    } else if (comboId != IDC_COMBO_LIST) {
        return false;
    }
    combo->EndEdit(true, TLEND_COMMIT);
    return false;
}

bool SysCodeDlg::EndNameEdit(CTreeListEditorBase* editor)
{
    HTREEITEM row = editor->GetItem();
    const NameEditResult result = CheckNameEdit(GetRowFullName(m_tree.GetParentItem(row)),
        m_tree.GetItemText(row, 0), editor->GetWindowText(),
        [this](const QString& fullName) { return FindRowByFullName(fullName) != nullptr; });
    MarkEditEnded();
    if (result.status == NameEditStatus::Clash) {
        showWarning(QStringLiteral(" %1系统编号在该级中已存在").arg(result.fullName));
        return true;
    }
    if (result.status == NameEditStatus::Illegal) {
        showWarning(CQVCheckSysNameLegal::IllegalNameMessage(result.name));
        return true;
    }
    RecordSysCodeRename(m_renames, m_strSpec, GetRowFullName(row), result.fullName);
    editor->SetWindowText(result.name);
    editor->SetFinished(true);
    editor->EndEdit(true, TLEND_COMMIT);
    return false;
}

bool SysCodeDlg::EndRemarkEdit(CTreeListEditorBase* editor)
{
    MarkEditEnded();
    if (HasForbiddenRemarkChar(editor->GetWindowText())) {
        showWarning(QStringLiteral("备注信息中包含以下不能使用的字符：&/\\"));
        return true;
    }
    editor->SetFinished(true);
    editor->EndEdit(true, TLEND_COMMIT);
    return false;
}

bool SysCodeDlg::EndCodeEdit(CTreeListEditorBase* editor)
{
    MarkEditEnded();
    if (editor->GetColumn() == kAlphaCheckedColumn) {
        QString value;
        if (NormaliseAlphaText(editor->GetWindowText(), value) != AlphaTextStatus::Accepted) {
            editor->SetWindowText(editor->GetStartText());
            showWarning(QStringLiteral("透明度仅支持0-100的整数"));
            return true;
        }
        editor->SetWindowText(value);
    }
    editor->SetFinished(true);
    // A refused code ends the edit with the cell's text as it was.
    if (!editor->EndEdit(true, TLEND_COMMIT)) {
        showWarning(QStringLiteral("线型字符仅支持字母和数字，且最长为3个字符"));
        return true;
    }
    return false;
}

// Enter on the grid with one row selected duplicates that row as its next sibling.
bool SysCodeDlg::OnGridEnter(QWidget* target)
{
    if (target != &m_tree && target != m_tree.viewport())
        return false;
    if (m_tree.GetSelectedCount() != 1)
        return false;
    HTREEITEM row = m_tree.GetCaretItem();
    if (!row)
        return true;
    const SysCodeUndoGroup undoGroup(*this);
    // The row goes through a record of its own: what the user copied stays copied.
    const CSysCodeData copied = m_clipboard;
    const int copiedLevels = m_nLevelBase;
    CopyRow(row);
    const CSysCodeData record = m_clipboard;
    m_clipboard = copied;
    PasteRow(record, row, true);
    m_nLevelBase = copiedLevels;
    return true;
}

void SysCodeDlg::OnColorCellButton()
{
    CTreeListEditorBase* editor = m_tree.GetActiveEditor();
    HTREEITEM row = editor ? editor->GetItem() : m_tree.GetCaretItem();
    const int column = SysCodeVisibleColumn(kColColor, IsElectrical());
    if (!row || column < 0)
        return;
    const COLORREF current = m_tree.GetItemColor(row, column);
    COLORREF chosen = current;
    if (editor)
        editor->widget()->setEnabled(false);
    const bool picked = QvKsCADColorTool::InvokeCADColorDlg(current, chosen);
    if (editor) {
        editor->widget()->setEnabled(true);
        editor->widget()->setFocus(Qt::OtherFocusReason);
    }
    const SysCodeUndoGroup undoGroup(*this);
    MarkEditEnded();
    const COLORREF colour = picked ? chosen : current;
    m_tree.SetItemColor(row, colour, column);
    m_tree.SetItemBackColor(row, colour, column);
}

void SysCodeDlg::OnPickTextButton(int buttonId)
{
    CTreeListEditBtn* editor = m_tree.GetEditBtnCtrl();
    if (m_tree.GetActiveEditor() != editor)
        return;
    HTREEITEM row = editor->GetItem();
    const QString picked = PickTextFromDrawing();
    if (!picked.isEmpty())
        editor->SetWindowText(picked);
    const bool name = buttonId == IDC_EDIT_NAME_INNER;
    const SysCodeUndoGroup undoGroup(*this);
    const bool taken = name ? TakeNameText(editor, row) : TakeRemarkText(editor, row);
    MarkEditEnded();
    if (taken) {
        editor->SetStartText(editor->GetWindowText());
        editor->GetEdit()->selectAll();
        editor->SetFinished(false);
    } else {
        editor->SetWindowText(editor->GetStartText());
    }
    editor->widget()->setFocus(Qt::OtherFocusReason);
}

// The picked name goes into the row at once when it is legal and free at its level.
bool SysCodeDlg::TakeNameText(CTreeListEditorBase* editor, HTREEITEM row)
{
    // Taken as a typed name is: trimmed, and compared trimmed.
    const QString text = editor->GetWindowText().trimmed();
    editor->SetWindowText(text);
    const QString oldFullName = GetRowFullName(row);
    const QString parent = GetRowFullName(m_tree.GetParentItem(row));
    const QString fullName = parent.isEmpty() ? text : parent + QLatin1Char('\\') + text;
    if (text != editor->GetStartText() && FindRowByFullName(fullName)) {
        showWarning(
            text.isEmpty() ? QStringLiteral("系统编号不能为空") : QStringLiteral("系统编号在同级中已存在"));
        return false;
    }
    if (text.isEmpty()) {
        showWarning(QStringLiteral("系统编号不能为空"));
        return false;
    }
    if (!CQVCheckSysNameLegal::CheckSysNameLegal(text)) {
        showWarning(CQVCheckSysNameLegal::IllegalNameMessage(text));
        return false;
    }
    RecordSysCodeRename(m_renames, m_strSpec, oldFullName, fullName);
    return m_tree.ApplyEditorText(row, 0);
}

bool SysCodeDlg::TakeRemarkText(CTreeListEditorBase* editor, HTREEITEM row)
{
    if (HasForbiddenRemarkChar(editor->GetWindowText())) {
        showWarning(QStringLiteral("备注信息中包含以下不能使用的字符：&/\\"));
        return false;
    }
    return m_tree.ApplyEditorText(row, 2);
}
