#include "GridStatements.h"

#include "ModalDriver.h"
#include "ScriptAnswers.h"
#include "ScriptWords.h"
#include "TreeViewRows.h"
#include "WidgetInput.h"

#include <QAbstractButton>
#include <QApplication>
#include <QComboBox>
#include <QTreeView>

namespace {
QString ColumnList(const TreeViewRows& rows)
{
    QStringList titles;
    for (int i = 0; i < rows.ColumnCount(); ++i)
        titles.append(QStringLiteral("%1 %2").arg(i).arg(rows.ColumnTitle(i)));
    return titles.join(QStringLiteral(", "));
}

QPoint CellCentre(const TreeViewRows& rows, const QModelIndex& row, int column)
{
    return rows.CellRect(row, column).center();
}

// The drop-down of the open editor: the editor itself or a part of it.
QComboBox* EditorCombo(QWidget* editor)
{
    if (!editor)
        return nullptr;
    if (auto* combo = qobject_cast<QComboBox*>(editor))
        return combo;
    return editor->findChild<QComboBox*>();
}
} // namespace

GridStatements::GridStatements(std::function<void(const QString&)> report)
    : m_report(std::move(report))
{ }

bool GridStatements::Resolve(
    const QString& rest, QModelIndex& row, int* column, QString& tail, QString& error)
{
    m_grid = TreeViewRows::ActiveView();
    if (!m_grid) {
        error = QStringLiteral("expected a dialog with a grid, found %1")
                    .arg(QApplication::activeModalWidget() ? QStringLiteral("a dialog without one")
                                                           : QStringLiteral("no dialog"));
        return false;
    }
    tail = rest;
    const QString name = ScriptWords::Take(tail);
    const TreeViewRows rows(*m_grid);
    row = rows.Find(name);
    if (!row.isValid()) {
        error = QStringLiteral("expected a row \"%1\", found rows %2").arg(name, rows.Dump());
        return false;
    }
    return !column || ResolveColumn(tail, *column, error);
}

