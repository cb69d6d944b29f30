// Which codes the product entities of the drawings use: the working drawing is
// scanned on the first look-up (or when the usage is first shown), the other floors
// only when a look-up first misses (CodeUsageScan, CodeUsageLedger).
#include "SysCodeDlg.h"

#include "CProj.h"
#include "CQVSpecTypeInfoGet.h"
#include "CodeUsageScan.h"
#include "CodeUsageWindow.h"

void SysCodeDlg::ScanModelSpace(ZcDbDatabase* database)
{
    CodeUsageScan(m_usedCodeIndexes, m_codeUsage).ScanDrawing(database, CProj().GetCurFloorName());
}

// Every floor not read yet: the other floors, and the current one too when no
// working drawing stood for it.
void SysCodeDlg::ScanOtherFloors()
{
    CodeUsageScan(m_usedCodeIndexes, m_codeUsage).ScanUnreadFloors();
}

bool SysCodeDlg::IsCodeIndexUsed(const QString& indexPath)
{
    if (m_usedCodeIndexes.count(indexPath) > 0)
        return true;
    if (m_bOtherFloorsScanned)
        return false;
    ScanOtherFloors();
    m_bOtherFloorsScanned = true;
    return m_usedCodeIndexes.count(indexPath) > 0;
}

QStringList SysCodeDlg::DescribeUnreadableFloors() const
{
    return CodeUsageLedger::DescribeUnreadable(m_usedCodeIndexes.UnreadableFloors());
}

// "公共照明：B1 12，1F 3", one line for each code of the row's subtree that a
// drawing uses.
QStringList SysCodeDlg::DescribeUsage(HTREEITEM row) const
{
    m_usedCodeIndexes.Settle();
    const int spec = int(CQVSpecTypeInfoGet::GetSpecTypeByName(m_strSpec));
    QStringList lines;
    const auto visit = [&](auto&& self, HTREEITEM r) -> void {
        int count = 0;
        const QString floors = m_codeUsage.DescribeCode(spec, GetRowNodeIndex(r), count);
        if (count > 0)
            lines << GetRowFullName(r) + QStringLiteral("：") + floors;
        for (HTREEITEM c = m_tree.GetChildItem(r); c; c = m_tree.GetNextSiblingItem(c))
            self(self, c);
    };
    visit(visit, row);
    return lines;
}

void SysCodeDlg::ConnectCodeUsage()
{
    new CodeUsageWindow(*this, m_codeUsage);
}
