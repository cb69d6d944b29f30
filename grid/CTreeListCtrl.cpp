#include "CTreeListCtrl.h"

#include "CTreeListCellDelegate.h"
#include "CTreeListChanges.h"
#include "CTreeListCombo.h"
#include "CTreeListEdit.h"
#include "CTreeListEditBtn.h"
#include "CTreeListHistory.h"
#include "CtrlId.h"

#include <QHeaderView>

#include <algorithm>

namespace {
constexpr int kTreeTextLimit = 300;
// The system button-text colour: what an unset cell colour reads as.
constexpr COLORREF kButtonTextColor = 0x000000;
} // namespace

CTreeListCtrl::HeldAutoScroll::HeldAutoScroll(CTreeListCtrl& grid)
    : m_grid(grid)
    , m_on(grid.hasAutoScroll())
{
    grid.setAutoScroll(false);
}

CTreeListCtrl::HeldAutoScroll::~HeldAutoScroll()
{
    m_grid.setAutoScroll(m_on);
}

CTreeListCtrl::CTreeListCtrl(QWidget* parent)
    : QTreeView(parent)
    , m_model(new CTreeListModel(this))
    , m_history(std::make_unique<CTreeListHistory>(*m_model))
    , m_edit(new CTreeListEdit(this, viewport()))
    , m_codeEdit(new CTreeListEdit(this, viewport()))
    , m_combo(new CTreeListCombo(this, viewport()))
    , m_editBtn(new CTreeListEditBtn(this, viewport()))
{
    m_model->setOwner(this);
    setModel(m_model);
    setItemDelegate(new CTreeListCellDelegate(this));
    setSelectionMode(QAbstractItemView::ExtendedSelection);
    setSelectionBehavior(QAbstractItemView::SelectRows);
    setEditTriggers(QAbstractItemView::NoEditTriggers);
    setUniformRowHeights(true);
    setExpandsOnDoubleClick(false);
    setAllColumnsShowFocus(true);
    setMouseTracking(true);
    header()->setStretchLastSection(false);
    header()->setSectionsMovable(false);
    m_edit->SetDlgCtrlID(10000);
    m_codeEdit->SetDlgCtrlID(10010);
    m_combo->SetDlgCtrlID(10004);
    m_editBtn->SetDlgCtrlID(10007);
    m_editBtn->SetButtonId(10008);
    connect(
        selectionModel(), &QItemSelectionModel::selectionChanged, this, &CTreeListCtrl::onSelectionChanged);
    connect(selectionModel(), &QItemSelectionModel::currentChanged, this, &CTreeListCtrl::onCurrentChanged);
    connect(
        this, &QTreeView::expanded, this, [this](const QModelIndex& index) { onViewExpanded(index, true); });
    connect(this, &QTreeView::collapsed, this,
        [this](const QModelIndex& index) { onViewExpanded(index, false); });
    connect(m_editBtn, &CTreeListEditBtn::buttonClicked, this, &CTreeListCtrl::editorButtonClicked);
    applyStyles();
    SetBkColor(m_bkColor);
}

CTreeListCtrl::~CTreeListCtrl()
{
    // Editors must not report into a grid that is going away.
    m_active = nullptr;
    m_history.reset();
}

void CTreeListCtrl::SetDlgCtrlID(int id)
{
    ::SetDlgCtrlID(this, id);
}

int CTreeListCtrl::GetDlgCtrlID() const
{
    return ::GetDlgCtrlID(this);
}

bool CTreeListCtrl::valid(HTREEITEM item) const
{
    return item && item != TVI_ROOT && item != m_model->tree().root() && m_model->tree().isItem(item);
}

bool CTreeListCtrl::validCell(HTREEITEM item, int column) const
{
    return valid(item) && column >= 0 && column < GetColumnCount();
}

// ---- structure

HTREEITEM CTreeListCtrl::GetRootItem() const
{
    return m_model->tree().root();
}

HTREEITEM CTreeListCtrl::GetParentItem(HTREEITEM item) const
{
    return valid(item) ? item->parent() : nullptr;
}

HTREEITEM CTreeListCtrl::GetChildItem(HTREEITEM item) const
{
    const CTreeListItemTree& tree = m_model->tree();
    if (!tree.isItem(item ? item : TVI_ROOT))
        return nullptr;
    HTREEITEM p = tree.resolve(item);
    return p->children().empty() ? nullptr : p->children().front();
}

