#include "QvKsSysCodeBar.h"

#include "CSysCodeData.h"
#include "IFaceBarCtrl.h"

#include <QHash>
#include <QHeaderView>
#include <QLabel>
#include <QPainter>
#include <QPixmap>
#include <QTimer>
#include <QTreeWidget>
#include <QVBoxLayout>

namespace {

constexpr int kCodeRole = Qt::UserRole;

QIcon ColorIcon(COLORREF color)
{
    QPixmap pixmap(12, 12);
    pixmap.fill(QColor(GetRValue(color), GetGValue(color), GetBValue(color)));
    QPainter painter(&pixmap);
    painter.setPen(QColor(96, 96, 96));
    painter.drawRect(pixmap.rect().adjusted(0, 0, -1, -1));
    return QIcon(pixmap);
}

} // namespace

QvKsSysCodeBar::QvKsSysCodeBar(QWidget* parent)
    : QWidget(parent)
{
    setObjectName(QStringLiteral("sysCodeBar"));
    setWindowTitle(QStringLiteral("系统编号"));
    auto* layout = new QVBoxLayout(this);
    layout->setContentsMargins(2, 2, 2, 2);
    m_spec = new QLabel(this);
    m_spec->setObjectName(QStringLiteral("specLabel"));
    layout->addWidget(m_spec);
    m_tree = new QTreeWidget(this);
    m_tree->setObjectName(QStringLiteral("sysCodeTree"));
    m_tree->setColumnCount(1);
    m_tree->setHeaderLabels({ QStringLiteral("系统编号") });
    m_tree->setSelectionMode(QAbstractItemView::SingleSelection);
    m_tree->setExpandsOnDoubleClick(false);
    m_tree->setUniformRowHeights(true);
    layout->addWidget(m_tree);
    connect(m_tree, &QTreeWidget::currentItemChanged, this,
        [this](QTreeWidgetItem* item) { OnCurrentItemChanged(item); });
    connect(m_tree, &QTreeWidget::itemDoubleClicked, this,
        [this](QTreeWidgetItem* item) { OnItemDoubleClicked(item); });
}

void QvKsSysCodeBar::Reload()
{
    m_filling = true;
    m_tree->clear();
    const QString spec = IFaceBarCtrl::CurSpec();
    m_spec->setText(spec.isEmpty() ? QStringLiteral("专业：") : QStringLiteral("专业：%1").arg(spec));
    // The items are built apart from the tree and handed over at once: an item that
    // is already in the tree tells the view about every text, icon and child it gets.
    QHash<COLORREF, QIcon> icons;
    QList<QTreeWidgetItem*> top;
    AddChildren(top, &IFaceBarCtrl::SysCodes(), QString(), icons);
    m_tree->addTopLevelItems(top);
    m_tree->expandAll();
    m_filling = false;
    ShowCode(IFaceBarCtrl::CurSysCode());
}

void QvKsSysCodeBar::AddChildren(QList<QTreeWidgetItem*>& items, const CSysCodeData* node,
    const QString& prefix, QHash<COLORREF, QIcon>& icons)
{
    for (const CSysCodeData* child : node->GetChildren()) {
        auto* item = new QTreeWidgetItem;
        const QString code
            = prefix.isEmpty() ? child->GetNodeName() : prefix + QLatin1Char('&') + child->GetNodeName();
        item->setText(0, child->GetNodeName());
        item->setData(0, kCodeRole, code);
        auto icon = icons.find(child->GetMfcColor());
        if (icon == icons.end())
            icon = icons.insert(child->GetMfcColor(), ColorIcon(child->GetMfcColor()));
        item->setIcon(0, *icon);
        QStringList tips;
        if (!child->GetAddedMsg().isEmpty())
            tips << QStringLiteral("管线信息：%1").arg(child->GetAddedMsg());
        if (!child->GetDescribe().isEmpty())
            tips << QStringLiteral("备注：%1").arg(child->GetDescribe());
        item->setToolTip(0, tips.join(QLatin1Char('\n')));
        QList<QTreeWidgetItem*> children;
        AddChildren(children, child, code, icons);
        item->addChildren(children);
        items.append(item);
    }
}

QTreeWidgetItem* QvKsSysCodeBar::ItemOf(const QString& code) const
{
    if (code.isEmpty())
        return nullptr;
    const QStringList names = code.split(QLatin1Char('&'));
    QTreeWidgetItem* found = nullptr;
    for (const QString& name : names) {
        const int count = found ? found->childCount() : m_tree->topLevelItemCount();
        QTreeWidgetItem* next = nullptr;
        for (int i = 0; i < count && !next; ++i) {
            QTreeWidgetItem* child = found ? found->child(i) : m_tree->topLevelItem(i);
            if (child->text(0) == name)
                next = child;
        }
        if (!next)
            return nullptr;
        found = next;
    }
    return found;
}

void QvKsSysCodeBar::ShowCode(const QString& code)
{
    m_filling = true;
    QTreeWidgetItem* item = ItemOf(code);
    if (item) {
        m_tree->setCurrentItem(item);
        m_tree->scrollToItem(item);
    } else {
        m_tree->clearSelection();
        m_tree->setCurrentItem(nullptr);
    }
    m_filling = false;
}

void QvKsSysCodeBar::OnCurrentItemChanged(QTreeWidgetItem* item)
{
    if (!m_filling && item)
        IFaceBarCtrl::OnBarSelect(item->data(0, kCodeRole).toString());
}

void QvKsSysCodeBar::OnItemDoubleClicked(QTreeWidgetItem* item)
{
    if (!item)
        return;
    const QString code = item->data(0, kCodeRole).toString();
    IFaceBarCtrl::OnBarSelect(code);
    // The registered function usually opens a modal dialog that rebuilds this tree:
    // run it once the tree has finished with the double-click.
    QTimer::singleShot(0, this, [code] { IFaceBarCtrl::OnBarDbClick(code); });
}
