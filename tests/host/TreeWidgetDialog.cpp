#include "TreeWidgetDialog.h"

#include "CtrlId.h"
#include "ZcUtPrintf.h"

#include <QComboBox>
#include <QHeaderView>
#include <QPushButton>
#include <QStyledItemDelegate>
#include <QTreeWidget>
#include <QTreeWidgetItemIterator>
#include <QVBoxLayout>

namespace {
constexpr int kSizeColumn = 2;

// The size column is chosen from a list; the other columns edit as text.
class SizeDelegate : public QStyledItemDelegate
{
public:
    using QStyledItemDelegate::QStyledItemDelegate;

    QWidget* createEditor(
        QWidget* parent, const QStyleOptionViewItem& option, const QModelIndex& index) const override
    {
        if (index.column() != kSizeColumn)
            return QStyledItemDelegate::createEditor(parent, option, index);
        auto* combo = new QComboBox(parent);
        combo->addItems({ QStringLiteral("小"), QStringLiteral("中"), QStringLiteral("大") });
        return combo;
    }

    void setEditorData(QWidget* editor, const QModelIndex& index) const override
    {
        if (auto* combo = qobject_cast<QComboBox*>(editor))
            combo->setCurrentText(index.data().toString());
        else
            QStyledItemDelegate::setEditorData(editor, index);
    }

    void setModelData(QWidget* editor, QAbstractItemModel* model, const QModelIndex& index) const override
    {
        if (auto* combo = qobject_cast<QComboBox*>(editor))
            model->setData(index, combo->currentText());
        else
            QStyledItemDelegate::setModelData(editor, model, index);
    }
};

QTreeWidgetItem* AddRow(QTreeWidgetItem* parent, QTreeWidget* tree, const QStringList& cells)
{
    auto* item = parent ? new QTreeWidgetItem(parent, cells) : new QTreeWidgetItem(tree, cells);
    item->setFlags(item->flags() | Qt::ItemIsEditable);
    return item;
}
} // namespace

TreeWidgetDialog::TreeWidgetDialog(QWidget* parent)
    : QDialog(parent)
    , m_tree(new QTreeWidget(this))
{
    setWindowTitle(QStringLiteral("树测试"));
    resize(480, 360);
    auto* layout = new QVBoxLayout(this);
    m_tree->setHeaderLabels({ QStringLiteral("名称"), QStringLiteral("数量"), QStringLiteral("规格") });
    m_tree->setItemDelegate(new SizeDelegate(m_tree));
    m_tree->setEditTriggers(QAbstractItemView::DoubleClicked);
    m_tree->setSelectionMode(QAbstractItemView::ExtendedSelection);
    m_tree->setExpandsOnDoubleClick(false);
    QTreeWidgetItem* tank
        = AddRow(nullptr, m_tree, { QStringLiteral("水箱"), QString(), QStringLiteral("大") });
    AddRow(tank, m_tree, { QStringLiteral("进水"), QStringLiteral("2"), QStringLiteral("小") });
    QTreeWidgetItem* out
        = AddRow(tank, m_tree, { QStringLiteral("出水"), QStringLiteral("3"), QStringLiteral("中") });
    out->setForeground(1, QColor(255, 0, 0));
    out->setBackground(1, QColor(0, 0, 255));
    AddRow(nullptr, m_tree, { QStringLiteral("水泵"), QStringLiteral("1"), QStringLiteral("中") });
    layout->addWidget(m_tree);
    auto* buttons = new QHBoxLayout;
    for (int id : { 1, 2 }) {
        auto* button = new QPushButton(id == 1 ? QStringLiteral("确定") : QStringLiteral("取消"), this);
        SetDlgCtrlID(button, id);
        buttons->addWidget(button);
        connect(button, &QPushButton::clicked, this, [this, id] { id == 1 ? accept() : reject(); });
    }
    layout->addLayout(buttons);
}

void TreeWidgetDialog::accept()
{
    for (QTreeWidgetItemIterator it(m_tree); *it; ++it) {
        QString name = (*it)->text(0);
        for (QTreeWidgetItem* up = (*it)->parent(); up; up = up->parent())
            name = up->text(0) + u'&' + name;
        zcutPrintf(
            QStringLiteral("\n[qvhtree] %1: %2 | %3").arg(name, (*it)->text(1), (*it)->text(kSizeColumn)));
    }
    QDialog::accept();
}
