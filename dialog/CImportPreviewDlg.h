#pragma once

// "导入预览": before a system-code file is merged into the specialty, the codes it
// will add (under their parent), the codes whose attributes change (each change
// old → new) and the codes it leaves as they are. OK imports, Cancel changes nothing.
#include "SysCodeImportPreview.h"

#include <QDialog>

class QLabel;
class QTreeWidget;

class CImportPreviewDlg : public QDialog
{
    Q_OBJECT
public:
    CImportPreviewDlg(
        const SysCodeImportPreview& preview, const QString& fileName, QWidget* parent = nullptr);

    // IDOK or IDCANCEL.
    int DoModal();

    // "新增 N 个，修改 N 个，不变 N 个".
    static QString SummaryText(const SysCodeImportPreview& preview);

private:
    void FillList(const SysCodeImportPreview& preview);

    QLabel* m_summary = nullptr;
    QTreeWidget* m_list = nullptr;
};
