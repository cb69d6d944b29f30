// Finding codes: Ctrl+F opens a field over the grid's corner; what is typed keeps
// the codes whose name, remark or pipeline information holds the text (any letter
// case), with their parents; Enter or F3 steps through them; Escape shows every code
// again, opened and closed as before.
#include "SysCodeDlg.h"

#include "CTreeListItem.h"
#include "CtrlId.h"
#include "Resource.h"
#include "SysCodeColumns.h"

#include <QEvent>
#include <QHeaderView>
#include <QLineEdit>
#include <QScrollBar>
#include <QShortcut>
#include <QStringMatcher>

void SysCodeDlg::ConnectFind()
{
    m_findEdit = new QLineEdit(this);
    SetDlgCtrlID(m_findEdit, IDC_FIND_TEXT);
    m_findEdit->setPlaceholderText(QStringLiteral("查找：编号、备注、管线信息"));
    m_findEdit->setClearButtonEnabled(true);
    m_findEdit->hide();
    auto* open = new QShortcut(QKeySequence(Qt::CTRL | Qt::Key_F), this);
    connect(open, &QShortcut::activated, this, &SysCodeDlg::OpenFind);
    auto* next = new QShortcut(QKeySequence(Qt::Key_F3), this);
    connect(next, &QShortcut::activated, this, &SysCodeDlg::FindNext);
    // In the field, Enter steps to the next code and Escape closes the field: neither
    // reaches the dialog's OK or Cancel.
    const auto fieldKey = [this](QKeySequence keys, void (SysCodeDlg::*handler)()) {
        auto* shortcut = new QShortcut(keys, m_findEdit);
        shortcut->setContext(Qt::WidgetShortcut);
        connect(shortcut, &QShortcut::activated, this, handler);
    };
    fieldKey(QKeySequence(Qt::Key_Return), &SysCodeDlg::FindNext);
    fieldKey(QKeySequence(Qt::Key_Enter), &SysCodeDlg::FindNext);
    fieldKey(QKeySequence(Qt::Key_Escape), &SysCodeDlg::CloseFind);
    connect(m_findEdit, &QLineEdit::textChanged, this, &SysCodeDlg::ApplyFind);
}

// Over the grid's top right corner, below the column titles: no control moves.
void SysCodeDlg::PlaceFind()
{
    const QRect grid = m_tree.geometry();
    const int width = std::min(240, grid.width() / 2);
    const int scrollBar = m_tree.verticalScrollBar()->isVisible() ? m_tree.verticalScrollBar()->width() : 0;
    m_findEdit->setGeometry(grid.right() - width - scrollBar - 2, grid.top() + m_tree.header()->height() + 2,
        width, m_findEdit->sizeHint().height());
    m_findEdit->raise();
}

void SysCodeDlg::OpenFind()
{
    if (!m_findEdit->isVisible()) {
        m_findExpanded.clear();
        const auto remember = [&](auto&& self, HTREEITEM parent) -> void {
            for (HTREEITEM c = m_tree.GetChildItem(parent); c; c = m_tree.GetNextSiblingItem(c)) {
                if (m_tree.IsItemExpanded(c))
                    m_findExpanded.push_back(c);
                self(self, c);
            }
        };
        remember(remember, m_tree.GetRootItem());
        m_findIndex.Update(m_tree, SysCodeVisibleColumn(kColRemark, IsElectrical()),
            SysCodeVisibleColumn(kColPipeInfo, IsElectrical()));
        PlaceFind();
        m_findEdit->show();
    }
    m_findEdit->setFocus();
    m_findEdit->selectAll();
}

// A plain substring, any letter case. Text without letters that have a case
// (Chinese, digits) is matched exactly, which is much quicker than folding every
// character it is compared with. The texts searched are short: a plain search of
// each is quicker than a prepared one.
QStringMatcher SysCodeDlg::FindMatcher(const QString& text)
{
    const bool caseless = text.toLower() == text && text.toUpper() == text;
    return QStringMatcher(text, caseless ? Qt::CaseSensitive : Qt::CaseInsensitive);
}

