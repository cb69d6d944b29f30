#pragma once

// The tree-list grid: a report-style list whose column 0 is a tree and whose other
// columns are cells, with in-place editors for the cells.
//
// Rows are the items whose ancestors are all expanded, numbered from 0 in display
// order; an item that is not shown has row -1. Coordinates of the "client" area
// (HitTest, GetSubItemRect, notifications) are those of the grid's viewport.
// Every notification the dialog handles is a signal carrying the fields of the
// Win32 notification it stands for; handlers are called directly (same thread).
#include "CTreeListModel.h"
#include "TreeListTypes.h"

#include <QPixmap>
#include <QTreeView>

#include <functional>
#include <map>
#include <memory>
#include <optional>
#include <set>

class CTreeListEdit;
class CTreeListHistory;
class CTreeListCombo;
class CTreeListEditBtn;
class CTreeListEditorBase;

class CTreeListCtrl : public QTreeView, private CTreeListModel::Owner
{
    Q_OBJECT
public:
    explicit CTreeListCtrl(QWidget* parent = nullptr);
    ~CTreeListCtrl() override;

    void SetDlgCtrlID(int id);
    int GetDlgCtrlID() const;
    CTreeListModel* GetModel() const { return m_model; }

    // Structure. Null parent = root; TVI_ROOT is the root; insertAfter is TVI_FIRST,
    // TVI_LAST, TVI_SORT (by column 0's comparison function) or a child of parent.
    HTREEITEM GetRootItem() const;
    HTREEITEM GetParentItem(HTREEITEM item) const;
    HTREEITEM GetChildItem(HTREEITEM item) const;
    HTREEITEM GetNextSiblingItem(HTREEITEM item) const;
    HTREEITEM GetPrevSiblingItem(HTREEITEM item) const;
    BOOL ItemHasChildren(HTREEITEM item) const;
    // Level of an item: the root 0, top-level items 1.
    int GetItemLevel(HTREEITEM item) const;
    HTREEITEM InsertItem(const QString& text, HTREEITEM parent = nullptr, HTREEITEM insertAfter = TVI_LAST);
    // Moves an item with its subtree; the handle stays the same and comes back in
    // *newItem. Refused (0) when newParent is the item or below it.
    BOOL MoveItem(HTREEITEM item, HTREEITEM newParent, HTREEITEM insertAfter, HTREEITEM* newItem = nullptr);
    // Copies an item with its subtree from this grid (source null) or another; same
    // refusal rule. Copying an item after itself in this grid changes nothing and
    // returns the item. Returns the copy, or null when refused.
    HTREEITEM CopyItem(
        HTREEITEM item, HTREEITEM newParent, HTREEITEM insertAfter, CTreeListCtrl* source = nullptr);
    BOOL DeleteItem(HTREEITEM item);
    BOOL DeleteAllItems();

    // Rows.
    int GetItemCount() const;
    HTREEITEM GetItemFromRow(int row) const; // -1 gives the root
    int GetRowFromItem(HTREEITEM item) const;
    HTREEITEM GetFirstVisibleRowItem() const;
    BOOL EnsureVisible(HTREEITEM item);
    BOOL RedrawItems(HTREEITEM first, HTREEITEM last);
    HTREEITEM HitTest(const QPoint& point, UINT* flags = nullptr) const;
    QRect GetSubItemRect(HTREEITEM item, int column) const;

    // Selection. State bits LVIS_SELECTED (2) and LVIS_FOCUSED (1); one item at most
    // has the focus (the caret).
    HTREEITEM GetSelectedItem() const;
    int GetSelectedCount() const;
    UINT GetItemState(HTREEITEM item, UINT mask) const;
    BOOL SetItemState(HTREEITEM item, UINT state, UINT mask);
    // Makes the item the caret and the only selected item; null clears both.
    BOOL SelectItem(HTREEITEM item);
    HTREEITEM GetCaretItem() const;
    BOOL SelectDropTarget(HTREEITEM item);
    HTREEITEM GetDropHilightItem() const { return m_dropTarget; }
    BOOL SelectSetFirstVisible(HTREEITEM item);