HTREEITEM CTreeListCtrl::GetNextSiblingItem(HTREEITEM item) const
{
    if (!valid(item))
        return nullptr;
    const auto& siblings = item->parent()->children();
    const size_t next = size_t(item->indexInParent()) + 1;
    return next < siblings.size() ? siblings[next] : nullptr;
}

HTREEITEM CTreeListCtrl::GetPrevSiblingItem(HTREEITEM item) const
{
    if (!valid(item) || item->indexInParent() == 0)
        return nullptr;
    return item->parent()->children()[size_t(item->indexInParent()) - 1];
}

BOOL CTreeListCtrl::ItemHasChildren(HTREEITEM item) const
{
    const CTreeListItemTree& tree = m_model->tree();
    return tree.isItem(item ? item : TVI_ROOT) && !tree.resolve(item)->children().empty();
}

int CTreeListCtrl::GetItemLevel(HTREEITEM item) const
{
    if (item == TVI_ROOT || item == GetRootItem())
        return 0;
    return valid(item) ? item->depth() : -1;
}

HTREEITEM CTreeListCtrl::InsertItem(const QString& text, HTREEITEM parent, HTREEITEM insertAfter)
{
    forgetHistoryOutsideGroup();
    HTREEITEM item = m_model->insertItem(text, parent, insertAfter);
    if (item) {
        recordInserted(item);
        syncExpanded(item->parent());
    }
    return item;
}

BOOL CTreeListCtrl::MoveItem(HTREEITEM item, HTREEITEM newParent, HTREEITEM insertAfter, HTREEITEM* newItem)
{
    if (newItem)
        *newItem = nullptr;
    if (!valid(item))
        return FALSE;
    endEditIfInside(item);
    forgetHistoryOutsideGroup();
    const CTreeListMoveChange::Place from { item->parent(), item->indexInParent() };
    if (!m_model->moveItem(item, newParent, insertAfter))
        return FALSE;
    const CTreeListMoveChange::Place to { item->parent(), item->indexInParent() };
    if (m_history->IsRecording() && (from.parent != to.parent || from.position != to.position))
        m_history->Record(std::make_unique<CTreeListMoveChange>(item, from, to));
    syncExpanded(item->parent());
    // The view lays out moved rows only on a later timer: a paint before it would
    // show the old order and the grid would paint twice. Lay out now.
    executeDelayedItemsLayout();
    if (newItem)
        *newItem = item;
    return TRUE;
}

HTREEITEM CTreeListCtrl::CopyItem(
    HTREEITEM item, HTREEITEM newParent, HTREEITEM insertAfter, CTreeListCtrl* source)
{
    const CTreeListCtrl* from = source ? source : this;
    if (!from->valid(item))
        return nullptr;
    const CTreeListItemTree& tree = m_model->tree();
    HTREEITEM parent = tree.resolve(newParent);
    if (!tree.isItem(parent))
        return nullptr;
    if (from == this) {
        if (tree.isAncestorOrSelf(item, parent))
            return nullptr;
        if (insertAfter == item && item->parent() == parent)
            return item; // already there: nothing to copy
    }
    forgetHistoryOutsideGroup();
    HTREEITEM copy = m_model->copyItem(item, parent, insertAfter);
    if (copy && from != this)
        takeColumnEditors(copy, *from);
    if (copy) {
        recordInserted(copy);
        syncExpandedSubtree(copy);
        syncExpanded(parent);
    }
    return copy;
}

// Cells copied from another grid keep the editors they had there, their columns'
// ones included.
void CTreeListCtrl::takeColumnEditors(HTREEITEM copy, const CTreeListCtrl& from)
{
    CTreeListItemTree& tree = m_model->tree();
    const CTreeListItemTree& source = from.m_model->tree();
    const int columns = std::min(GetColumnCount(), from.GetColumnCount());
    tree.forEachPostOrder(copy, [&](HTREEITEM each) {
        for (int c = 0; c < columns; ++c) {
            if (!each->cell(c).ownEditor && source.columnEditMode(c) != TLEM_NONE) {
                tree.setEditMode(each, c, source.columnEditMode(c));
                tree.setOptions(each, c, source.columnOptions(c));
            }
        }
    });
}

void CTreeListCtrl::notifyDeleted(HTREEITEM item)
{
    // The id is a property looked up by name: once for all the items going.
    const int id = GetDlgCtrlID();
    m_model->tree().forEachPostOrder(item, [this, id](HTREEITEM gone) {
        if (gone == GetRootItem())
            return;
        NMLISTVIEW info;
        info.hdr = { this, id, LVN_DELETEITEM };
        info.hItem = gone;
        info.lParam = gone->data();
        Q_EMIT itemDeleted(info);
    });
}

