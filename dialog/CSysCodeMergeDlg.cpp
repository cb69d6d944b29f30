#include "CSysCodeMergeDlg.h"

#include "CtrlId.h"
#include "Resource.h"
#include "WinTypes.h"

#include <QHBoxLayout>
#include <QHeaderView>
#include <QLabel>
#include <QPushButton>
#include <QTreeWidget>
#include <QVBoxLayout>

namespace {
constexpr int kChoiceColumn = 5;

QString shown(const QString& value)
{
    return value.isEmpty() ? QStringLiteral("（空）") : value;
}

QPushButton* button(QWidget* parent, const QString& text, int id)
{
    auto* b = new QPushButton(text, parent);
    SetDlgCtrlID(b, id);
    b->setAutoDefault(false);
    return b;
}
} // namespace

CSysCodeMergeDlg::CSysCodeMergeDlg(
    const QList<SysCodeCollision>& collisions, const QList<SysCodeMergeChoice>& choices, QWidget* parent)
    : QDialog(parent)
    , m_choices(choices)
{
    setWindowTitle(QStringLiteral("合并"));
    setWindowFlag(Qt::WindowContextHelpButtonHint, false);
    while (m_choices.size() < collisions.size())
        m_choices << SysCodeMergeChoice::Undecided;
    m_choices = m_choices.mid(0, collisions.size());
    auto* intro = new QLabel(
        QStringLiteral(
            "本专业的系统编号在打开后已被他人修改并保存。以下修改两边不同，请逐项选择采用他人的还是本人的："),
        this);
    intro->setWordWrap(true);
    m_summary = new QLabel(this);
    SetDlgCtrlID(m_summary, IDC_MERGE_SUMMARY);
    m_list = new QTreeWidget(this);
    SetDlgCtrlID(m_list, IDC_MERGE_LIST);
    m_list->setRootIsDecorated(false);
    m_list->setSelectionMode(QAbstractItemView::ExtendedSelection);
    m_list->setHeaderLabels({ QStringLiteral("系统编号"), QStringLiteral("属性"), QStringLiteral("原值"),
        QStringLiteral("他人"), QStringLiteral("本人"), QStringLiteral("采用") });
    for (const SysCodeCollision& collision : collisions)
        new QTreeWidgetItem(m_list, CollisionTexts(collision) << QString());
    m_list->header()->setSectionResizeMode(QHeaderView::ResizeToContents);
    if (m_list->topLevelItemCount() > 0)
        m_list->setCurrentItem(m_list->topLevelItem(0));

    QPushButton* theirs = button(this, QStringLiteral("采用他人的"), IDC_MERGE_THEIRS);
    QPushButton* mine = button(this, QStringLiteral("采用本人的"), IDC_MERGE_MINE);
    QPushButton* allTheirs = button(this, QStringLiteral("全部采用他人的"), IDC_MERGE_ALL_THEIRS);
    QPushButton* allMine = button(this, QStringLiteral("全部采用本人的"), IDC_MERGE_ALL_MINE);
    connect(theirs, &QPushButton::clicked, this, [this] { Choose(SysCodeMergeChoice::Theirs, false); });
    connect(mine, &QPushButton::clicked, this, [this] { Choose(SysCodeMergeChoice::Mine, false); });
    connect(allTheirs, &QPushButton::clicked, this, [this] { Choose(SysCodeMergeChoice::Theirs, true); });
    connect(allMine, &QPushButton::clicked, this, [this] { Choose(SysCodeMergeChoice::Mine, true); });

    m_ok = new QPushButton(QStringLiteral("合并"), this);
    SetDlgCtrlID(m_ok, IDC_BTN_OK);
    m_ok->setDefault(true);
    QPushButton* cancel = button(this, QStringLiteral("取消"), IDC_BTN_CANCEL);
    connect(m_ok, &QPushButton::clicked, this, &QDialog::accept);
    connect(cancel, &QPushButton::clicked, this, &QDialog::reject);

    auto* choose = new QHBoxLayout;
    for (QPushButton* b : { theirs, mine, allTheirs, allMine })
        choose->addWidget(b);
    choose->addStretch();
    auto* buttons = new QHBoxLayout;
    buttons->addStretch();
    buttons->addWidget(m_ok);
    buttons->addWidget(cancel);
    auto* layout = new QVBoxLayout(this);
    layout->addWidget(intro);
    layout->addWidget(m_summary);
    layout->addWidget(m_list);
    layout->addLayout(choose);
    layout->addLayout(buttons);
    resize(720, 420);
    ShowChoices();
}

int CSysCodeMergeDlg::DoModal()
{
    return exec() == QDialog::Accepted ? IDOK : IDCANCEL;
}

QStringList CSysCodeMergeDlg::CollisionTexts(const SysCodeCollision& collision)
{
    const QString code = collision.code;
    switch (collision.kind) {
    case SysCodeCollisionKind::BothChanged:
        return { code, SysCodeFieldTitle(collision.field), shown(collision.base), shown(collision.theirs),
            shown(collision.mine) };
    case SysCodeCollisionKind::DeletedByThem:
        return { code, QStringLiteral("整个编号"), QString(), QStringLiteral("已删除"),
            QStringLiteral("已修改") };
    case SysCodeCollisionKind::DeletedByMe:
        return { code, QStringLiteral("整个编号"), QString(), QStringLiteral("已修改"),
            QStringLiteral("已删除") };
    case SysCodeCollisionKind::SameName:
        return { code, QStringLiteral("同名新增"), QString(), QStringLiteral("他人新增的属性"),
            QStringLiteral("本人新增的属性") };
    }
    return { code };
}

// The selected rows, or every row, take one side.
void CSysCodeMergeDlg::Choose(SysCodeMergeChoice choice, bool all)
{
    for (int i = 0; i < m_list->topLevelItemCount(); ++i) {
        if (all || m_list->topLevelItem(i)->isSelected())
            m_choices[i] = choice;
    }
    ShowChoices();
}

void CSysCodeMergeDlg::ShowChoices()
{
    int open = 0;
    for (int i = 0; i < m_list->topLevelItemCount(); ++i) {
        const SysCodeMergeChoice choice = m_choices.at(i);
        open += choice == SysCodeMergeChoice::Undecided;
        m_list->topLevelItem(i)->setText(kChoiceColumn,
            choice == SysCodeMergeChoice::Theirs     ? QStringLiteral("他人")
                : choice == SysCodeMergeChoice::Mine ? QStringLiteral("本人")
                                                     : QString());
    }
    m_summary->setText(QStringLiteral("冲突 %1 处，未选择 %2 处").arg(m_choices.size()).arg(open));
    m_ok->setEnabled(open == 0);
}
