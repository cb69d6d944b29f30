#include "CChangeNameDlg.h"

#include "CAtt.h"
#include "CAttDetailMem.h"
#include "CProj.h"
#include "CReNameMng.h"
#include "CSys.h"
#include "CtrlId.h"
#include "ModuleStrings.h"
#include "PipeInfoPath.h"
#include "QvKsAttIds.h"
#include "Resource.h"
#include "ShowAttDefMainDlg.h"
#include "WinMessageBox.h"
#include "ZcApDocManager.h"

#include <QHBoxLayout>
#include <QPushButton>
#include <QVBoxLayout>

CChangeNameDlg* g_pChangeNameDlg = nullptr;
bool g_bAttDefOpened = false;

namespace {
// The dialog opens this far to the right of where it would be centred, so the
// dialog it was opened from stays readable.
constexpr int kRightShift = 80;

void* g_hResources = nullptr;

// Keeps the module's resources current in the host while the picker runs, popped
// on every way out.
struct ResourceScope
{
    ResourceScope() { zcDocManagerPtr()->pushResourceHandle(g_hResources); }
    ~ResourceScope() { zcDocManagerPtr()->popResourceHandle(); }
    ResourceScope(const ResourceScope&) = delete;
    ResourceScope& operator=(const ResourceScope&) = delete;
};

// The member paths of the categories, in category order and member order within
// each; categories the library does not know are left out.
void AppendMemberPaths(const QStringList& categoryIds, QStringList& paths)
{
    for (const QString& id : categoryIds) {
        const SQvKsSmallCategoryId category = SmallCategoryNameToId(CSys::GetNamePath(id));
        if (!category.IsComplete())
            continue;
        QVector<SQvKsDetailMemId> members;
        if (!CAtt::GetAllDetailMemIdsBySmallCategory(category, members))
            continue;
        for (const SQvKsDetailMemId& member : members)
            paths.append(CAttDetailMem(member).GetNamePath());
    }
}

bool IsLibraryName(const QString& path)
{
    return !path.isEmpty() && !AttNameToAttIndex(path).isEmpty();
}

void ShowWarning(const QString& text)
{
    MessageBoxExW(GetActiveWindow(), text, g_strCaption, kMbWarning);
}
} // namespace

void SetChangeNameResourceHandle(void* resourceHandle)
{
    g_hResources = resourceHandle;
}

CChangeNameDlg::CChangeNameDlg(QWidget* parent)
    : QDialog(parent)
{
    setWindowTitle(QStringLiteral("选构件"));
    CreateControls();
    g_pChangeNameDlg = this;
}

CChangeNameDlg::~CChangeNameDlg()
{
    if (g_pChangeNameDlg == this)
        g_pChangeNameDlg = nullptr;
}

void CChangeNameDlg::CreateControls()
{
    m_tree.setParent(this);
    SetDlgCtrlID(&m_tree, IDC_TREE_NAMES);
    m_tree.setHeaderHidden(true);
    auto* attDefine = new QPushButton(QStringLiteral("进入属性"), this);
    SetDlgCtrlID(attDefine, IDC_BTN_ATT_DEFINE);
    attDefine->setAutoDefault(false);
    auto* ok = new QPushButton(QStringLiteral("确定"), this);
    SetDlgCtrlID(ok, IDC_BTN_OK);
    ok->setDefault(true);
    auto* cancel = new QPushButton(QStringLiteral("取消"), this);
    SetDlgCtrlID(cancel, IDC_BTN_CANCEL);
    cancel->setAutoDefault(false);

    auto* buttons = new QHBoxLayout;
    buttons->addWidget(attDefine);
    buttons->addStretch();
    buttons->addWidget(ok);
    buttons->addWidget(cancel);
    auto* layout = new QVBoxLayout(this);
    layout->addWidget(&m_tree);
    layout->addLayout(buttons);
    resize(300, 380);

    connect(&m_tree, &QTreeWidget::itemSelectionChanged, this, &CChangeNameDlg::OnSelChanged);
    connect(&m_tree, &QTreeWidget::itemDoubleClicked, this, &CChangeNameDlg::OnDblClk);
    connect(ok, &QPushButton::clicked, this, &CChangeNameDlg::OnOK);
    connect(cancel, &QPushButton::clicked, this, &CChangeNameDlg::OnCancel);
    connect(attDefine, &QPushButton::clicked, this, &CChangeNameDlg::OnOpenAttDefine);
}

int CChangeNameDlg::DoModal()
{
    if (!m_bInitialised)
        OnInitDialog();
    return exec() == QDialog::Accepted ? IDOK : IDCANCEL;
}

