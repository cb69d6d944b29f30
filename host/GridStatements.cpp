#include "GridStatements.h"

#include "CTreeListCombo.h"
#include "CTreeListCtrl.h"
#include "CTreeListEditorBase.h"
#include "ModalDriver.h"
#include "ScriptAnswers.h"
#include "ScriptWords.h"
#include "WidgetInput.h"

#include <QAbstractButton>
#include <QApplication>

namespace {
QString ColumnList(const CTreeListCtrl& grid)
{
    QStringList titles;
    for (int i = 0; i < grid.GetColumnCount(); ++i)
        titles.append(QStringLiteral("%1 %2").arg(i).arg(grid.GetColumnText(i)));
    return titles.join(QStringLiteral(", "));
}

// Every row of the tree below `parent`, shown or not, in display order.
void CollectItems(const CTreeListCtrl& grid, HTREEITEM parent, std::vector<HTREEITEM>& items)
{
    for (HTREEITEM child = grid.GetChildItem(parent); child; child = grid.GetNextSiblingItem(child)) {
        items.push_back(child);
        CollectItems(grid, child, items);
    }
}

QPoint CellCentre(const CTreeListCtrl& grid, HTREEITEM item, int column)
{
    return grid.GetSubItemRect(item, column).center();
}
} // namespace

GridStatements::GridStatements(std::function<void(const QString&)> report)
    : m_report(std::move(report))
{ }

CTreeListCtrl* GridStatements::ActiveGrid()
{
    QWidget* dialog = QApplication::activeModalWidget();
    if (!dialog)
        return nullptr;
    // By class name: the plug-in that made the grid carries its own copy of the
    // class, whose meta-object is not the host's.
    for (QTreeView* view : dialog->findChildren<QTreeView*>())
        if (view->inherits("CTreeListCtrl") && view->isVisible())
            return static_cast<CTreeListCtrl*>(view);
    return nullptr;
}

QString GridStatements::FullName(const CTreeListCtrl& grid, CTreeListItem* item)
{
    QStringList levels;
    for (HTREEITEM at = item; at && grid.GetItemLevel(at) >= 1; at = grid.GetParentItem(at))
        levels.prepend(grid.GetItemText(at, 0));
    return levels.join(u'&');
}

QString GridStatements::RowsDump(const CTreeListCtrl& grid)
{
    QStringList rows;
    for (int row = 0; row < grid.GetItemCount(); ++row) {
        HTREEITEM item = grid.GetItemFromRow(row);
        rows.append(QString(grid.GetItemLevel(item) - 1, u'>') + grid.GetItemText(item, 0));
    }
    return rows.join(QStringLiteral(" | "));
}

bool GridStatements::Resolve(
    const QString& rest, CTreeListItem*& item, int* column, QString& tail, QString& error)
{
    m_grid = ActiveGrid();
    if (!m_grid) {
        error = QStringLiteral("expected a dialog with a grid, found %1")
                    .arg(QApplication::activeModalWidget() ? QStringLiteral("a dialog without one")
                                                           : QStringLiteral("no dialog"));
        return false;
    }
    tail = rest;
    const QString name = ScriptWords::Take(tail);
    std::vector<HTREEITEM> items;
    CollectItems(*m_grid, nullptr, items);
    item = nullptr;
    for (HTREEITEM candidate : items)
        if (!item && FullName(*m_grid, candidate) == name)
            item = candidate;
    if (!item) {
        error = QStringLiteral("expected a row \"%1\", found rows %2").arg(name, RowsDump(*m_grid));
        return false;
    }
    return !column || ResolveColumn(tail, *column, error);
}

bool GridStatements::ResolveColumn(QString& tail, int& column, QString& error) const
{
    const QString word = ScriptWords::Take(tail);
    bool isNumber = false;
    column = word.toInt(&isNumber);
    if (!isNumber)
        for (column = m_grid->GetColumnCount() - 1; column >= 0; --column)
            if (m_grid->GetColumnText(column) == word)
                break;
    if (word.isEmpty() || column < 0 || column >= m_grid->GetColumnCount()) {
        error = QStringLiteral("expected a column \"%1\", found %2").arg(word, ColumnList(*m_grid));
        return false;
    }
    return true;
}

