#include "CImportPreviewDlg.h"

#include "CtrlId.h"
#include "Resource.h"
#include "WinTypes.h"

#include <QHBoxLayout>
#include <QHeaderView>
#include <QLabel>
#include <QPushButton>
#include <QTreeWidget>
#include <QVBoxLayout>

CImportPreviewDlg::CImportPreviewDlg(
    const SysCodeImportPreview& preview, const QString& fileName, QWidget* parent)
    : QDialog(parent)
{
    setWindowTitle(QStringLiteral("导入预览"));
    setWindowFlag(Qt::WindowContextHelpButtonHint, false);
    auto* file = new QLabel(QStringLiteral("导入文件：%1").arg(fileName), this);
    m_summary = new QLabel(SummaryText(preview), this);
    SetDlgCtrlID(m_summary, IDC_PREVIEW_SUMMARY);
    m_list = new QTreeWidget(this);
    SetDlgCtrlID(m_list, IDC_PREVIEW_LIST);
    m_list->setHeaderLabels({ QStringLiteral("系统编号"), QStringLiteral("原值"), QStringLiteral("导入后") });
    m_list->header()->setSectionResizeMode(0, QHeaderView::ResizeToContents);
    m_list->header()->setSectionResizeMode(1, QHeaderView::ResizeToContents);
    FillList(preview);

    auto* ok = new QPushButton(QStringLiteral("导入"), this);
    SetDlgCtrlID(ok, IDC_BTN_OK);
    ok->setDefault(true);
    auto* cancel = new QPushButton(QStringLiteral("取消"), this);
    SetDlgCtrlID(cancel, IDC_BTN_CANCEL);
    cancel->setAutoDefault(false);
    connect(ok, &QPushButton::clicked, this, &QDialog::accept);
    connect(cancel, &QPushButton::clicked, this, &QDialog::reject);

    auto* buttons = new QHBoxLayout;
    buttons->addStretch();
    buttons->addWidget(ok);
    buttons->addWidget(cancel);
    auto* layout = new QVBoxLayout(this);
    layout->addWidget(file);
    layout->addWidget(m_summary);
    layout->addWidget(m_list);
    layout->addLayout(buttons);
    resize(640, 480);
}

int CImportPreviewDlg::DoModal()
{
    return exec() == QDialog::Accepted ? IDOK : IDCANCEL;
}

QString CImportPreviewDlg::SummaryText(const SysCodeImportPreview& preview)
{
    return QStringLiteral("新增 %1 个，修改 %2 个，不变 %3 个")
        .arg(preview.added.size())
        .arg(preview.changed.size())
        .arg(preview.unchanged.size());
}

// Three groups; the changed codes open to show each attribute's old and new value.
void CImportPreviewDlg::FillList(const SysCodeImportPreview& preview)
{
    const auto group = [this](const QString& title, qsizetype count) {
        auto* item = new QTreeWidgetItem(m_list, { QStringLiteral("%1（%2）").arg(title).arg(count) });
        item->setExpanded(count > 0);
        return item;
    };
    QTreeWidgetItem* added = group(QStringLiteral("新增"), preview.added.size());
    for (const QString& name : preview.added)
        new QTreeWidgetItem(added, { name });
    QTreeWidgetItem* changed = group(QStringLiteral("修改"), preview.changed.size());
    for (const SysCodeChangedCode& code : preview.changed) {
        auto* item = new QTreeWidgetItem(changed, { code.fullName });
        // An attribute the file leaves empty is cleared by the import: say so.
        const auto shown
            = [](const QString& value) { return value.isEmpty() ? QStringLiteral("（空）") : value; };
        for (const SysCodeAttributeChange& change : code.changes)
            new QTreeWidgetItem(item, { change.attribute, shown(change.before), shown(change.after) });
        item->setExpanded(true);
    }
    QTreeWidgetItem* unchanged = group(QStringLiteral("不变"), preview.unchanged.size());
    unchanged->setExpanded(false);
    for (const QString& name : preview.unchanged)
        new QTreeWidgetItem(unchanged, { name });
}
