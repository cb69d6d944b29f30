// CTreeListCtrl: expanding, columns, styles, painting, the mouse and in-place editing.
#include "CTreeListCtrl.h"

#include "CTreeListCombo.h"
#include "CTreeListEdit.h"
#include "CTreeListEditBtn.h"
#include "CTreeListHistory.h"

#include <QApplication>
#include <QHeaderView>
#include <QHelpEvent>
#include <QMouseEvent>
#include <QPainter>
#include <QToolTip>

namespace {
constexpr int kDefaultColumnWidth = 100;
constexpr int kEditDefaultId = 10000;
constexpr int kCodeEditDefaultId = 10010;
constexpr int kListComboDefaultId = 10004;
constexpr int kWidthComboDefaultId = 1005;
constexpr int kEditBtnDefaultId = 10007;
constexpr int kEditBtnButtonDefaultId = 10008;
} // namespace

// ---- expand

BOOL CTreeListCtrl::Expand(HTREEITEM item, UINT code)
{
    if (item == TVI_ROOT || item == GetRootItem())
        return code == TVE_EXPAND;
    if (!valid(item))
        return FALSE;
    bool open = false;
    switch (code) {
    case TVE_EXPAND:
        open = true;
        break;
    case TVE_COLLAPSE:
        open = false;
        break;
    case TVE_TOGGLE:
        open = !item->isExpanded();
        break;
    default:
        return FALSE;
    }
    SetRedraw(false);
    if (m_model->tree().setExpanded(item, open)) {
        syncExpanded(item);
        Q_EMIT itemExpanded(item, open);
    }
    SetRedraw(true);
    return TRUE;
}

bool CTreeListCtrl::IsItemExpanded(HTREEITEM item) const
{
    return item == TVI_ROOT || item == GetRootItem() || (valid(item) && item->isExpanded());
}

void CTreeListCtrl::SetRedraw(bool redraw)
{
    if (!redraw) {
        if (m_redrawLocks++ == 0)
            setUpdatesEnabled(false);
        return;
    }
    if (m_redrawLocks == 0)
        return;
    if (--m_redrawLocks == 0) {
        setUpdatesEnabled(true);
        viewport()->update();
    }
}

void CTreeListCtrl::SetRowFilter(const std::function<bool(HTREEITEM)>& shown)
{
    m_filterOn = bool(shown);
    // An item stays when it matches or keeps a child.
    applyRowFilter([&](HTREEITEM item, bool childKept) { return childKept || !m_filterOn || shown(item); });
}

void CTreeListCtrl::SetRowFilterItems(const std::vector<HTREEITEM>& shown)
{
    CTreeListItemTree& tree = m_model->tree();
    for (HTREEITEM item : shown) {
        if (valid(item))
            tree.markKept(item);
    }
    m_filterOn = true;
    applyRowFilter([&](HTREEITEM item, bool) { return tree.takeKept(item); });
}

void CTreeListCtrl::applyRowFilter(const std::function<bool(HTREEITEM, bool)>& keepItem)
{
    endEditIfInside(GetRootItem());
    CTreeListItemTree& tree = m_model->tree();
    SetRedraw(false);
    // Children first.
    const auto visit = [&](auto&& self, HTREEITEM item) -> bool {
        bool keep = false;
        for (HTREEITEM child : item->children())
            keep = self(self, child) || keep;
        if (item == GetRootItem())
            return true;
        keep = keepItem(item, keep);
        if (tree.setFilteredOut(item, !keep)) {
            const QModelIndex index = m_model->indexFromItem(item);
            setRowHidden(index.row(), index.parent(), !keep);
        }
        return keep;
    };
    visit(visit, GetRootItem());
    SetRedraw(true);
}

void CTreeListCtrl::syncExpanded(HTREEITEM item)
{
    if (!valid(item) || item->children().empty())
        return;
    const QModelIndex index = m_model->indexFromItem(item);
    if (isExpanded(index) != item->isExpanded())
        setExpanded(index, item->isExpanded());
}

