#include "CCodeUsageDlg.h"

#include "CtrlId.h"
#include "Resource.h"
#include "WinTypes.h"

#include <QHBoxLayout>
#include <QHeaderView>
#include <QLabel>
#include <QPushButton>
#include <QTreeWidget>
#include <QVBoxLayout>

CCodeUsageDlg::CCodeUsageDlg(std::function<QList<CodeUsageRow>()> rows, std::function<void()> scanAll,
    bool allFloorsScanned, const QString& current, QWidget* parent)
    : QDialog(parent)
    , m_rows(std::move(rows))
    , m_scanAll(std::move(scanAll))
    , m_allFloorsScanned(allFloorsScanned)
    , m_current(current)
{
    setWindowTitle(QStringLiteral("使用情况"));
    setWindowFlag(Qt::WindowContextHelpButtonHint, false);
    m_summary = new QLabel(this);
    SetDlgCtrlID(m_summary, IDC_USAGE_SUMMARY);
    m_floors = new QLabel(this);
    SetDlgCtrlID(m_floors, IDC_USAGE_FLOORS);
    m_floors->setStyleSheet(QStringLiteral("color: #b00000"));
    m_floors->setWordWrap(true);
    m_floors->hide();
    m_list = new QTreeWidget(this);
    SetDlgCtrlID(m_list, IDC_USAGE_LIST);
    m_list->setHeaderLabels({ QStringLiteral("系统编号"), QStringLiteral("数量"), QStringLiteral("楼层") });
    m_list->setRootIsDecorated(false);
    m_list->header()->setSectionResizeMode(0, QHeaderView::ResizeToContents);
    m_scanButton = new QPushButton(QStringLiteral("扫描全部楼层"), this);
    SetDlgCtrlID(m_scanButton, IDC_USAGE_SCAN_ALL);
    m_scanButton->setAutoDefault(false);
    auto* close = new QPushButton(QStringLiteral("关闭"), this);
    SetDlgCtrlID(close, IDC_BTN_CANCEL);
    connect(m_scanButton, &QPushButton::clicked, this, &CCodeUsageDlg::OnScanAll);
    connect(close, &QPushButton::clicked, this, &QDialog::reject);

    auto* buttons = new QHBoxLayout;
    buttons->addWidget(m_scanButton);
    buttons->addStretch();
    buttons->addWidget(close);
    auto* layout = new QVBoxLayout(this);
    layout->addWidget(m_summary);
    layout->addWidget(m_floors);
    layout->addWidget(m_list);
    layout->addLayout(buttons);
    resize(560, 480);
    Fill();
}

int CCodeUsageDlg::DoModal()
{
    return exec() == QDialog::Accepted ? IDOK : IDCANCEL;
}

void CCodeUsageDlg::SetUnreadableFloors(std::function<QList<UnreadableFloor>()> floors)
{
    m_unreadable = std::move(floors);
    Fill();
}

void CCodeUsageDlg::OnScanAll()
{
    if (m_scanAll)
        m_scanAll();
    m_allFloorsScanned = true;
    Fill();
}

void CCodeUsageDlg::Fill()
{
    m_list->clear();
    const QList<UnreadableFloor> unreadable = m_unreadable ? m_unreadable() : QList<UnreadableFloor>();
    QStringList unreadableNames;
    QStringList unreadableLines;
    for (const UnreadableFloor& floor : unreadable) {
        unreadableNames << floor.floor;
        unreadableLines << QStringLiteral("%1 无法读取：%2").arg(floor.floor, floor.reason);
    }
    // Nothing a readable floor holds uses it; the unreadable ones may.
    const QString unusedText = unreadable.isEmpty()
        ? QStringLiteral("未使用")
        : QStringLiteral("未使用（%1 无法读取）").arg(unreadableNames.join(QStringLiteral("、")));
    int used = 0;
    int unused = 0;
    for (const CodeUsageRow& row : m_rows()) {
        const QString name
            = QString(2 * (row.level - 1), QLatin1Char(' ')) + row.fullName.section(QLatin1Char('\\'), -1);
        auto* item = new QTreeWidgetItem(m_list, { name, QString::number(row.count), row.floors });
        item->setToolTip(0, row.fullName);
        if (row.fullName == m_current) {
            m_list->setCurrentItem(item);
            m_list->scrollToItem(item);
        }
        if (!row.saved) {
            item->setText(2, QStringLiteral("未保存"));
        } else if (row.count == 0) {
            ++unused;
            item->setText(2, unusedText);
            for (int c = 0; c < 3; ++c)
                item->setForeground(c, QColor(128, 128, 128));
        } else {
            ++used;
        }
    }
    m_summary->setText(
        QStringLiteral("已使用 %1 个，未使用 %2 个，%3")
            .arg(used)
            .arg(unused)
            .arg(m_allFloorsScanned ? QStringLiteral("已扫描全部楼层") : QStringLiteral("仅扫描当前楼层")));
    m_floors->setText(unreadableLines.join(QLatin1Char('\n')));
    m_floors->setVisible(!unreadableLines.isEmpty());
    m_scanButton->setEnabled(!m_allFloorsScanned);
}