void CTreeListCtrl::endEditIfInside(HTREEITEM item)
{
    if (m_active && m_model->tree().isAncestorOrSelf(item, m_active->GetItem()))
        m_active->EndEdit(false, TLEND_PLAIN);
}

BOOL CTreeListCtrl::DeleteItem(HTREEITEM item)
{
    if (item == TVI_ROOT || item == GetRootItem())
        return DeleteAllItems();
    if (!valid(item))
        return FALSE;
    endEditIfInside(item);
    notifyDeleted(item);
    if (!valid(item))
        return TRUE; // a handler already took it away
    if (m_dropTarget && m_model->tree().isAncestorOrSelf(item, m_dropTarget))
        m_dropTarget = nullptr;
    if (m_pressItem && m_model->tree().isAncestorOrSelf(item, m_pressItem))
        m_pressItem = nullptr;
    const HeldAutoScroll held(*this);
    if (m_history->IsRecording()) {
        // Kept alive for the undo: the same handles come back.
        HTREEITEM parent = item->parent();
        const int position = item->indexInParent();
        m_model->detachItem(item);
        m_history->Record(std::make_unique<CTreeListPlaceChange>(
            m_model->tree(), CTreeListPlaceChange::Removed, item, parent, position));
        return TRUE;
    }
    forgetHistoryOutsideGroup();
    m_model->removeItem(item);
    return TRUE;
}

BOOL CTreeListCtrl::DeleteAllItems()
{
    if (m_active)
        m_active->EndEdit(false, TLEND_PLAIN);
    notifyDeleted(GetRootItem());
    m_dropTarget = nullptr;
    m_pressItem = nullptr;
    if (m_history->IsRecording()) {
        m_history->Record(
            std::make_unique<CTreeListRemoveAllChange>(m_model->tree(), m_model->detachAllItems()));
        return TRUE;
    }
    forgetHistoryOutsideGroup();
    m_model->removeAllItems();
    return TRUE;
}

// ---- rows

int CTreeListCtrl::GetItemCount() const
{
    return m_model->tree().rowCount();
}

HTREEITEM CTreeListCtrl::GetItemFromRow(int row) const
{
    if (row == -1)
        return GetRootItem();
    return m_model->tree().itemFromRow(row);
}

int CTreeListCtrl::GetRowFromItem(HTREEITEM item) const
{
    if (!valid(item))
        return -1;
    return m_model->tree().rowFromItem(item);
}

HTREEITEM CTreeListCtrl::GetFirstVisibleRowItem() const
{
    return m_model->itemFromIndex(indexAt(QPoint(1, 1)));
}

BOOL CTreeListCtrl::EnsureVisible(HTREEITEM item)
{
    if (!valid(item))
        return FALSE;
    std::vector<HTREEITEM> closed;
    for (HTREEITEM p = item->parent(); p && p != GetRootItem(); p = p->parent())
        if (!p->isExpanded())
            closed.push_back(p);
    // A row already shown is only scrolled to: nothing to repaint beyond that.
    if (!closed.empty()) {
        SetRedraw(false);
        for (auto it = closed.rbegin(); it != closed.rend(); ++it)
            Expand(*it, TVE_EXPAND);
        SetRedraw(true);
    }
    scrollTo(m_model->indexFromItem(item));
    return TRUE;
}

BOOL CTreeListCtrl::RedrawItems(HTREEITEM first, HTREEITEM last)
{
    for (HTREEITEM item : { first, last })
        if (valid(item))
            viewport()->update(visualRect(m_model->indexFromItem(item)).adjusted(-10000, 0, 10000, 0));
    return TRUE;
}

QRect CTreeListCtrl::GetSubItemRect(HTREEITEM item, int column) const
{
    if (!validCell(item, column) || GetRowFromItem(item) < 0)
        return QRect();
    return visualRect(m_model->indexFromItem(item, column));
}

HTREEITEM CTreeListCtrl::HitTest(const QPoint& point, UINT* flags) const
{
    const QModelIndex index = indexAt(point);
    HTREEITEM item = m_model->itemFromIndex(index);
    UINT where = TVHT_NOWHERE;
    if (!item) {
        if (point.y() >= 0 && GetItemCount() > 0
            && point.y() > visualRect(m_model->indexFromItem(GetItemFromRow(GetItemCount() - 1))).bottom())
            where |= TVHT_BELOW;
    } else if (index.column() == 0 && point.x() < visualRect(index).left()) {
        const bool onButton
            = point.x() >= visualRect(index).left() - indentation() && !item->children().empty();
        where = onButton ? TVHT_ONITEMBUTTON : TVHT_ONITEMINDENT;
    } else {
        where = TVHT_ONITEMLABEL;
    }
    if (flags)
        *flags = where;
    return item;
}