void CTreeListCtrl::syncExpandedSubtree(HTREEITEM item)
{
    m_model->tree().forEachPostOrder(item, [this](HTREEITEM each) { syncExpanded(each); });
}

void CTreeListCtrl::onViewExpanded(const QModelIndex& index, bool expanded)
{
    HTREEITEM item = m_model->itemFromIndex(index);
    if (item && m_model->tree().setExpanded(item, expanded))
        Q_EMIT itemExpanded(item, expanded);
}

// ---- drag image

QPixmap CTreeListCtrl::CreateDragImage(HTREEITEM item) const
{
    if (!valid(item))
        return QPixmap();
    const int height = fontMetrics().height() + 6;
    int width = 0;
    for (int c = 0; c < GetColumnCount(); ++c)
        width += GetColumnWidth(c);
    QPixmap image(std::max(width, 1), height);
    image.fill(ColorFromColorref(m_bkColor));
    QPainter painter(&image);
    int x = 0;
    for (int c = 0; c < GetColumnCount(); ++c) {
        const int w = GetColumnWidth(c);
        const CTreeListCell& cell = item->cell(c);
        const QRect rect(x, 0, w, height);
        if (cell.hasBackColor)
            painter.fillRect(rect, ColorFromColorref(cell.backColor));
        painter.setPen(ColorFromColorref(GetItemColor(item, c)));
        const int align = m_model->data(m_model->indexFromItem(item, c), Qt::TextAlignmentRole).toInt();
        painter.drawText(rect.adjusted(3, 0, -3, 0), align, cell.text);
        x += w;
    }
    painter.setPen(QColor(0, 0, 0));
    painter.drawRect(image.rect().adjusted(0, 0, -1, -1));
    return image;
}

// ---- columns

int CTreeListCtrl::InsertColumn(int index, const QString& title, int format, int width, int)
{
    if (m_active)
        m_active->EndEdit(false, TLEND_PLAIN);
    // Recorded cells name their column by number: another column layout forgets them.
    m_history->Clear(false);
    CTreeListColumn column;
    column.title = title;
    column.format = format;
    column.width = width < 0 ? kDefaultColumnWidth : width;
    const int at = m_model->insertColumn(index, column);
    if (at >= 0)
        header()->resizeSection(at, column.width);
    return at;
}

BOOL CTreeListCtrl::DeleteColumn(int index)
{
    if (m_active)
        m_active->EndEdit(false, TLEND_PLAIN);
    m_history->Clear(false);
    if (index != 0)
        return m_model->removeColumn(index);
    if (!DeleteAllItems())
        return FALSE;
    while (GetColumnCount() > 0)
        m_model->removeColumn(GetColumnCount() - 1);
    return TRUE;
}

int CTreeListCtrl::GetColumnCount() const
{
    return m_model->tree().columnCount();
}

QString CTreeListCtrl::GetColumnText(int index) const
{
    return index >= 0 && index < GetColumnCount() ? m_model->tree().column(index).title : QString();
}

int CTreeListCtrl::GetColumnWidth(int index) const
{
    return index >= 0 && index < GetColumnCount() ? header()->sectionSize(index) : 0;
}

BOOL CTreeListCtrl::SetColumnWidth(int index, int width)
{
    if (index < 0 || index >= GetColumnCount() || width < 0)
        return FALSE;
    m_model->tree().columnForWrite(index).width = width;
    header()->resizeSection(index, width);
    return TRUE;
}

int CTreeListCtrl::GetColumnFormat(int index) const
{
    return index >= 0 && index < GetColumnCount() ? m_model->tree().column(index).format : LVCFMT_LEFT;
}

// ---- styles

void CTreeListCtrl::ModifyStyle(DWORD remove, DWORD add)
{
    m_style = (m_style & ~remove) | add;
    applyStyles();
}

