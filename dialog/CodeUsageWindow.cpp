#include "CodeUsageWindow.h"

#include "CQVSpecTypeInfoGet.h"
#include "CodeUsageLedger.h"
#include "SysCodeDlg.h"

#include <QHeaderView>
#include <QMenu>
#include <QShortcut>

CodeUsageWindow::CodeUsageWindow(SysCodeDlg& dialog, const CodeUsageLedger& ledger)
    : QObject(&dialog)
    , m_dialog(dialog)
    , m_ledger(ledger)
{
    auto* shortcut = new QShortcut(QKeySequence(Qt::CTRL | Qt::Key_U), &dialog);
    connect(shortcut, &QShortcut::activated, this, &CodeUsageWindow::Show);
    QHeaderView* header = dialog.m_tree.header();
    header->setContextMenuPolicy(Qt::CustomContextMenu);
    connect(header, &QWidget::customContextMenuRequested, this, [this, header](const QPoint& at) {
        QMenu menu(&m_dialog);
        QAction* usage = menu.addAction(QStringLiteral("使用情况..."));
        if (menu.exec(header->mapToGlobal(at)) == usage)
            Show();
    });
}

QList<CodeUsageRow> CodeUsageWindow::CollectRows() const
{
    // The working drawing's scan, when still to run, counts before any row does.
    m_dialog.m_usedCodeIndexes.Settle();
    const int spec = int(CQVSpecTypeInfoGet::GetSpecTypeByName(m_dialog.m_strSpec));
    const CTreeListCtrl& grid = m_dialog.m_tree;
    QList<CodeUsageRow> rows;
    const auto visit = [&](auto&& self, HTREEITEM parent) -> void {
        for (HTREEITEM r = grid.GetChildItem(parent); r; r = grid.GetNextSiblingItem(r)) {
            CodeUsageRow row;
            row.fullName = m_dialog.GetRowFullName(r);
            row.level = grid.GetItemLevel(r);
            row.saved = m_dialog.GetRowNodeIndex(r) > 0;
            row.floors = m_ledger.DescribeCode(spec, m_dialog.GetRowNodeIndex(r), row.count);
            rows.append(row);
            self(self, r);
        }
    };
    visit(visit, grid.GetRootItem());
    return rows;
}

void CodeUsageWindow::Show()
{
    CCodeUsageDlg window([this] { return CollectRows(); },
        [this] {
            if (!m_dialog.m_bOtherFloorsScanned) {
                m_dialog.ScanOtherFloors();
                m_dialog.m_bOtherFloorsScanned = true;
            }
        },
        m_dialog.m_bOtherFloorsScanned, m_dialog.GetRowFullName(m_dialog.m_tree.GetCaretItem()), &m_dialog);
    window.SetUnreadableFloors([this] { return m_dialog.m_usedCodeIndexes.UnreadableFloors(); });
    window.DoModal();
}
