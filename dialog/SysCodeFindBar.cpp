#include "SysCodeFindBar.h"

#include "CTreeListCtrl.h"
#include "CTreeListItem.h"
#include "CtrlId.h"
#include "Resource.h"

#include <QHeaderView>
#include <QLineEdit>
#include <QScrollBar>
#include <QShortcut>
#include <QStringMatcher>
#include <QWidget>

#include <algorithm>
#include <utility>

SysCodeFindBar::SysCodeFindBar(
    QWidget& dialog, CTreeListCtrl& grid, std::function<int()> remarkColumn, std::function<int()> pipeColumn)
    : QObject(&dialog)
    , m_dialog(dialog)
    , m_grid(grid)
    , m_remarkColumn(std::move(remarkColumn))
    , m_pipeColumn(std::move(pipeColumn))
{
    m_field = new QLineEdit(&dialog);
    SetDlgCtrlID(m_field, IDC_FIND_TEXT);
    m_field->setPlaceholderText(QStringLiteral("查找：编号、备注、管线信息"));
    m_field->setClearButtonEnabled(true);
    m_field->hide();
    auto* open = new QShortcut(QKeySequence(Qt::CTRL | Qt::Key_F), &dialog);
    connect(open, &QShortcut::activated, this, &SysCodeFindBar::Open);
    auto* next = new QShortcut(QKeySequence(Qt::Key_F3), &dialog);
    connect(next, &QShortcut::activated, this, &SysCodeFindBar::Next);
    // In the field, Enter steps to the next code and Escape closes the field: neither
    // reaches the dialog's OK or Cancel.
    const auto fieldKey = [this](QKeySequence keys, void (SysCodeFindBar::*handler)()) {
        auto* shortcut = new QShortcut(keys, m_field);
        shortcut->setContext(Qt::WidgetShortcut);
        connect(shortcut, &QShortcut::activated, this, handler);
    };
    fieldKey(QKeySequence(Qt::Key_Return), &SysCodeFindBar::Next);
    fieldKey(QKeySequence(Qt::Key_Enter), &SysCodeFindBar::Next);
    fieldKey(QKeySequence(Qt::Key_Escape), &SysCodeFindBar::Close);
    connect(m_field, &QLineEdit::textChanged, this, &SysCodeFindBar::Apply);
}

bool SysCodeFindBar::IsOpen() const
{
    return m_field->isVisible();
}

// Over the grid's top right corner, below the column titles: no control moves.
void SysCodeFindBar::Place()
{
    const QRect grid = m_grid.geometry();
    const int width = std::min(240, grid.width() / 2);
    const int scrollBar = m_grid.verticalScrollBar()->isVisible() ? m_grid.verticalScrollBar()->width() : 0;
    m_field->setGeometry(grid.right() - width - scrollBar - 2, grid.top() + m_grid.header()->height() + 2,
        width, m_field->sizeHint().height());
    m_field->raise();
}

void SysCodeFindBar::RememberExpanded()
{
    m_expanded.clear();
    const auto remember = [&](auto&& self, HTREEITEM parent) -> void {
        for (HTREEITEM c = m_grid.GetChildItem(parent); c; c = m_grid.GetNextSiblingItem(c)) {
            if (m_grid.IsItemExpanded(c))
                m_expanded.push_back(c);
            self(self, c);
        }
    };
    remember(remember, m_grid.GetRootItem());
}

void SysCodeFindBar::Open()
{
    if (!m_field->isVisible()) {
        RememberExpanded();
        m_index.Update(m_grid, m_remarkColumn(), m_pipeColumn());
        Place();
        m_field->show();
    }
    m_field->setFocus();
    m_field->selectAll();
}

// Text without letters that have a case (Chinese, digits) is matched exactly, which
// is much quicker than folding every character it is compared with.
QStringMatcher SysCodeFindBar::Matcher(const QString& text)
{
    const bool caseless = text.toLower() == text && text.toUpper() == text;
    return QStringMatcher(text, caseless ? Qt::CaseSensitive : Qt::CaseInsensitive);
}