void CTreeListCtrl::ModifyExtendedStyle(DWORD remove, DWORD add)
{
    m_exStyle = (m_exStyle & ~remove) | add;
    applyStyles();
}

void CTreeListCtrl::applyStyles()
{
    setRootIsDecorated(m_style & TVS_LINESATROOT);
    viewport()->update();
}

void CTreeListCtrl::SetBkColor(COLORREF colour)
{
    m_bkColor = colour & 0xFFFFFFu;
    QPalette pal = palette();
    pal.setColor(QPalette::Base, ColorFromColorref(m_bkColor));
    setPalette(pal);
}

// ---- painting

void CTreeListCtrl::drawRow(
    QPainter* painter, const QStyleOptionViewItem& option, const QModelIndex& index) const
{
    QStyleOptionViewItem opt = option;
    if (m_dropTarget && m_model->itemFromIndex(index) == m_dropTarget)
        opt.state |= QStyle::State_Selected;
    QTreeView::drawRow(painter, opt, index);
    // The current cell, where F2 edits and Left and Right move, is framed.
    const QModelIndex current = currentIndex();
    if (hasFocus() && current.isValid() && current.column() > 0 && current.row() == index.row()
        && current.parent() == index.parent()) {
        painter->save();
        painter->setPen(QPen(palette().color(QPalette::Highlight).darker(150), 1, Qt::DotLine));
        painter->drawRect(visualRect(current).adjusted(0, 0, -1, -1));
        painter->restore();
    }
    if (m_exStyle & LVS_EX_GRIDLINES) {
        painter->save();
        painter->setPen(QColor(160, 160, 160));
        const QRect row = opt.rect;
        painter->drawLine(row.left(), row.bottom(), row.right(), row.bottom());
        for (int c = 0; c < GetColumnCount(); ++c) {
            const int x = columnViewportPosition(c) + columnWidth(c) - 1;
            painter->drawLine(x, row.top(), x, row.bottom());
        }
        painter->restore();
    }
}

void CTreeListCtrl::drawBranches(QPainter* painter, const QRect& rect, const QModelIndex& index) const
{
    HTREEITEM item = m_model->itemFromIndex(index);
    if (!item)
        return;
    const int indent = indentation();
    const int levels = item->depth() - (rootIsDecorated() ? 0 : 1);
    if (levels <= 0)
        return;
    const int midY = rect.top() + rect.height() / 2;
    const int ownLeft = rect.left() + (levels - 1) * indent;
    const int cx = ownLeft + indent / 2;
    painter->save();
    if (m_style & TVS_HASLINES) {
        painter->setPen(QPen(QColor(128, 128, 128), 1, Qt::DotLine));
        const bool firstOfAll = item->parent() == GetRootItem() && item->indexInParent() == 0;
        if (!firstOfAll)
            painter->drawLine(cx, rect.top(), cx, midY);
        if (GetNextSiblingItem(item))
            painter->drawLine(cx, midY, cx, rect.bottom());
        painter->drawLine(cx, midY, ownLeft + indent - 2, midY);
        int column = levels - 2;
        for (HTREEITEM a = item->parent(); a && a != GetRootItem() && column >= 0;
             a = a->parent(), --column) {
            if (GetNextSiblingItem(a)) {
                const int x = rect.left() + column * indent + indent / 2;
                painter->drawLine(x, rect.top(), x, rect.bottom());
            }
        }
    }
    if ((m_style & TVS_HASBUTTONS) && !item->children().empty()) {
        const QRect box(cx - 4, midY - 4, 8, 8);
        painter->setPen(QPen(QColor(128, 128, 128), 1, Qt::SolidLine));
        painter->fillRect(box, Qt::white);
        painter->drawRect(box);
        painter->setPen(Qt::black);
        painter->drawLine(cx - 2, midY, cx + 2, midY);
        if (!item->isExpanded())
            painter->drawLine(cx, midY - 2, cx, midY + 2);
    }
    painter->restore();
}

