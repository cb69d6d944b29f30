// Which codes the product entities of the drawings use: the working drawing is
// scanned on the first look-up (or when the usage is first shown), the other floors
// only when a look-up first misses. A floor whose drawing is missing or cannot be
// read is remembered with the reason: what it uses is unknown, not nothing.
#include "SysCodeDlg.h"

#include "CCodeUsageDlg.h"
#include "CProj.h"
#include "CQVSpecTypeInfoGet.h"
#include "CodePathCounter.h"
#include "IFloorMng.h"
#include "QvKsDataMng.h"
#include "QvKsEntity.h"
#include "QvProInterface.h"
#include "ZcDbBlockTable.h"
#include "ZcDbBlockTableRecord.h"
#include "ZcDbBlockTableRecordIterator.h"
#include "ZcDbDatabase.h"

#include <QDir>
#include <QHash>
#include <QHeaderView>
#include <QMenu>
#include <QShortcut>

#include <memory>

void SysCodeDlg::ScanModelSpace(ZcDbDatabase* database)
{
    ScanDrawing(database, CProj().GetCurFloorName());
}

// Each product entity counts for its code on `floor`.
void SysCodeDlg::ScanDrawing(ZcDbDatabase* database, const QString& floor)
{
    if (!database)
        return;
    if (!m_scannedFloors.contains(floor))
        m_scannedFloors.append(floor);
    m_usedCodeIndexes.MarkRead(floor);
    ZcDbBlockTable* table = nullptr;
    if (database->getBlockTable(table, ZcDb::kForRead) != Zcad::eOk || !table)
        return;
    ZcDbBlockTableRecord* modelSpace = nullptr;
    const Zcad::ErrorStatus status = table->getAt(ZCDB_MODEL_SPACE, modelSpace, ZcDb::kForRead);
    table->close();
    if (status != Zcad::eOk || !modelSpace)
        return;
    modelSpace->close();
    ZcDbBlockTableRecordIterator* iterator = nullptr;
    if (modelSpace->newIterator(iterator, true, false) != Zcad::eOk || !iterator)
        return;
    const std::unique_ptr<ZcDbBlockTableRecordIterator> owner(iterator);
    CodePathCounter counter;
    for (; !iterator->done(); iterator->step(true, false)) {
        ZcDbEntity* entity = nullptr;
        if (iterator->getEntity(entity, ZcDb::kForRead, true) != Zcad::eOk || !entity)
            continue;
        if (const QvKsEntity* product = QvKsEntity::cast(entity))
            counter.Add(product->GetSysCodeIndex());
        entity->close();
    }
    QHash<QString, int>& usage = m_codeUsage[floor];
    counter.AddTo(usage);
    m_usedCodeIndexes.reserve(m_usedCodeIndexes.size() + std::size_t(usage.size()));
    for (auto it = usage.keyBegin(); it != usage.keyEnd(); ++it)
        m_usedCodeIndexes.insert(*it);
}

// Every floor not read yet: the other floors, and the current one too when no
// working drawing stood for it.
void SysCodeDlg::ScanOtherFloors()
{
    // The current floor comes first among the scanned floors.
    m_usedCodeIndexes.Settle();
    QVector<SQvKsFloorData> floors;
    const bool listed = CProj().GetAllFloorData(floors);
    QvProInterface::ShowProgressDialog(true, QStringLiteral("检查非当前层是否引用该系统编号..."), nullptr);
    if (!listed)
        m_usedCodeIndexes.MarkUnreadable(QStringLiteral("楼层列表"), QvKsDataMng::LastError());
    for (const SQvKsFloorData& floor : floors) {
        if (m_usedCodeIndexes.StateOf(floor.strName) == FloorScanState::NotRead)
            ScanFloorFile(floor.strName);
    }
    QvProInterface::ShowProgressDialog(false);
}

void SysCodeDlg::ScanFloorFile(const QString& floor)
{
    const QString file = IFloorMng::GetDwgFullNameByFloorName(floor);
    if (file.isEmpty()) {
        m_usedCodeIndexes.MarkUnreadable(floor, QStringLiteral("楼层没有图纸文件"));
        return;
    }
    ZcDbDatabase side(false, false);
    const Zcad::ErrorStatus status = side.readDwgFile(file, _SH_DENYWR, false, nullptr);
    if (status == Zcad::eOk)
        ScanDrawing(&side, floor);
    else if (status == Zcad::eFileNotFound)
        m_usedCodeIndexes.MarkUnreadable(
            floor, QStringLiteral("图纸文件不存在：%1").arg(QDir::toNativeSeparators(file)));
    else
        m_usedCodeIndexes.MarkUnreadable(floor, QStringLiteral("图纸无法读取：%1").arg(side.readError()));
}

