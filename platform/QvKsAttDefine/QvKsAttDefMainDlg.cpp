#include "QvKsAttDefMainDlg.h"

#include "AttDefStore.h"
#include "CQvTreeCtrl.h"
#include "WinMessageBox.h"

#include <QHBoxLayout>
#include <QLabel>
#include <QLineEdit>
#include <QPushButton>
#include <QTreeWidgetItem>
#include <QVBoxLayout>

namespace {
QPushButton* MakeButton(const QString& text, int id, QWidget* parent)
{
    auto* button = new QPushButton(text, parent);
    button->setProperty("controlId", id);
    button->setAutoDefault(false);
    return button;
}
} // namespace

QvKsAttDefMainDlg::QvKsAttDefMainDlg(const QString& specOnly, QWidget* parent)
    : QDialog(parent)
    , m_specOnly(specOnly)
    , m_tree(new CQvTreeCtrl(this))
    , m_name(new QLineEdit(this))
    , m_add(MakeButton(QStringLiteral("添加明细"), kAdd, this))
    , m_rename(MakeButton(QStringLiteral("重命名"), kRename, this))
{
    setWindowTitle(QStringLiteral("属性定义"));
    m_tree->setProperty("controlId", int(kTree));
    m_tree->setHeaderHidden(true);
    m_name->setProperty("controlId", int(kNameEdit));
    m_name->setMaxLength(AttDefStore::kMaxNameLength);
    QPushButton* close = MakeButton(QStringLiteral("关闭"), kClose, this);

    auto* edit = new QHBoxLayout;
    edit->addWidget(new QLabel(QStringLiteral("明细名称:"), this));
    edit->addWidget(m_name, 1);
    edit->addWidget(m_add);
    edit->addWidget(m_rename);
    auto* buttons = new QHBoxLayout;
    buttons->addStretch(1);
    buttons->addWidget(close);
    auto* layout = new QVBoxLayout(this);
    layout->addWidget(m_tree, 1);
    layout->addLayout(edit);
    layout->addLayout(buttons);
    resize(460, 520);

    connect(m_tree, &QTreeWidget::currentItemChanged, this, &QvKsAttDefMainDlg::OnSelectionChanged);
    connect(m_add, &QPushButton::clicked, this, &QvKsAttDefMainDlg::OnAdd);
    connect(m_rename, &QPushButton::clicked, this, &QvKsAttDefMainDlg::OnRename);
    connect(close, &QPushButton::clicked, this, [this] { done(m_changed ? IDOK : IDCANCEL); });
}

void QvKsAttDefMainDlg::Reload(const QString& path)
{
    QStringList categories;
    QStringList members;
    AttDefStore::LoadPaths(categories, members);
    const auto outside
        = [this](const QString& p) { return !m_specOnly.isEmpty() && p.section(u'\\', 0, 0) != m_specOnly; };
    categories.removeIf(outside);
    members.removeIf(outside);
    m_categories = QSet<QString>(categories.begin(), categories.end());
    m_members = QSet<QString>(members.begin(), members.end());
    m_tree->ImpByPaths(categories + members, CQvTreeCtrl::kImpKeepOrder, true);
    if (QTreeWidgetItem* item = m_tree->GetItemByDir(path)) {
        m_tree->SelectItem(item);
        m_tree->scrollToItem(item);
    }
    OnSelectionChanged();
}

QString QvKsAttDefMainDlg::SelectedPath() const
{
    const QTreeWidgetItem* item = m_tree->currentItem();
    return item ? m_tree->GetItemDir(item) : QString();
}

void QvKsAttDefMainDlg::OnSelectionChanged()
{
    const QString path = SelectedPath();
    m_add->setEnabled(m_categories.contains(path));
    m_rename->setEnabled(m_members.contains(path));
    if (m_members.contains(path))
        m_name->setText(path.section(u'\\', -1));
}

void QvKsAttDefMainDlg::OnAdd()
{
    const QString category = SelectedPath();
    const QString name = m_name->text().trimmed();
    QString error;
    if (!AttDefStore::AddMember(category, name, error)) {
        Warn(error);
        return;
    }
    m_changed = true;
    Reload(category + u'\\' + name);
}

void QvKsAttDefMainDlg::OnRename()
{
    const QString member = SelectedPath();
    const QString name = m_name->text().trimmed();
    QString error;
    if (!AttDefStore::RenameMember(member, name, error)) {
        Warn(error);
        return;
    }
    m_changed = true;
    Reload(member.section(u'\\', 0, -2) + u'\\' + name);
}

void QvKsAttDefMainDlg::Warn(const QString& text)
{
    MessageBoxExW(this, text + u'!', QStringLiteral("Quorvatek"), 0x12030);
}