QString CTreeListCtrl::GetCellTipText(const QPoint& point) const
{
    const QModelIndex index = indexAt(point);
    if (!index.isValid())
        return QString();
    const QString text = index.data(Qt::DisplayRole).toString();
    const int margin = style()->pixelMetric(QStyle::PM_FocusFrameHMargin, nullptr, this) + 1;
    const int room = visualRect(index).width() - 2 * margin;
    return fontMetrics().horizontalAdvance(text) > room ? text : QString();
}

bool CTreeListCtrl::viewportEvent(QEvent* event)
{
    if (event->type() == QEvent::ToolTip) {
        auto* help = static_cast<QHelpEvent*>(event);
        const QString tip = GetCellTipText(help->pos());
        if (tip.isEmpty())
            QToolTip::hideText();
        else
            QToolTip::showText(help->globalPos(), tip, viewport(), visualRect(indexAt(help->pos())));
        return true;
    }
    return QTreeView::viewportEvent(event);
}

// ---- mouse and keys

NMITEMACTIVATE CTreeListCtrl::activateInfo(UINT code, const QPoint& pos, const QPoint& screenPos) const
{
    NMITEMACTIVATE info;
    info.hdr = { const_cast<CTreeListCtrl*>(this), GetDlgCtrlID(), code };
    const QModelIndex index = indexAt(pos);
    info.hItem = m_model->itemFromIndex(index);
    info.iItem = info.hItem ? GetRowFromItem(info.hItem) : -1;
    info.iSubItem = index.isValid() ? index.column() : 0;
    info.ptActionX = pos.x();
    info.ptActionY = pos.y();
    info.ptScreenX = screenPos.x();
    info.ptScreenY = screenPos.y();
    return info;
}

void CTreeListCtrl::mousePressEvent(QMouseEvent* event)
{
    if (m_active) {
        // A click beside the open editor ends it; a width that is no number, or a
        // text the editor refuses, keeps it open and the click does nothing else.
        const bool widthRefused
            = m_active == m_combo && m_combo->DrawsSamples() && !m_combo->CheckLineWidth();
        if (widthRefused || !m_active->EndEdit(true, TLEND_COMMIT)) {
            event->accept();
            return;
        }
    }
    const QPoint pos = event->position().toPoint();
    UINT flags = 0;
    HTREEITEM item = HitTest(pos, &flags);
    m_pressPos = pos;
    m_pressItem = (flags & TVHT_ONITEMBUTTON) ? nullptr : item;
    m_pressColumn = indexAt(pos).column();
    m_pressOnCaret = event->button() == Qt::LeftButton && event->modifiers() == Qt::NoModifier && item
        && item == GetCaretItem() && (item->state() & LVIS_SELECTED) && GetSelectedCount() == 1;
    QTreeView::mousePressEvent(event);
}

void CTreeListCtrl::mouseMoveEvent(QMouseEvent* event)
{
    const QPoint pos = event->position().toPoint();
    if (m_dragging) {
        Q_EMIT dragMove(event->globalPosition().toPoint());
        return;
    }
    if ((event->buttons() & Qt::LeftButton) && m_pressItem && valid(m_pressItem)
        && (pos - m_pressPos).manhattanLength() >= QApplication::startDragDistance()) {
        m_dragging = true;
        m_pressOnCaret = false;
        NMITEMACTIVATE info = activateInfo(LVN_BEGINDRAG, m_pressPos, mapToGlobal(m_pressPos));
        info.hItem = m_pressItem;
        info.iItem = GetRowFromItem(m_pressItem);
        Q_EMIT beginDrag(info);
        return;
    }
    QTreeView::mouseMoveEvent(event);
}