    // Data.
    quintptr GetItemData(HTREEITEM item) const;
    BOOL SetItemData(HTREEITEM item, quintptr data);
    // Column 0 is the tree text; at most 300 characters of it are read.
    QString GetItemText(HTREEITEM item, int column = 0) const;
    BOOL SetItemText(HTREEITEM item, const QString& text, int column = 0);
    // Typed cells (see CTreeListCell): a column given a value format holds values,
    // its texts derived from them. Recorded for undo like a text.
    BOOL SetItemValue(HTREEITEM item, const QVariant& value, int column);
    // The value alone: the cell goes on showing its text until it is next set.
    BOOL SetItemValueKeepText(HTREEITEM item, const QVariant& value, int column);
    QVariant GetItemValue(HTREEITEM item, int column) const;
    void SetColumnValueFormat(int column, std::function<QString(const QVariant&)> toText,
        std::function<QVariant(const QString&)> fromText);
    // Unset colours read as the button-text colour, black (0x000000).
    COLORREF GetItemColor(HTREEITEM item, int column) const;
    COLORREF GetItemBackColor(HTREEITEM item, int column) const;
    BOOL SetItemColor(HTREEITEM item, COLORREF colour, int column);
    BOOL SetItemBackColor(HTREEITEM item, COLORREF colour, int column);
    BOOL SetEditMode(HTREEITEM item, int mode, const QStringList& options, int column);
    int GetEditMode(HTREEITEM item, int column) const;
    QStringList GetEditOptions(HTREEITEM item, int column) const;
    BOOL SetEditOptions(HTREEITEM item, const QStringList& options, int column);
    // The editor and drop-down items of every cell of a column that has none of its
    // own (SetEditMode and SetEditOptions give a cell its own). Kept with the column.
    BOOL SetColumnEditMode(int column, int mode, const QStringList& options);
    void SetColumnCompare(int column, TreeListCompare compare);

    // Expand (TVE_EXPAND, TVE_COLLAPSE, TVE_TOGGLE). Painting is suspended while the
    // change runs and resumes when the outermost change ends.
    BOOL Expand(HTREEITEM item, UINT code);
    bool IsItemExpanded(HTREEITEM item) const;
    // Shows only the items `shown` answers true for and their ancestors; rows and row
    // numbers then count only those. An empty function shows every item again.
    void SetRowFilter(const std::function<bool(HTREEITEM)>& shown);
    // The same with the items to show given at once: no test per item.
    void SetRowFilterItems(const std::vector<HTREEITEM>& shown);
    bool IsRowFilterOn() const { return m_filterOn; }
    // Suspends (false) or resumes (true) painting; nests with Expand.
    void SetRedraw(bool redraw);
    bool IsPaintingSuspended() const { return m_redrawLocks > 0; }
    // Changes to the cells' texts and to which items the grid holds (see
    // CTreeListItemTree::contentChanges).
    std::uint64_t ContentChanges() const { return m_model->tree().contentChanges(); }

    // Drag.
    QPixmap CreateDragImage(HTREEITEM item) const;
    bool IsDragging() const { return m_dragging; }
    void CancelDrag() { m_dragging = false; }

    // Columns.
    int InsertColumn(
        int index, const QString& title, int format = LVCFMT_LEFT, int width = -1, int subItem = -1);
    // Index 0 deletes all items and then every column.
    BOOL DeleteColumn(int index);
    int GetColumnCount() const;
    QString GetColumnText(int index) const;
    int GetColumnWidth(int index) const;
    BOOL SetColumnWidth(int index, int width);
    int GetColumnFormat(int index) const;

    // Style words (TVS_*, LVS_EX_*).
    void ModifyStyle(DWORD remove, DWORD add);
    DWORD GetStyle() const { return m_style; }
    void ModifyExtendedStyle(DWORD remove, DWORD add);
    DWORD GetExtendedStyle() const { return m_exStyle; }
    void SetBkColor(COLORREF colour);
    COLORREF GetBkColor() const { return m_bkColor; }