// The texts searched are short: a plain search of each is quicker than a prepared one.
bool SysCodeFindBar::Holds(const QStringMatcher& matcher, const QString& value)
{
    return value.contains(matcher.pattern(), matcher.caseSensitivity());
}

bool SysCodeFindBar::RowMatches(HTREEITEM row, const QStringMatcher& matcher, int remarkColumn) const
{
    if (Holds(matcher, row->cell(0).text)
        || (remarkColumn >= 0 && Holds(matcher, row->cell(remarkColumn).text)))
        return true;
    const int pipe = m_pipeColumn();
    return pipe >= 0 && Holds(matcher, m_grid.GetItemValue(row, pipe).toString());
}

void SysCodeFindBar::Apply(const QString& text)
{
    m_grid.SetRedraw(false);
    if (text.isEmpty()) {
        m_grid.SetRowFilter({});
    } else {
        const QStringMatcher matcher = Matcher(text);
        m_index.Update(m_grid, m_remarkColumn(), m_pipeColumn());
        m_grid.SetRowFilterItems(m_index.Holding(matcher.pattern(), matcher.caseSensitivity()));
        // Every code kept is shown: its parents open. The walk reads the grid's items
        // straight: on a large specialty its checked accessors cost more than the walk.
        const auto open = [&](auto&& self, const CTreeListItem* parent) -> void {
            for (CTreeListItem* c : parent->children()) {
                if (c->isFilteredOut() || c->children().empty())
                    continue;
                if (!c->isExpanded())
                    m_grid.Expand(c, TVE_EXPAND);
                self(self, c);
            }
        };
        open(open, m_grid.GetRootItem());
    }
    m_grid.SetRedraw(true);
}

void SysCodeFindBar::Reapply()
{
    if (IsOpen())
        Apply(m_field->text());
}

// The next shown code that holds the text, after the current row, from the top again
// after the last.
void SysCodeFindBar::Next()
{
    const QString text = m_field->isVisible() ? m_field->text() : QString();
    const int count = m_grid.GetItemCount();
    if (text.isEmpty() || count == 0)
        return;
    const int from = m_grid.GetRowFromItem(m_grid.GetCaretItem());
    const QStringMatcher matcher = Matcher(text);
    const int remark = m_remarkColumn();
    for (int step = 1; step <= count; ++step) {
        HTREEITEM row = m_grid.GetItemFromRow((from + step) % count);
        if (row && RowMatches(row, matcher, remark)) {
            m_grid.SelectItem(row);
            m_grid.EnsureVisible(row);
            return;
        }
    }
}

void SysCodeFindBar::Close()
{
    m_grid.SetRedraw(false);
    m_grid.SetRowFilter({});
    const auto collapse = [&](auto&& self, HTREEITEM parent) -> void {
        for (HTREEITEM c = m_grid.GetChildItem(parent); c; c = m_grid.GetNextSiblingItem(c)) {
            self(self, c);
            if (m_grid.IsItemExpanded(c))
                m_grid.Expand(c, TVE_COLLAPSE);
        }
    };
    collapse(collapse, m_grid.GetRootItem());
    // Rows deleted meanwhile are no longer the grid's: the grid answers -1 for them.
    for (HTREEITEM row : m_expanded) {
        if (m_grid.GetItemLevel(row) > 0)
            m_grid.Expand(row, TVE_EXPAND);
    }
    m_expanded.clear();
    m_index.Clear();
    m_grid.SetRedraw(true);
    m_field->hide();
    if (HTREEITEM caret = m_grid.GetCaretItem())
        m_grid.EnsureVisible(caret);
    m_grid.setFocus();
}

void SysCodeFindBar::CloseIfOpen()
{
    if (IsOpen())
        Close();
}