void CTreeListCtrl::mouseReleaseEvent(QMouseEvent* event)
{
    const QPoint pos = event->position().toPoint();
    if (m_dragging && event->button() == Qt::LeftButton) {
        m_dragging = false;
        m_pressItem = nullptr;
        Q_EMIT dragDrop(event->globalPosition().toPoint(), event->modifiers());
        return;
    }
    QTreeView::mouseReleaseEvent(event);
    if (event->button() == Qt::RightButton) {
        Q_EMIT rightClick(activateInfo(NM_RCLICK, pos, event->globalPosition().toPoint()));
        return;
    }
    const QModelIndex index = indexAt(pos);
    HTREEITEM item = m_model->itemFromIndex(index);
    if (event->button() == Qt::LeftButton && m_pressOnCaret && item == m_pressItem
        && index.column() == m_pressColumn)
        EditSubItem(item, index.column());
    m_pressOnCaret = false;
}

void CTreeListCtrl::mouseDoubleClickEvent(QMouseEvent* event)
{
    const QModelIndex index = indexAt(event->position().toPoint());
    HTREEITEM item = m_model->itemFromIndex(index);
    if (event->button() == Qt::LeftButton && item && GetEditMode(item, index.column()) != TLEM_NONE) {
        EditSubItem(item, index.column());
        return;
    }
    QTreeView::mouseDoubleClickEvent(event);
}

void CTreeListCtrl::keyPressEvent(QKeyEvent* event)
{
    if (event->key() == Qt::Key_F2 && GetCaretItem()) {
        EditSubItem(GetCaretItem(), currentIndex().column() < 0 ? 0 : currentIndex().column());
        return;
    }
    const bool left = event->key() == Qt::Key_Left;
    if ((left || event->key() == Qt::Key_Right) && event->modifiers() == Qt::NoModifier
        && currentIndex().isValid()) {
        // Left and Right walk the cells of the row; Left from the first cell does
        // what a tree does (close the row, or go to its parent).
        const int next = NextShownColumn(currentIndex().column(), left ? -1 : 1);
        if (next >= 0) {
            SetCurrentColumn(next);
            return;
        }
        if (!left)
            return;
    }
    QTreeView::keyPressEvent(event);
}

int CTreeListCtrl::NextShownColumn(int column, int step) const
{
    for (int c = column + step; c >= 0 && c < GetColumnCount(); c += step) {
        if (!isColumnHidden(c) && columnWidth(c) > 0)
            return c;
    }
    return -1;
}

void CTreeListCtrl::SetCurrentColumn(int column)
{
    const QModelIndex current = currentIndex();
    if (!current.isValid() || column < 0 || column >= GetColumnCount())
        return;
    const QModelIndex cell = current.siblingAtColumn(column);
    selectionModel()->setCurrentIndex(cell, QItemSelectionModel::NoUpdate);
    scrollTo(cell);
    viewport()->update();
}

// ---- in-place editing

void CTreeListCtrl::SetColumnEditorIds(int column, int editorId, int buttonId)
{
    m_columnEditorIds[column] = { editorId, buttonId };
}

CTreeListEditorBase* CTreeListCtrl::editorForMode(int mode, int column)
{
    const auto ids = m_columnEditorIds.find(column);
    const int editorId = ids == m_columnEditorIds.end() ? 0 : ids->second.first;
    const int buttonId = ids == m_columnEditorIds.end() ? 0 : ids->second.second;
    CTreeListEditorBase* editor = nullptr;
    int defaultId = 0;
    switch (mode) {
    case TLEM_EDIT:
        editor = m_edit;
        defaultId = kEditDefaultId;
        break;
    case TLEM_CODE:
        editor = m_codeEdit;
        defaultId = kCodeEditDefaultId;
        break;
    case TLEM_LIST:
    case TLEM_COMBO:
        m_combo->SetEditableMode(mode == TLEM_COMBO);
        editor = m_combo;
        defaultId = mode == TLEM_COMBO ? kWidthComboDefaultId : kListComboDefaultId;
        break;
    case TLEM_EDITBUTTON:
    case TLEM_BUTTON:
        m_editBtn->SetReadOnly(mode == TLEM_BUTTON);
        m_editBtn->SetButtonId(buttonId ? buttonId : kEditBtnButtonDefaultId);
        editor = m_editBtn;
        defaultId = kEditBtnDefaultId;
        break;
    default:
        return nullptr;
    }
    editor->SetDlgCtrlID(editorId ? editorId : defaultId);
    return editor;
}