bool GridStatements::ResolveColumn(QString& tail, int& column, QString& error) const
{
    const TreeViewRows rows(*m_grid);
    const QString word = ScriptWords::Take(tail);
    bool isNumber = false;
    column = word.toInt(&isNumber);
    if (!isNumber)
        for (column = rows.ColumnCount() - 1; column >= 0; --column)
            if (rows.ColumnTitle(column) == word)
                break;
    if (word.isEmpty() || column < 0 || column >= rows.ColumnCount()) {
        error = QStringLiteral("expected a column \"%1\", found %2").arg(word, ColumnList(rows));
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
    QModelIndex row;
    QString tail;
    int column = 0;
    if (!Resolve(rest, row, nullptr, tail, error) || (!tail.isEmpty() && !ResolveColumn(tail, column, error)))
        return false;
    TreeViewRows rows(*m_grid);
    if (!rows.IsShown(row)) {
        error = QStringLiteral("expected the row \"%1\" shown, found it inside a collapsed row")
                    .arg(TreeViewRows::FullName(row));
        return false;
    }
    rows.Reveal(row);
    const Qt::KeyboardModifiers modifiers = keyword == QLatin1String("row-ctrl") ? Qt::ControlModifier
        : keyword == QLatin1String("row-shift")                                  ? Qt::ShiftModifier
                                                                                 : Qt::NoModifier;
    const Qt::MouseButton button = keyword == QLatin1String("rclick") ? Qt::RightButton : Qt::LeftButton;
    WidgetInput::Click(m_grid->viewport(), CellCentre(rows, row, column), button, modifiers);
    return true;
}

bool GridStatements::RightClickEmpty(QString& error)
{
    m_grid = TreeViewRows::ActiveView();
    if (!m_grid) {
        error = QStringLiteral("expected a dialog with a grid, found none");
        return false;
    }
    const TreeViewRows rows(*m_grid);
    const std::vector<QModelIndex> shown = rows.ShownRows();
    const int below = shown.empty() ? 0 : rows.CellRect(shown.back(), 0).bottom() + 1;
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
    QModelIndex row;
    int column = 0;
    QString tail;
    if (!Resolve(rest, row, &column, tail, error))
        return false;
    TreeViewRows rows(*m_grid);
    rows.Reveal(row);
    WidgetInput::DoubleClick(m_grid->viewport(), CellCentre(rows, row, column));
    return true;
}

bool GridStatements::Drag(const QString& keyword, const QString& rest, QString& error)
{
    QModelIndex row;
    QString tail;
    if (!Resolve(rest, row, nullptr, tail, error))
        return false;
    const TreeViewRows rows(*m_grid);
    QWidget* viewport = m_grid->viewport();
    const QPoint from = CellCentre(rows, row, 0);
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
    QModelIndex target;
    QString unused;
    if (!Resolve(tail, target, nullptr, unused, error))
        return false;
    const Qt::KeyboardModifiers modifiers
        = keyword == QLatin1String("drag-ctrl") ? Qt::ControlModifier : Qt::NoModifier;
    WidgetInput::Drag(viewport, from, CellCentre(rows, target, 0), modifiers);
    return true;
}

bool GridStatements::Expand(bool expand, const QString& rest, QString& error)
{
    QModelIndex row;
    QString tail;
    if (!Resolve(rest, row, nullptr, tail, error))
        return false;
    if (m_grid->isExpanded(row) == expand) {
        m_report(QStringLiteral("\"%1\" is already %2").arg(rest, expand ? "expanded" : "collapsed"));
        return true;
    }
    const std::optional<QPoint> button = TreeViewRows(*m_grid).ExpandButton(row);
    if (!button) {
        error = QStringLiteral("expected an expand button on \"%1\", found none").arg(rest);
        return false;
    }
    WidgetInput::Click(m_grid->viewport(), *button);
    return true;
}

bool GridStatements::Edit(const QString& rest, QString& error)
{
    QModelIndex row;
    int column = 0;
    QString tail;
    if (!Resolve(rest, row, &column, tail, error))
        return false;
    TreeViewRows rows(*m_grid);
    rows.Reveal(row);
    const QPoint at = CellCentre(rows, row, column);
    // A click on the only selected row opens its cell; the first click selects it.
    if (!rows.IsOnlySelectedCurrent(row))
        WidgetInput::Click(m_grid->viewport(), at);
    WidgetInput::Click(m_grid->viewport(), at);
    if (!rows.OpenEditor()) {
        error = QStringLiteral("expected an editor in \"%1\" column %2, found none")
                    .arg(rest.section(u' ', 0, 0))
                    .arg(column);
        return false;
    }
    return true;
}

bool GridStatements::CellButton(const QString& rest, QString& error)
{
    m_grid = TreeViewRows::ActiveView();
    QWidget* editor = m_grid ? TreeViewRows(*m_grid).OpenEditor() : nullptr;
    bool ok = false;
    const int id = rest.toInt(&ok);
    auto* button = editor ? qobject_cast<QAbstractButton*>(ModalDriver::FindControl(editor, id)) : nullptr;
    if (!ok || !button || !button->isVisible()) {
        error = QStringLiteral("expected an open cell editor with the button %1, found %2")
                    .arg(rest,
                        editor ? QStringLiteral("an editor without it") : QStringLiteral("no open editor"));
        return false;
    }
    WidgetInput::Click(button, button->rect().center());
    return true;
}

bool GridStatements::Pick(const QString& rest, QString& error)
{
    m_grid = TreeViewRows::ActiveView();
    QComboBox* combo = m_grid ? EditorCombo(TreeViewRows(*m_grid).OpenEditor()) : nullptr;
    if (!combo) {
        error = QStringLiteral("expected an open drop-down editor, found none");
        return false;
    }
    return WidgetInput::ChooseInCombo(combo, rest, error);
}

bool GridStatements::ExpectCell(const QString& keyword, const QString& rest, QString& error)
{
    QModelIndex row;
    int column = 0;
    QString wanted;
    if (!Resolve(rest, row, &column, wanted, error))
        return false;
    const TreeViewRows rows(*m_grid);
    const QString where = QStringLiteral("cell %1 of \"%2\"").arg(column).arg(TreeViewRows::FullName(row));
    if (keyword == QLatin1String("expect-cell")) {
        const QString found = rows.Text(row, column);
        error = QStringLiteral("expected the %1 to read \"%2\", found \"%3\"").arg(where, wanted, found);
        return found == wanted;
    }
    COLORREF colour = 0;
    if (!ScriptAnswers::ParseColour(wanted, colour)) {
        error = QStringLiteral("%1 ROW COL R,G,B|0xBBGGRR").arg(keyword);
        return false;
    }
    const bool text = keyword == QLatin1String("expect-color");
    const COLORREF found = rows.Colour(row, column, text ? Qt::ForegroundRole : Qt::BackgroundRole);
    error = QStringLiteral("expected the %1 %2 colour %3, found %4")
                .arg(where, text ? QStringLiteral("text") : QStringLiteral("background"),
                    ScriptAnswers::ColourName(colour), ScriptAnswers::ColourName(found));
    return found == colour;
}

bool GridStatements::ExpectRows(const QString& rest, QString& error)
{
    m_grid = TreeViewRows::ActiveView();
    const QString found = m_grid ? TreeViewRows(*m_grid).Dump() : QStringLiteral("no grid");
    error = QStringLiteral("expected the rows \"%1\", found \"%2\"").arg(rest, found);
    return m_grid && found == rest;
}

bool GridStatements::ExpectSelected(const QString& rest, QString& error)
{
    m_grid = TreeViewRows::ActiveView();
    QStringList selected;
    if (m_grid)
        for (const QModelIndex& row : TreeViewRows(*m_grid).SelectedRows())
            selected.append(TreeViewRows::FullName(row));
    const QString found = selected.join(QStringLiteral(" | "));
    error = QStringLiteral("expected the selected rows \"%1\", found \"%2\"").arg(rest, found);
    return m_grid && found == rest;
}

bool GridStatements::PrintRows(QString& error)
{
    m_grid = TreeViewRows::ActiveView();
    if (!m_grid) {
        error = QStringLiteral("expected a dialog with a grid, found none");
        return false;
    }
    const TreeViewRows rows(*m_grid);
    QStringList lines { QStringLiteral("rows: ") + rows.Dump() };
    for (const QModelIndex& row : rows.ShownRows()) {
        QStringList cells;
        for (int column = 0; column < rows.ColumnCount(); ++column)
            cells.append(rows.Text(row, column));
        lines.append(
            QString((TreeViewRows::Level(row) - 1) * 2 + 2, u' ') + cells.join(QStringLiteral(" | ")));
    }
    m_report(lines.join(u'\n'));
    return true;
}
