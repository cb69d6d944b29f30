#pragma once

// What the script statements read off a dialog's tree view, through Qt's generic
// item-view classes only: the view, its model and roles, its selection model and
// the widgets in its viewport. The host knows no plug-in's own view class, so any
// QTreeView (a plug-in's grid, a plain QTreeWidget) is worked the same way.
//
// Rows are named by their full name, the texts of column 0 from the top level down
// joined by "&". "Shown" rows are those a person sees: not hidden, every ancestor
// expanded, in display order.
#include "WinTypes.h"

#include <QModelIndex>
#include <QPoint>
#include <QString>

#include <optional>
#include <vector>

class QTreeView;
class QWidget;

class TreeViewRows
{
public:
    explicit TreeViewRows(QTreeView& view);

    // The first visible tree view of the innermost modal dialog (not one of a window
    // of its own inside it), or null.
    static QTreeView* ActiveView();

    // The row (column 0) with that full name, shown or not, first in tree order;
    // invalid when there is none.
    QModelIndex Find(const QString& fullName) const;
    static QString FullName(const QModelIndex& index);
    // Top-level rows are level 1.
    static int Level(const QModelIndex& index);
    std::vector<QModelIndex> ShownRows() const;
    bool IsShown(const QModelIndex& index) const;
    // The shown rows as "公共照明 | >WL1 | >WL2", one ">" a level below the top.
    QString Dump() const;

    int ColumnCount() const;
    QString ColumnTitle(int column) const;
    QString Text(const QModelIndex& index, int column) const;
    // The cell's text (Qt::ForegroundRole) or background (Qt::BackgroundRole) colour
    // as 0x00BBGGRR; a cell without a colour of its own reads 0x000000.
    COLORREF Colour(const QModelIndex& index, int column, int role) const;
    // In the viewport's coordinates; empty when the row is not shown.
    QRect CellRect(const QModelIndex& index, int column) const;
    // The middle of the row's expand button, left of its text; none when the row has
    // no children or no room for a button.
    std::optional<QPoint> ExpandButton(const QModelIndex& index) const;

    // The shown rows with a selected cell, in display order.
    std::vector<QModelIndex> SelectedRows() const;
    // Whether the row holds the current cell and is the only one selected.
    bool IsOnlySelectedCurrent(const QModelIndex& index) const;
    // The open in-place editor: the viewport's visible child holding the keyboard,
    // else its first visible child; null when none is open.
    QWidget* OpenEditor() const;

    // Expands every collapsed ancestor and scrolls the row into view.
    void Reveal(const QModelIndex& index);

private:
    void CollectShown(const QModelIndex& parent, std::vector<QModelIndex>& rows) const;
    QModelIndex FindBelow(const QModelIndex& parent, const QString& prefix, const QString& fullName) const;

    QTreeView& m_view;
};