bool CChangeNameDlg::OnInitDialog()
{
    m_bInitialised = true;
    adjustPosition(parentWidget());
    move(pos() + QPoint(kRightShift, 0));
    if (m_nMode != 0)
        LoadByMode(m_nMode);
    else
        LoadRelatedNames();
    return true;
}

void CChangeNameDlg::LoadByMode(int mode)
{
    m_tree.DeleteAllItems();
    QStringList paths;
    AppendMemberPaths(PickerCategoryIds(mode), paths);
    m_tree.ImpByPaths(paths, CQvTreeCtrl::kImpKeepOrder, true);
    ExpandAndSelect(PickerFallbackPath(mode));
}

void CChangeNameDlg::LoadRelatedNames()
{
    m_tree.DeleteAllItems();
    const SQvKsDetailMemId member = AttNameToAttId(m_strName);
    QStringList categoryIds;
    if (!CReNameMng::GetUpDetail(SmallCategoryIdToIndex(member.SmallCategory()), categoryIds))
        return;
    QStringList paths;
    AppendMemberPaths(categoryIds, paths);
    m_tree.ImpByPaths(paths, CQvTreeCtrl::kImpKeepOrder, true);
    ExpandAndSelect(QString());
}

void CChangeNameDlg::ExpandAndSelect(const QString& fallbackPath)
{
    m_tree.ExpandAllItems();
    QTreeWidgetItem* item = m_tree.GetItemByDir(m_strName);
    if (!item && !fallbackPath.isEmpty())
        item = m_tree.GetItemByDir(fallbackPath);
    // Selecting a category does not change m_strName: only a member does.
    m_tree.SelectItem(item);
}

QString CChangeNameDlg::SelectedLibraryName() const
{
    const QString path = m_tree.GetItemDir(m_tree.GetSelectedItem());
    return IsLibraryName(path) ? path : QString();
}

void CChangeNameDlg::OnSelChanged()
{
    const QString name = SelectedLibraryName();
    if (!name.isEmpty())
        m_strName = name;
}

void CChangeNameDlg::OnDblClk()
{
    const QString name = SelectedLibraryName();
    if (name.isEmpty())
        return;
    m_strName = name;
    OnOK();
}

void CChangeNameDlg::OnOK()
{
    if (SelectedLibraryName().isEmpty()) {
        ShowWarning(QStringLiteral("没有正确选择名称") + g_strExclaim);
        return;
    }
    accept();
}

void CChangeNameDlg::reject()
{
    OnCancel();
}

// Cancel keeps the dialog open only when the name it was opened with has gone from
// the library and nothing else could stand for it.
void CChangeNameDlg::OnCancel()
{
    QTreeWidgetItem* root = m_tree.GetRootItem();
    if (!root) {
        QDialog::reject();
        return;
    }
    m_leafDirs.clear();
    CQvTreeCtrl::GetLeafDirs(&m_tree, root->text(0), root, m_leafDirs);
    if (m_leafDirs.contains(m_strOrigName) || !SelectedLibraryName().isEmpty() || root->childCount() > 0) {
        QDialog::reject();
        return;
    }
    ShowWarning(QStringLiteral("原先名称已经不存在，没有正确选择新的名称") + g_strExclaim);
}

void CChangeNameDlg::OnOpenAttDefine()
{
    g_bAttDefOpened = true;
    m_strName = m_tree.GetItemDir(m_tree.GetSelectedItem());
    const AttDefTarget target = CompleteAttDefPath(m_strName, m_nMode);
    if (!target.bOpen)
        return;
    CProj project;
    const QString previousSpec = project.GetCurrentSpec();
    if (previousSpec != target.strSpec)
        project.SetCurrentSpec(target.strSpec);
    ShowAttDefMainDlg(true, target.strPath, nullptr, true);
    RefreshChangeNameDlgAfterAttDef(target.strSpec);
    if (project.GetCurrentSpec() != previousSpec)
        project.SetCurrentSpec(previousSpec);
}

void RefreshChangeNameDlgAfterAttDef(const QString& spec)
{
    if (!g_bAttDefOpened || !g_pChangeNameDlg)
        return;
    g_bAttDefOpened = false;
    g_pChangeNameDlg->LoadByMode(PickerModeAfterAttDef(spec));
}

int RunChangeNameDlg(QString& name, int mode)
{
    CChangeNameDlg dialog(qobject_cast<QWidget*>(GetActiveWindow()));
    dialog.m_strName = name;
    dialog.m_strOrigName = name;
    dialog.m_nMode = mode;
    int result = IDCANCEL;
    {
        const ResourceScope resources;
        result = dialog.DoModal();
    }
    if (result != IDOK || dialog.m_strName == name)
        return 0;
    name = dialog.m_strName;
    return 1;
}