bool GridStatements::Execute(const QString& keyword, const QString& rest, QString& error, bool& handled)
{
    handled = true;
    if (keyword == QLatin1String("row") || keyword == QLatin1String("row-ctrl")
        || keyword == QLatin1String("row-shift") || keyword == QLatin1String("rclick"))
        return ClickRow(keyword, rest, error);
    if (keyword == QLatin1String("rclick-empty"))
        return RightClickEmpty(error);
    if (keyword == QLatin1String("dblclick"))
        return DoubleClick(rest, error);
    if (keyword == QLatin1String("drag") || keyword == QLatin1String("drag-ctrl")
        || keyword == QLatin1String("drag-out"))
        return Drag(keyword, rest, error);
    if (keyword == QLatin1String("expand") || keyword == QLatin1String("collapse"))
        return Expand(keyword == QLatin1String("expand"), rest, error);
    if (keyword == QLatin1String("edit"))
        return Edit(rest, error);
    if (keyword == QLatin1String("cell-button"))
        return CellButton(rest, error);
    if (keyword == QLatin1String("pick"))
        return Pick(rest, error);
    if (keyword == QLatin1String("expect-cell") || keyword == QLatin1String("expect-color")
        || keyword == QLatin1String("expect-back"))
        return ExpectCell(keyword, rest, error);
    if (keyword == QLatin1String("expect-rows"))
        return ExpectRows(rest, error);
    if (keyword == QLatin1String("expect-selected"))
        return ExpectSelected(rest, error);
    if (keyword == QLatin1String("rows"))
        return PrintRows(error);
    handled = false;
    return false;
}

bool GridStatements::ClickRow(const QString& keyword, const QString& rest, QString& error)
{
    HTREEITEM item = nullptr;
    QString tail;
    int column = 0;
    if (!Resolve(rest, item, nullptr, tail, error)
        || (!tail.isEmpty() && !ResolveColumn(tail, column, error)))
        return false;
    if (m_grid->GetRowFromItem(item) < 0) {
        error = QStringLiteral("expected the row \"%1\" shown, found it inside a collapsed row")
                    .arg(FullName(*m_grid, item));
        return false;
    }
    m_grid->EnsureVisible(item);
    const Qt::KeyboardModifiers modifiers = keyword == QLatin1String("row-ctrl") ? Qt::ControlModifier
        : keyword == QLatin1String("row-shift")                                  ? Qt::ShiftModifier
                                                                                 : Qt::NoModifier;
    const Qt::MouseButton button = keyword == QLatin1String("rclick") ? Qt::RightButton : Qt::LeftButton;
    WidgetInput::Click(m_grid->viewport(), CellCentre(*m_grid, item, column), button, modifiers);
    return true;
}

bool GridStatements::RightClickEmpty(QString& error)
{
    m_grid = ActiveGrid();
    if (!m_grid) {
        error = QStringLiteral("expected a dialog with a grid, found none");
        return false;
    }
    const int rows = m_grid->GetItemCount();
    const int below
        = rows == 0 ? 0 : m_grid->GetSubItemRect(m_grid->GetItemFromRow(rows - 1), 0).bottom() + 1;
    const QPoint empty(4, below + 4);
    if (!m_grid->viewport()->rect().contains(empty)) {
        error = QStringLiteral("expected an empty area below the rows, found the rows filling the grid");
        return false;
    }
    WidgetInput::Click(m_grid->viewport(), empty, Qt::RightButton);
    return true;
}

bool GridStatements::DoubleClick(const QString& rest, QString& error)
{
    HTREEITEM item = nullptr;
    int column = 0;
    QString tail;
    if (!Resolve(rest, item, &column, tail, error))
        return false;
    m_grid->EnsureVisible(item);
    WidgetInput::DoubleClick(m_grid->viewport(), CellCentre(*m_grid, item, column));
    return true;
}