namespace {
struct FindText
{
    QString text;
    Qt::CaseSensitivity cs;

    explicit FindText(const QStringMatcher& matcher)
        : text(matcher.pattern())
        , cs(matcher.caseSensitivity())
    { }
    bool In(const QString& value) const { return value.contains(text, cs); }
};

// Whether the row's name or remark holds the text.
bool CellsHold(const CTreeListItem* row, const FindText& text, int remarkColumn)
{
    return text.In(row->cell(0).text) || (remarkColumn >= 0 && text.In(row->cell(remarkColumn).text));
}

} // namespace

bool SysCodeDlg::RowMatches(HTREEITEM row, const QStringMatcher& matcher, int remarkColumn) const
{
    const FindText text(matcher);
    if (CellsHold(row, text, remarkColumn))
        return true;
    return text.In(GetRowInfo(row));
}

void SysCodeDlg::ApplyFind(const QString& text)
{
    m_tree.SetRedraw(false);
    if (text.isEmpty()) {
        m_tree.SetRowFilter({});
    } else {
        const QStringMatcher matcher = FindMatcher(text);
        m_findIndex.Update(m_tree, SysCodeVisibleColumn(kColRemark, IsElectrical()),
            SysCodeVisibleColumn(kColPipeInfo, IsElectrical()));
        m_tree.SetRowFilterItems(m_findIndex.Holding(matcher.pattern(), matcher.caseSensitivity()));
        // Every code kept is shown: its parents open. The walk reads the grid's items
        // straight: on a large specialty its checked accessors cost more than the walk.
        const auto open = [&](auto&& self, const CTreeListItem* parent) -> void {
            for (CTreeListItem* c : parent->children()) {
                if (c->isFilteredOut() || c->children().empty())
                    continue;
                if (!c->isExpanded())
                    m_tree.Expand(c, TVE_EXPAND);
                self(self, c);
            }
        };
        open(open, m_tree.GetRootItem());
    }
    m_tree.SetRedraw(true);
}

// The next shown code that holds the text, after the current row, from the top again
// after the last.
void SysCodeDlg::FindNext()
{
    const QString text = m_findEdit->isVisible() ? m_findEdit->text() : QString();
    const int count = m_tree.GetItemCount();
    if (text.isEmpty() || count == 0)
        return;
    const int from = m_tree.GetRowFromItem(m_tree.GetCaretItem());
    const QStringMatcher matcher = FindMatcher(text);
    const int remark = SysCodeVisibleColumn(kColRemark, IsElectrical());
    for (int step = 1; step <= count; ++step) {
        HTREEITEM row = m_tree.GetItemFromRow((from + step) % count);
        if (row && RowMatches(row, matcher, remark)) {
            m_tree.SelectItem(row);
            m_tree.EnsureVisible(row);
            return;
        }
    }
}

void SysCodeDlg::CloseFind()
{
    m_tree.SetRedraw(false);
    m_tree.SetRowFilter({});
    const auto collapse = [&](auto&& self, HTREEITEM parent) -> void {
        for (HTREEITEM c = m_tree.GetChildItem(parent); c; c = m_tree.GetNextSiblingItem(c)) {
            self(self, c);
            if (m_tree.IsItemExpanded(c))
                m_tree.Expand(c, TVE_COLLAPSE);
        }
    };
    collapse(collapse, m_tree.GetRootItem());
    // Rows deleted meanwhile are no longer the grid's: the grid answers -1 for them.
    for (HTREEITEM row : m_findExpanded) {
        if (m_tree.GetItemLevel(row) > 0)
            m_tree.Expand(row, TVE_EXPAND);
    }
    m_findExpanded.clear();
    m_findIndex.Clear();
    m_tree.SetRedraw(true);
    m_findEdit->hide();
    if (HTREEITEM caret = m_tree.GetCaretItem())
        m_tree.EnsureVisible(caret);
    m_tree.setFocus();
}