    // In-place editing.
    CTreeListEdit* GetEditCtrl() const { return m_edit; }
    CTreeListEdit* GetCodeEditCtrl() const { return m_codeEdit; }
    CTreeListCombo* GetComboCtrl() const { return m_combo; }
    CTreeListEditBtn* GetEditBtnCtrl() const { return m_editBtn; }
    CTreeListEditorBase* GetActiveEditor() const { return m_active; }
    // The control ids of the editor a column opens (and of its button, for the
    // browse editors); 0 keeps the editor's default id.
    void SetColumnEditorIds(int column, int editorId, int buttonId = 0);
    // Opens the cell's editor (by its edit mode); false when the cell has none.
    BOOL EditSubItem(HTREEITEM item, int column);
    // The next shown column after `column` going by `step` (1 or -1); -1 past the end.
    int NextShownColumn(int column, int step) const;
    // Moves the caret to another cell of its row; the selection stays.
    void SetCurrentColumn(int column);
    // Ends the open edit, if any (see CTreeListEditorBase::EndEdit).
    BOOL EndEditing(bool onRow, int mode);
    // The open editor's text written into its cell of `item` while editing goes on
    // (the name and remark editors' buttons). Modes 0 and 2 are known.
    BOOL ApplyEditorText(HTREEITEM item, int mode);
    // Columns whose committed changes count as line-type changes.
    void SetLineTypeColumns(const std::set<int>& columns) { m_lineTypeColumns = columns; }
    bool IsLineTypeChanged() const { return m_lineTypeChanged; }
    void ClearLineTypeChanged() { m_lineTypeChanged = false; }

    // Undo and redo. Changes to rows, cells and item data made while a group is
    // open are recorded as one command (groups nest; the outermost closes it), with
    // the owner's own steps given to RecordUndo. A change to the rows made outside
    // a group forgets the history. Undo and Redo cancel an open edit first and give
    // the row to show afterwards, or null.
    void BeginUndoGroup();
    void EndUndoGroup();
    bool IsUndoRecording() const;
    void RecordUndo(std::function<void()> undo, std::function<void()> redo);
    bool CanUndo() const;
    bool CanRedo() const;
    HTREEITEM Undo();
    HTREEITEM Redo();
    // Forgets the history; the rows as they are now are the clean state.
    void ClearUndo();
    // Whether the rows are as at the last ClearUndo (nothing done, or all undone).
    bool IsUndoClean() const;
    const CTreeListHistory& History() const { return *m_history; }

    // The full text of the cell under a client point when it is cut off, else "".
    QString GetCellTipText(const QPoint& point) const;

    // Called by an editor when its edit ends.
    void OnEditorEnded(CTreeListEditorBase* editor, bool onRow, UINT state);

Q_SIGNALS:
    void endLabelEdit(NMLVDISPINFO* info); // LVN_ENDLABELEDITW; set info->result
    void rightClick(const NMITEMACTIVATE& info); // NM_RCLICK
    void beginDrag(const NMITEMACTIVATE& info); // LVN_BEGINDRAG
    void dragMove(const QPoint& screenPos); // the pointer moved during a row drag
    void dragDrop(const QPoint& screenPos, Qt::KeyboardModifiers modifiers); // button released
    void itemDeleted(const NMLISTVIEW& info); // LVN_DELETEITEM, sent before the item goes
    void itemExpanded(HTREEITEM item, bool expanded);
    void lineTypeChanged(HTREEITEM item, int column);
    void editorButtonClicked(int buttonId);

protected:
    void drawRow(
        QPainter* painter, const QStyleOptionViewItem& option, const QModelIndex& index) const override;
    void drawBranches(QPainter* painter, const QRect& rect, const QModelIndex& index) const override;
    void mousePressEvent(QMouseEvent* event) override;
    void mouseMoveEvent(QMouseEvent* event) override;
    void mouseReleaseEvent(QMouseEvent* event) override;
    void mouseDoubleClickEvent(QMouseEvent* event) override;
    void keyPressEvent(QKeyEvent* event) override;
    bool viewportEvent(QEvent* event) override;
    void updateGeometries() override;
    void scrollContentsBy(int dx, int dy) override;

private:
    // CTreeListModel::Owner: edits through the model's generic calls.
    bool writeCell(HTREEITEM item, int column, const QVariant& value) override;
    HTREEITEM insertChild(HTREEITEM parent, int position) override;
    bool removeChild(HTREEITEM item) override;
    bool moveChild(HTREEITEM item, HTREEITEM parent, int position) override;
    // The insert-after handle that puts an item at `position` among `parent`'s children.
    static HTREEITEM AfterPosition(HTREEITEM parent, int position);

