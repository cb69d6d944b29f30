#include "TreeViewRows.h"

#include <QApplication>
#include <QBrush>
#include <QColor>
#include <QItemSelectionModel>
#include <QTreeView>

TreeViewRows::TreeViewRows(QTreeView& view)
    : m_view(view)
{ }

QTreeView* TreeViewRows::ActiveView()
{
    QWidget* dialog = QApplication::activeModalWidget();
    if (!dialog)
        return nullptr;
    for (QTreeView* view : dialog->findChildren<QTreeView*>())
        if (view->isVisible() && view->window() == dialog && view->model())
            return view;
    return nullptr;
}

QString TreeViewRows::FullName(const QModelIndex& index)
{
    QStringList levels;
    for (QModelIndex at = index.siblingAtColumn(0); at.isValid(); at = at.parent())
        levels.prepend(at.data(Qt::DisplayRole).toString());
    return levels.join(u'&');
}

int TreeViewRows::Level(const QModelIndex& index)
{
    int level = 0;
    for (QModelIndex at = index; at.isValid(); at = at.parent())
        ++level;
    return level;
}

QModelIndex TreeViewRows::Find(const QString& fullName) const
{
    return m_view.model() ? FindBelow(QModelIndex(), QString(), fullName) : QModelIndex();
}

// Only rows whose name starts the wanted one can hold it below them.
QModelIndex TreeViewRows::FindBelow(
    const QModelIndex& parent, const QString& prefix, const QString& fullName) const
{
    const QAbstractItemModel& model = *m_view.model();
    for (int row = 0; row < model.rowCount(parent); ++row) {
        const QModelIndex child = model.index(row, 0, parent);
        const QString name = prefix + child.data(Qt::DisplayRole).toString();
        if (name == fullName)
            return child;
        const QString below = name + u'&';
        if (fullName.startsWith(below)) {
            const QModelIndex found = FindBelow(child, below, fullName);
            if (found.isValid())
                return found;
        }
    }
    return QModelIndex();
}

void TreeViewRows::CollectShown(const QModelIndex& parent, std::vector<QModelIndex>& rows) const
{
    const QAbstractItemModel& model = *m_view.model();
    for (int row = 0; row < model.rowCount(parent); ++row) {
        if (m_view.isRowHidden(row, parent))
            continue;
        const QModelIndex child = model.index(row, 0, parent);
        rows.push_back(child);
        if (m_view.isExpanded(child))
            CollectShown(child, rows);
    }
}

std::vector<QModelIndex> TreeViewRows::ShownRows() const
{
    std::vector<QModelIndex> rows;
    if (m_view.model())
        CollectShown(QModelIndex(), rows);
    return rows;
}

bool TreeViewRows::IsShown(const QModelIndex& index) const
{
    const QModelIndex row = index.siblingAtColumn(0);
    for (QModelIndex at = row; at.isValid(); at = at.parent()) {
        const QModelIndex parent = at.parent();
        if (m_view.isRowHidden(at.row(), parent) || (parent.isValid() && !m_view.isExpanded(parent)))
            return false;
    }
    return row.isValid();
}

QString TreeViewRows::Dump() const
{
    QStringList rows;
    for (const QModelIndex& row : ShownRows())
        rows.append(QString(Level(row) - 1, u'>') + row.data(Qt::DisplayRole).toString());
    return rows.join(QStringLiteral(" | "));
}

int TreeViewRows::ColumnCount() const
{
    return m_view.model() ? m_view.model()->columnCount() : 0;
}

QString TreeViewRows::ColumnTitle(int column) const
{
    return m_view.model() ? m_view.model()->headerData(column, Qt::Horizontal).toString() : QString();
}

QString TreeViewRows::Text(const QModelIndex& index, int column) const
{
    return index.siblingAtColumn(column).data(Qt::DisplayRole).toString();
}

COLORREF TreeViewRows::Colour(const QModelIndex& index, int column, int role) const
{
    const QVariant value = index.siblingAtColumn(column).data(role);
    QColor colour;
    if (value.typeId() == QMetaType::QBrush)
        colour = value.value<QBrush>().color();
    else if (value.typeId() == QMetaType::QColor)
        colour = value.value<QColor>();
    return colour.isValid() ? RGB(BYTE(colour.red()), BYTE(colour.green()), BYTE(colour.blue())) : 0;
}

QRect TreeViewRows::CellRect(const QModelIndex& index, int column) const
{
    return IsShown(index) ? m_view.visualRect(index.siblingAtColumn(column)) : QRect();
}

// The button sits in the last indentation step left of the row's text.
std::optional<QPoint> TreeViewRows::ExpandButton(const QModelIndex& index) const
{
    const QRect text = CellRect(index, 0);
    const int left = text.left() - m_view.indentation();
    if (text.isEmpty() || left < 0 || !m_view.model()->hasChildren(index.siblingAtColumn(0)))
        return std::nullopt;
    return QPoint(left + m_view.indentation() / 2, text.center().y());
}

// Cell by cell: QItemSelectionModel::rowIntersectsSelection gives up at the first
// range under another parent, so it misses rows of a selection spread over levels.
std::vector<QModelIndex> TreeViewRows::SelectedRows() const
{
    std::vector<QModelIndex> selected;
    const QItemSelectionModel* selection = m_view.selectionModel();
    const int columns = ColumnCount();
    for (const QModelIndex& row : ShownRows()) {
        for (int column = 0; selection && column < columns; ++column) {
            if (selection->isSelected(row.siblingAtColumn(column))) {
                selected.push_back(row);
                break;
            }
        }
    }
    return selected;
}

bool TreeViewRows::IsOnlySelectedCurrent(const QModelIndex& index) const
{
    const QItemSelectionModel* selection = m_view.selectionModel();
    const QModelIndex row = index.siblingAtColumn(0);
    const std::vector<QModelIndex> selected = SelectedRows();
    return selection && selection->currentIndex().siblingAtColumn(0) == row && selected.size() == 1
        && selected.front() == row;
}

QWidget* TreeViewRows::OpenEditor() const
{
    const QList<QWidget*> children = m_view.viewport()->findChildren<QWidget*>(Qt::FindDirectChildrenOnly);
    QWidget* first = nullptr;
    for (QWidget* child : children) {
        if (!child->isVisible())
            continue;
        if (child->isAncestorOf(QApplication::focusWidget()) || child == QApplication::focusWidget())
            return child;
        if (!first)
            first = child;
    }
    return first;
}

void TreeViewRows::Reveal(const QModelIndex& index)
{
    std::vector<QModelIndex> closed;
    for (QModelIndex parent = index.parent(); parent.isValid(); parent = parent.parent())
        if (!m_view.isExpanded(parent))
            closed.push_back(parent);
    for (auto it = closed.rbegin(); it != closed.rend(); ++it)
        m_view.expand(*it);
    m_view.scrollTo(index);
}