bool GridStatements::Drag(const QString& keyword, const QString& rest, QString& error)
{
    HTREEITEM item = nullptr;
    QString tail;
    if (!Resolve(rest, item, nullptr, tail, error))
        return false;
    QWidget* viewport = m_grid->viewport();
    const QPoint from = CellCentre(*m_grid, item, 0);
    if (keyword == QLatin1String("drag-out")) {
        // A corner of the dialog away from the grid.
        QWidget* dialog = m_grid->window();
        const QRect gridRect(m_grid->mapTo(dialog, QPoint(0, 0)), m_grid->size());
        for (const QPoint& corner : { QPoint(4, 4), QPoint(dialog->width() - 5, 4),
                 QPoint(4, dialog->height() - 5), QPoint(dialog->width() - 5, dialog->height() - 5) }) {
            if (!gridRect.contains(corner)) {
                WidgetInput::Drag(viewport, from, viewport->mapFrom(dialog, corner), {});
                return true;
            }
        }
        error = QStringLiteral("expected room beside the grid, found the grid filling the dialog");
        return false;
    }
    HTREEITEM target = nullptr;
    QString unused;
    if (!Resolve(tail, target, nullptr, unused, error))
        return false;
    const Qt::KeyboardModifiers modifiers
        = keyword == QLatin1String("drag-ctrl") ? Qt::ControlModifier : Qt::NoModifier;
    WidgetInput::Drag(viewport, from, CellCentre(*m_grid, target, 0), modifiers);
    return true;
}

bool GridStatements::Expand(bool expand, const QString& rest, QString& error)
{
    HTREEITEM item = nullptr;
    QString tail;
    if (!Resolve(rest, item, nullptr, tail, error))
        return false;
    if (m_grid->IsItemExpanded(item) == expand) {
        m_report(QStringLiteral("\"%1\" is already %2").arg(rest, expand ? "expanded" : "collapsed"));
        return true;
    }
    // The button left of the row's text: found by the grid's own hit test.
    const QRect cell = m_grid->GetSubItemRect(item, 0);
    for (int x = 0; x < cell.right(); ++x) {
        UINT flags = 0;
        const QPoint at(x, cell.center().y());
        if (m_grid->HitTest(at, &flags) == item && (flags & TVHT_ONITEMBUTTON)) {
            WidgetInput::Click(m_grid->viewport(), at);
            return true;
        }
    }
    error = QStringLiteral("expected an expand button on \"%1\", found none").arg(rest);
    return false;
}

bool GridStatements::Edit(const QString& rest, QString& error)
{
    HTREEITEM item = nullptr;
    int column = 0;
    QString tail;
    if (!Resolve(rest, item, &column, tail, error))
        return false;
    m_grid->EnsureVisible(item);
    const QPoint at = CellCentre(*m_grid, item, column);
    // A click on the only selected row opens its cell; the first click selects it.
    const bool onlyCaret = m_grid->GetCaretItem() == item && m_grid->GetSelectedCount() == 1
        && (m_grid->GetItemState(item, LVIS_SELECTED) & LVIS_SELECTED);
    if (!onlyCaret)
        WidgetInput::Click(m_grid->viewport(), at);
    WidgetInput::Click(m_grid->viewport(), at);
    CTreeListEditorBase* editor = m_grid->GetActiveEditor();
    if (!editor || !editor->IsEditing()) {
        error = QStringLiteral("expected an editor in \"%1\" column %2, found none")
                    .arg(rest.section(u' ', 0, 0))
                    .arg(column);
        return false;
    }
    return true;
}

