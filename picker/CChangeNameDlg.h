#pragma once

// The pipeline-information picker "选构件": the attribute library's detail-member
// name paths as a tree; the user picks a member (a leaf) as the name a system code
// carries as its pipeline information. "进入属性" opens the attribute definition
// so that names can be added, after which the tree is loaded again.
#include "CQvTreeCtrl.h"

#include <QDialog>
#include <QString>
#include <QStringList>

class CChangeNameDlg : public QDialog
{
    Q_OBJECT
public:
    explicit CChangeNameDlg(QWidget* parent = nullptr);
    ~CChangeNameDlg() override;

    // Runs the dialog modally: IDOK or IDCANCEL.
    int DoModal();
    bool OnInitDialog();
    // Fills the tree with the names of the mode's categories (1 low-voltage, 2
    // electrical; no names for any other mode) and selects m_strName, else the
    // mode's fallback category.
    void LoadByMode(int mode);
    // Fills the tree with the names of the categories related to m_strName's.
    void LoadRelatedNames();

    CQvTreeCtrl m_tree;
    int m_nMode = 0;
    QString m_strName;
    QStringList m_arr1;
    QStringList m_arr2;
    QString m_strOrigName;
    QStringList m_leafDirs;

    void reject() override;

protected:
    void OnSelChanged();
    void OnDblClk();
    void OnOK();
    void OnCancel();
    void OnOpenAttDefine();

private:
    void CreateControls();
    void ExpandAndSelect(const QString& fallbackPath);
    // The selected item's path when it names a member of the library, else empty.
    QString SelectedLibraryName() const;

    bool m_bInitialised = false;
};

// The picker that exists at the moment (one modal instance at a time), or null.
extern CChangeNameDlg* g_pChangeNameDlg;
// Set when "进入属性" opened the attribute definition; consumed by the refresh.
extern bool g_bAttDefOpened;

// Runs the picker on `name` in `mode` (2 for "电气" codes, 1 for any other
// specialty, 0 for the names related to the current one). 1 when the user
// confirmed a different name, which `name` then holds; 0 leaves `name` as it was.
int RunChangeNameDlg(QString& name, int mode);

// After the attribute definition opened from the picker: loads the picker again
// for the specialty's names (no names for a specialty other than "电气" and "弱电").
void RefreshChangeNameDlgAfterAttDef(const QString& spec);

// The handle the picker makes current in the host while it runs: the module's own,
// given once when the module starts.
void SetChangeNameResourceHandle(void* resourceHandle);