    bool valid(HTREEITEM item) const;
    bool validCell(HTREEITEM item, int column) const;
    // One recorded change to a cell: `change` writes it, the views are told of
    // `shownColumn` (-1: the whole row).
    BOOL changeCell(
        HTREEITEM item, int column, int shownColumn, const std::function<void(CTreeListItemTree&)>& change);
    void notifyCellChanged(HTREEITEM item, int column);
    void syncExpanded(HTREEITEM item);
    // Hides the items `keep` answers false for (given the item and whether a child
    // of it stays), asked for every item, children first.
    void applyRowFilter(const std::function<bool(HTREEITEM, bool)>& keep);
    void syncExpandedSubtree(HTREEITEM item);
    void onSelectionChanged(const QItemSelection& selected, const QItemSelection& deselected);
    void onCurrentChanged(const QModelIndex& current, const QModelIndex& previous);
    void onViewExpanded(const QModelIndex& index, bool expanded);
    void notifyDeleted(HTREEITEM item);
    void takeColumnEditors(HTREEITEM copy, const CTreeListCtrl& from);
    void endEditIfInside(HTREEITEM item);
    void applyStyles();
    CTreeListEditorBase* editorForMode(int mode, int column);
    void placeActiveEditor();
    NMITEMACTIVATE activateInfo(UINT code, const QPoint& pos, const QPoint& screenPos) const;
    // Recording: an inserted item, a changed cell, and a change to the rows made
    // outside any group (which the history cannot follow).
    void recordInserted(HTREEITEM item);
    std::optional<CTreeListCell> cellBeforeChange(HTREEITEM item, int column) const;
    void recordCellChange(HTREEITEM item, int column, std::optional<CTreeListCell> before);
    void forgetHistoryOutsideGroup();
    HTREEITEM replay(bool undo);
    // While rows are taken out the view does not follow the row the selection's
    // caret moves on to: scrolling there would lay out every row before they go, and
    // the view lays them out again afterwards.
    class HeldAutoScroll
    {
    public:
        explicit HeldAutoScroll(CTreeListCtrl& grid);
        ~HeldAutoScroll();
        HeldAutoScroll(const HeldAutoScroll&) = delete;
        HeldAutoScroll& operator=(const HeldAutoScroll&) = delete;

    private:
        CTreeListCtrl& m_grid;
        bool m_on;
    };

    CTreeListModel* m_model;
    std::unique_ptr<CTreeListHistory> m_history;
    CTreeListEdit* m_edit;
    CTreeListEdit* m_codeEdit;
    CTreeListCombo* m_combo;
    CTreeListEditBtn* m_editBtn;
    CTreeListEditorBase* m_active = nullptr;
    std::map<int, std::pair<int, int>> m_columnEditorIds;
    std::set<int> m_lineTypeColumns;
    bool m_lineTypeChanged = false;
    HTREEITEM m_dropTarget = nullptr;
    HTREEITEM m_pressItem = nullptr;
    int m_pressColumn = -1;
    QPoint m_pressPos;
    bool m_pressOnCaret = false;
    bool m_dragging = false;
    bool m_filterOn = false;
    int m_redrawLocks = 0;
    DWORD m_style = TVS_HASBUTTONS | TVS_HASLINES | TVS_LINESATROOT;
    DWORD m_exStyle = 0;
    COLORREF m_bkColor = 0xFFFFFF;
};