bool GridStatements::CellButton(const QString& rest, QString& error)
{
    m_grid = ActiveGrid();
    CTreeListEditorBase* editor = m_grid ? m_grid->GetActiveEditor() : nullptr;
    bool ok = false;
    const int id = rest.toInt(&ok);
    auto* button = editor && editor->IsEditing()
        ? qobject_cast<QAbstractButton*>(ModalDriver::FindControl(editor->widget(), id))
        : nullptr;
    if (!ok || !button || !button->isVisible()) {
        error = QStringLiteral("expected an open cell editor with the button %1, found %2")
                    .arg(rest,
                        editor && editor->IsEditing() ? QStringLiteral("an editor without it")
                                                      : QStringLiteral("no open editor"));
        return false;
    }
    WidgetInput::Click(button, button->rect().center());
    return true;
}

bool GridStatements::Pick(const QString& rest, QString& error)
{
    m_grid = ActiveGrid();
    CTreeListCombo* combo = m_grid ? m_grid->GetComboCtrl() : nullptr;
    if (!combo || !combo->IsEditing()) {
        error = QStringLiteral("expected an open drop-down editor, found none");
        return false;
    }
    return WidgetInput::ChooseInCombo(combo, rest, error);
}

bool GridStatements::ExpectCell(const QString& keyword, const QString& rest, QString& error)
{
    HTREEITEM item = nullptr;
    int column = 0;
    QString wanted;
    if (!Resolve(rest, item, &column, wanted, error))
        return false;
    const QString where = QStringLiteral("cell %1 of \"%2\"").arg(column).arg(FullName(*m_grid, item));
    if (keyword == QLatin1String("expect-cell")) {
        const QString found = m_grid->GetItemText(item, column);
        error = QStringLiteral("expected the %1 to read \"%2\", found \"%3\"").arg(where, wanted, found);
        return found == wanted;
    }
    COLORREF colour = 0;
    if (!ScriptAnswers::ParseColour(wanted, colour)) {
        error = QStringLiteral("%1 ROW COL R,G,B|0xBBGGRR").arg(keyword);
        return false;
    }
    const bool text = keyword == QLatin1String("expect-color");
    const COLORREF found = text ? m_grid->GetItemColor(item, column) : m_grid->GetItemBackColor(item, column);
    error = QStringLiteral("expected the %1 %2 colour %3, found %4")
                .arg(where, text ? QStringLiteral("text") : QStringLiteral("background"),
                    ScriptAnswers::ColourName(colour), ScriptAnswers::ColourName(found));
    return found == colour;
}

bool GridStatements::ExpectRows(const QString& rest, QString& error)
{
    m_grid = ActiveGrid();
    const QString found = m_grid ? RowsDump(*m_grid) : QStringLiteral("no grid");
    error = QStringLiteral("expected the rows \"%1\", found \"%2\"").arg(rest, found);
    return m_grid && found == rest;
}

bool GridStatements::ExpectSelected(const QString& rest, QString& error)
{
    m_grid = ActiveGrid();
    QStringList selected;
    for (int row = 0; m_grid && row < m_grid->GetItemCount(); ++row) {
        HTREEITEM item = m_grid->GetItemFromRow(row);
        if (m_grid->GetItemState(item, LVIS_SELECTED) & LVIS_SELECTED)
            selected.append(FullName(*m_grid, item));
    }
    const QString found = selected.join(QStringLiteral(" | "));
    error = QStringLiteral("expected the selected rows \"%1\", found \"%2\"").arg(rest, found);
    return m_grid && found == rest;
}

bool GridStatements::PrintRows(QString& error)
{
    m_grid = ActiveGrid();
    if (!m_grid) {
        error = QStringLiteral("expected a dialog with a grid, found none");
        return false;
    }
    QStringList lines { QStringLiteral("rows: ") + RowsDump(*m_grid) };
    for (int row = 0; row < m_grid->GetItemCount(); ++row) {
        HTREEITEM item = m_grid->GetItemFromRow(row);
        QStringList cells;
        for (int column = 0; column < m_grid->GetColumnCount(); ++column)
            cells.append(m_grid->GetItemText(item, column));
        lines.append(
            QString((m_grid->GetItemLevel(item) - 1) * 2 + 2, u' ') + cells.join(QStringLiteral(" | ")));
    }
    m_report(lines.join(u'\n'));
    return true;
}