// "2F：图纸无法读取：…", one line a floor whose entities are unknown.
QStringList SysCodeDlg::DescribeUnreadableFloors() const
{
    QStringList lines;
    for (const UnreadableFloor& floor : m_usedCodeIndexes.UnreadableFloors())
        lines << floor.floor + QStringLiteral("：") + floor.reason;
    return lines;
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

// The floors whose drawings use a saved code, "B1 12，1F 3" in the order they were
// scanned, and the entities over all of them in `count`.
QString SysCodeDlg::DescribeCodeFloors(int index, int& count) const
{
    count = 0;
    m_usedCodeIndexes.Settle();
    const int spec = int(CQVSpecTypeInfoGet::GetSpecTypeByName(m_strSpec));
    if (index <= 0)
        return QString();
    const QString path = QString::asprintf("%d\\%d", spec, index);
    QStringList floors;
    for (const QString& floor : m_scannedFloors) {
        const auto usage = m_codeUsage.find(floor);
        if (usage == m_codeUsage.end())
            continue;
        if (const auto n = usage->second.constFind(path); n != usage->second.cend()) {
            count += n.value();
            floors << QStringLiteral("%1 %2").arg(floor).arg(n.value());
        }
    }
    return floors.join(QStringLiteral("，"));
}

// "公共照明：B1 12，1F 3", one line for each code of the row's subtree that a
// drawing uses.
QStringList SysCodeDlg::DescribeUsage(HTREEITEM row) const
{
    QStringList lines;
    const auto visit = [&](auto&& self, HTREEITEM r) -> void {
        int count = 0;
        const QString floors = DescribeCodeFloors(GetRowNodeIndex(r), count);
        if (count > 0)
            lines << GetRowFullName(r) + QStringLiteral("：") + floors;
        for (HTREEITEM c = m_tree.GetChildItem(r); c; c = m_tree.GetNextSiblingItem(c))
            self(self, c);
    };
    visit(visit, row);
    return lines;
}

// Every code of the grid with its entities' count, parents before children.
QList<CodeUsageRow> SysCodeDlg::CollectCodeUsage() const
{
    QList<CodeUsageRow> rows;
    const auto visit = [&](auto&& self, HTREEITEM parent) -> void {
        for (HTREEITEM r = m_tree.GetChildItem(parent); r; r = m_tree.GetNextSiblingItem(r)) {
            CodeUsageRow row;
            row.fullName = GetRowFullName(r);
            row.level = m_tree.GetItemLevel(r);
            row.saved = GetRowNodeIndex(r) > 0;
            row.floors = DescribeCodeFloors(GetRowNodeIndex(r), row.count);
            rows.append(row);
            self(self, r);
        }
    };
    visit(visit, m_tree.GetRootItem());
    return rows;
}

void SysCodeDlg::ShowCodeUsage()
{
    CCodeUsageDlg dialog([this] { return CollectCodeUsage(); },
        [this] {
            if (!m_bOtherFloorsScanned) {
                ScanOtherFloors();
                m_bOtherFloorsScanned = true;
            }
        },
        m_bOtherFloorsScanned, GetRowFullName(m_tree.GetCaretItem()), this);
    dialog.SetUnreadableFloors([this] { return m_usedCodeIndexes.UnreadableFloors(); });
    dialog.DoModal();
}

// Ctrl+U anywhere in the dialog, or the menu of the grid's column titles.
void SysCodeDlg::ConnectCodeUsage()
{
    auto* shortcut = new QShortcut(QKeySequence(Qt::CTRL | Qt::Key_U), this);
    connect(shortcut, &QShortcut::activated, this, &SysCodeDlg::ShowCodeUsage);
    QHeaderView* header = m_tree.header();
    header->setContextMenuPolicy(Qt::CustomContextMenu);
    connect(header, &QWidget::customContextMenuRequested, this, [this, header](const QPoint& at) {
        QMenu menu(this);
        QAction* usage = menu.addAction(QStringLiteral("使用情况..."));
        if (menu.exec(header->mapToGlobal(at)) == usage)
            ShowCodeUsage();
    });
}