// ---- selection

HTREEITEM CTreeListCtrl::GetSelectedItem() const
{
    const int rows = GetItemCount();
    for (int row = 0; row < rows; ++row) {
        HTREEITEM item = GetItemFromRow(row);
        if (item->state() & LVIS_SELECTED)
            return item;
    }
    return nullptr;
}

int CTreeListCtrl::GetSelectedCount() const
{
    int count = 0;
    const int rows = GetItemCount();
    for (int row = 0; row < rows; ++row)
        count += (GetItemFromRow(row)->state() & LVIS_SELECTED) ? 1 : 0;
    return count;
}

UINT CTreeListCtrl::GetItemState(HTREEITEM item, UINT mask) const
{
    return valid(item) ? item->state() & mask : 0;
}

BOOL CTreeListCtrl::SetItemState(HTREEITEM item, UINT state, UINT mask)
{
    if (!valid(item))
        return FALSE;
    CTreeListItemTree& tree = m_model->tree();
    const QModelIndex index = m_model->indexFromItem(item);
    if (mask & LVIS_SELECTED) {
        const bool on = state & LVIS_SELECTED;
        selectionModel()->select(index,
            (on ? QItemSelectionModel::Select : QItemSelectionModel::Deselect) | QItemSelectionModel::Rows);
    }
    if (mask & LVIS_FOCUSED) {
        if (state & LVIS_FOCUSED)
            selectionModel()->setCurrentIndex(index, QItemSelectionModel::NoUpdate);
        else if (selectionModel()->currentIndex().siblingAtColumn(0) == index)
            selectionModel()->clearCurrentIndex();
    }
    // The selection model has set the two bits through its signals; the rest of
    // the word (and the two bits, should a signal not come) is written here.
    tree.setState(item, (item->state() & ~mask) | (state & mask));
    viewport()->update();
    return TRUE;
}

BOOL CTreeListCtrl::SelectItem(HTREEITEM item)
{
    if (!item) {
        selectionModel()->clearSelection();
        selectionModel()->clearCurrentIndex();
        return TRUE;
    }
    if (!valid(item))
        return FALSE;
    selectionModel()->setCurrentIndex(
        m_model->indexFromItem(item), QItemSelectionModel::ClearAndSelect | QItemSelectionModel::Rows);
    return TRUE;
}

HTREEITEM CTreeListCtrl::GetCaretItem() const
{
    return m_model->itemFromIndex(selectionModel()->currentIndex());
}

BOOL CTreeListCtrl::SelectDropTarget(HTREEITEM item)
{
    if (item && !valid(item))
        return FALSE;
    if (item != m_dropTarget) {
        m_dropTarget = item;
        viewport()->update();
    }
    return TRUE;
}

BOOL CTreeListCtrl::SelectSetFirstVisible(HTREEITEM item)
{
    if (!valid(item) || GetRowFromItem(item) < 0)
        return FALSE;
    scrollTo(m_model->indexFromItem(item), QAbstractItemView::PositionAtTop);
    return TRUE;
}

void CTreeListCtrl::onSelectionChanged(const QItemSelection& selected, const QItemSelection& deselected)
{
    CTreeListItemTree& tree = m_model->tree();
    const auto apply = [&](const QItemSelection& ranges, bool on) {
        for (const QItemSelectionRange& range : ranges) {
            if (!range.isValid())
                continue;
            for (int row = range.top(); row <= range.bottom(); ++row) {
                HTREEITEM item = m_model->itemFromIndex(m_model->index(row, 0, range.parent()));
                if (item && tree.isItem(item))
                    tree.setState(
                        item, on ? (item->state() | LVIS_SELECTED) : (item->state() & ~LVIS_SELECTED));
            }
        }
    };
    apply(deselected, false);
    apply(selected, true);
}

void CTreeListCtrl::onCurrentChanged(const QModelIndex& current, const QModelIndex& previous)
{
    CTreeListItemTree& tree = m_model->tree();
    if (HTREEITEM old = m_model->itemFromIndex(previous); old && tree.isItem(old))
        tree.setState(old, old->state() & ~LVIS_FOCUSED);
    if (HTREEITEM now = m_model->itemFromIndex(current); now && tree.isItem(now))
        tree.setState(now, now->state() | LVIS_FOCUSED);
}

