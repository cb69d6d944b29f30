#pragma once

// Script statements on the grid of the active dialog (its tree view, whatever class
// the plug-in made it of): clicks on rows, context menus, double clicks, drags,
// expanding, in-place editing and the checks of cells, rows and the selection. Rows
// are named by their full name, levels joined by "&" ("公共照明&WL1"); columns by
// number or title. Everything is read through the view's model and roles, and done
// with real mouse events on the view.
#include <QString>
#include <QStringList>

#include <functional>

class QModelIndex;
class QTreeView;

class GridStatements
{
public:
    explicit GridStatements(std::function<void(const QString&)> report);

    // Runs the statement when it is one of the grid's: `handled` tells whether it was.
    bool Execute(const QString& keyword, const QString& rest, QString& error, bool& handled);

private:
    bool ClickRow(const QString& keyword, const QString& rest, QString& error);
    bool DoubleClick(const QString& rest, QString& error);
    bool RightClickEmpty(QString& error);
    bool Drag(const QString& keyword, const QString& rest, QString& error);
    bool Expand(bool expand, const QString& rest, QString& error);
    bool Edit(const QString& rest, QString& error);
    bool CellButton(const QString& rest, QString& error);
    bool Pick(const QString& rest, QString& error);
    bool ExpectCell(const QString& keyword, const QString& rest, QString& error);
    bool ExpectRows(const QString& rest, QString& error);
    bool ExpectSelected(const QString& rest, QString& error);
    bool PrintRows(QString& error);

    // Finds the grid, the row and (when `column` is not null) the column named at the
    // start of `rest`; what follows them comes back in `tail`.
    bool Resolve(const QString& rest, QModelIndex& row, int* column, QString& tail, QString& error);
    // The column (number or title) at the start of `tail`, taken off it.
    bool ResolveColumn(QString& tail, int& column, QString& error) const;

    std::function<void(const QString&)> m_report;
    QTreeView* m_grid = nullptr;
};