BOOL CTreeListCtrl::EditSubItem(HTREEITEM item, int column)
{
    if (!validCell(item, column) || GetRowFromItem(item) < 0)
        return FALSE;
    const CTreeListItemTree& tree = m_model->tree();
    const int mode = tree.editMode(item, column);
    if (mode == TLEM_NONE)
        return FALSE;
    if (m_active && !m_active->EndEdit(true, TLEND_COMMIT))
        return FALSE;
    scrollTo(m_model->indexFromItem(item, column));
    CTreeListEditorBase* editor = editorForMode(mode, column);
    if (!editor)
        return FALSE;
    m_active = editor;
    editor->BeginEdit(
        item, column, item->cell(column).text, tree.options(item, column), GetSubItemRect(item, column));
    return TRUE;
}

BOOL CTreeListCtrl::EndEditing(bool onRow, int mode)
{
    return m_active ? m_active->EndEdit(onRow, mode) : FALSE;
}

BOOL CTreeListCtrl::ApplyEditorText(HTREEITEM item, int mode)
{
    if (!m_active || (mode != 0 && mode != 2) || !validCell(item, m_active->GetColumn()))
        return FALSE;
    return SetItemText(item, m_active->GetWindowText(), m_active->GetColumn());
}

void CTreeListCtrl::OnEditorEnded(CTreeListEditorBase* editor, bool onRow, UINT state)
{
    if (m_active != editor)
        return;
    m_active = nullptr;
    // The owner's handling of the notice and the commit are one change to undo.
    BeginUndoGroup();
    HTREEITEM item = editor->GetItem();
    const int column = editor->GetColumn();
    const QString text = editor->GetWindowText();
    const bool alive = valid(item);

    NMLVDISPINFO info;
    info.hdr = { this, editor->GetDlgCtrlID(), LVN_ENDLABELEDITW };
    info.gridId = GetDlgCtrlID();
    info.mask = LVIF_TEXT;
    info.iItem = onRow && alive ? GetRowFromItem(item) : -1;
    info.iSubItem = column;
    info.state = state;
    info.pszText = text;
    info.cchTextMax = int(text.size());
    info.hItem = alive ? item : nullptr;
    info.result = info.iItem != -1;
    Q_EMIT endLabelEdit(&info);

    if (info.result && validCell(item, column)) {
        const bool changed = item->cell(column).text != text;
        SetItemText(item, text, column);
        if (changed && m_lineTypeColumns.count(column)) {
            m_lineTypeChanged = true;
            Q_EMIT lineTypeChanged(item, column);
        }
    }
    EndUndoGroup();
    if (m_active != editor) {
        editor->widget()->hide();
        if (!m_active)
            setFocus(Qt::OtherFocusReason);
    }
}

void CTreeListCtrl::placeActiveEditor()
{
    if (!m_active)
        return;
    const QRect rect = GetSubItemRect(m_active->GetItem(), m_active->GetColumn());
    if (rect.isValid())
        m_active->widget()->setGeometry(rect);
}

void CTreeListCtrl::updateGeometries()
{
    QTreeView::updateGeometries();
    placeActiveEditor();
}

void CTreeListCtrl::scrollContentsBy(int dx, int dy)
{
    QTreeView::scrollContentsBy(dx, dy);
    placeActiveEditor();
}