// ---- data

quintptr CTreeListCtrl::GetItemData(HTREEITEM item) const
{
    return valid(item) ? item->data() : 0;
}

BOOL CTreeListCtrl::SetItemData(HTREEITEM item, quintptr data)
{
    if (!valid(item))
        return FALSE;
    if (m_history->IsRecording() && item->data() != data && !m_history->IsBorn(item))
        m_history->Record(std::make_unique<CTreeListDataChange>(item, item->data(), data));
    m_model->tree().setData(item, data);
    return TRUE;
}

QString CTreeListCtrl::GetItemText(HTREEITEM item, int column) const
{
    if (!valid(item) || column < 0)
        return QString();
    const QString& text = item->cell(column).text;
    return column == 0 ? text.left(kTreeTextLimit) : text;
}

// While painting is suspended the whole viewport is repainted when it resumes, so
// per-cell notices would only cost time during a fill of thousands of rows.
void CTreeListCtrl::notifyCellChanged(HTREEITEM item, int column)
{
    if (m_redrawLocks == 0)
        m_model->cellChanged(item, column);
}

BOOL CTreeListCtrl::changeCell(
    HTREEITEM item, int column, int shownColumn, const std::function<void(CTreeListItemTree&)>& change)
{
    if (!validCell(item, column))
        return FALSE;
    std::optional<CTreeListCell> before = cellBeforeChange(item, column);
    change(m_model->tree());
    recordCellChange(item, column, std::move(before));
    notifyCellChanged(item, shownColumn);
    return TRUE;
}

BOOL CTreeListCtrl::SetItemText(HTREEITEM item, const QString& text, int column)
{
    return changeCell(
        item, column, column, [&](CTreeListItemTree& tree) { tree.setText(item, column, text); });
}

COLORREF CTreeListCtrl::GetItemColor(HTREEITEM item, int column) const
{
    if (!valid(item))
        return kButtonTextColor;
    const CTreeListCell& cell = item->cell(column);
    return cell.hasTextColor ? cell.textColor : kButtonTextColor;
}

COLORREF CTreeListCtrl::GetItemBackColor(HTREEITEM item, int column) const
{
    if (!valid(item))
        return kButtonTextColor;
    const CTreeListCell& cell = item->cell(column);
    return cell.hasBackColor ? cell.backColor : kButtonTextColor;
}

BOOL CTreeListCtrl::SetItemColor(HTREEITEM item, COLORREF colour, int column)
{
    return changeCell(
        item, column, -1, [&](CTreeListItemTree& tree) { tree.setTextColor(item, column, colour); });
}

BOOL CTreeListCtrl::SetItemBackColor(HTREEITEM item, COLORREF colour, int column)
{
    return changeCell(
        item, column, -1, [&](CTreeListItemTree& tree) { tree.setBackColor(item, column, colour); });
}

BOOL CTreeListCtrl::SetEditMode(HTREEITEM item, int mode, const QStringList& options, int column)
{
    if (!validCell(item, column) || mode < TLEM_NONE || mode > TLEM_BUTTON)
        return FALSE;
    m_model->tree().setEditMode(item, column, mode);
    m_model->tree().setOptions(item, column, options);
    return TRUE;
}

int CTreeListCtrl::GetEditMode(HTREEITEM item, int column) const
{
    return valid(item) ? m_model->tree().editMode(item, column) : TLEM_NONE;
}

QStringList CTreeListCtrl::GetEditOptions(HTREEITEM item, int column) const
{
    return valid(item) ? m_model->tree().options(item, column) : QStringList();
}

BOOL CTreeListCtrl::SetColumnEditMode(int column, int mode, const QStringList& options)
{
    if (column < 0 || column >= GetColumnCount() || mode < TLEM_NONE || mode > TLEM_BUTTON)
        return FALSE;
    CTreeListColumn& info = m_model->tree().columnForWrite(column);
    info.editMode = mode;
    info.options = options;
    return TRUE;
}

BOOL CTreeListCtrl::SetEditOptions(HTREEITEM item, const QStringList& options, int column)
{
    if (!validCell(item, column))
        return FALSE;
    m_model->tree().setOptions(item, column, options);
    return TRUE;
}

void CTreeListCtrl::SetColumnCompare(int column, TreeListCompare compare)
{
    m_model->tree().setColumnCompare(column, std::move(compare));
}
