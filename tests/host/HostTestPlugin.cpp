// A tiny application file for the host tests: a command that selects, queues a
// redraw and reports; a command that opens a dialog and asks a question; one that
// opens the CAD colour dialog; one with a grid and common controls; one with a plain
// tree widget; one that asks for a file; one that will not close; the attribute
// bar's double-click callback; and, when asked, a code written to the store as it
// loads.
#include "CISysCode.h"
#include "CProj.h"
#include "CSysCodeData.h"
#include "GridTestDialog.h"
#include "IFaceBarCtrl.h"
#include "QvKsCADColorTool.h"
#include "StubbornDialog.h"
#include "TreeWidgetDialog.h"
#include "WinFileDialog.h"
#include "WinMessageBox.h"
#include "ZcApDocManager.h"
#include "ZcEdCommandStack.h"
#include "ZcEdSelection.h"
#include "ZcRxDictionary.h"
#include "ZcRxDynamicLinker.h"
#include "ZcRxEntryPoint.h"
#include "ZcUtPrintf.h"

#include <QDialog>
#include <QHBoxLayout>
#include <QPushButton>

namespace {
void onSelect()
{
    zcutPrintf(u"\n[qvhtest] ran");
    zds_name ss;
    if (zcedSSGet(u"-W-WP", nullptr, nullptr, nullptr, ss) != RTNORM) {
        zcutPrintf(u"\n[qvhtest] cancelled");
        return;
    }
    qint32 length = 0;
    zcedSSLength(ss, &length);
    zcedSSFree(ss);
    zcutPrintf(QStringLiteral("\n[qvhtest] selected %1").arg(length));
    ZcApDocManager* manager = zcDocManagerPtr();
    manager->sendStringToExecute(manager->curDocument(), u"fredraw ", false, true, false);
    zcutPrintf(u"\n[qvhtest] done");
}

// A plug-in that sets up codes as it loads: the top-level code named by
// QVHTEST_CODE_AT_LOAD joins the current specialty.
void addCodeAtLoad()
{
    const QString name = qEnvironmentVariable("QVHTEST_CODE_AT_LOAD");
    const QString spec = CProj().GetCurrentSpec();
    CSysCodeData root;
    if (name.isEmpty() || spec.isEmpty() || !CISysCode::GetSpecCodeInfos(root, spec))
        return;
    auto* code = new CSysCodeData;
    code->SetNodeName(name);
    int counter = 0;
    root.AddDataToChild(counter, code, true);
    CISysCode::SetSpecCodeInfos(root, spec);
}

void onDialog()
{
    QDialog dialog;
    dialog.setWindowTitle(QStringLiteral("测试对话框"));
    auto* layout = new QHBoxLayout(&dialog);
    for (int id : { 1, 2, 300 }) {
        auto* button = new QPushButton(QStringLiteral("按钮 %1").arg(id), &dialog);
        button->setProperty("controlId", id);
        layout->addWidget(button);
        QObject::connect(button, &QPushButton::clicked, &dialog, [&dialog, id] { dialog.done(id); });
    }
    const int result = dialog.exec();
    const int answer
        = MessageBoxExW(GetActiveWindow(), QStringLiteral("继续吗?"), QStringLiteral("Quorvatek"), 0x12034);
    zcutPrintf(QStringLiteral("\n[qvhdlg] result %1 answer %2").arg(result).arg(answer));
}

void onColor()
{
    COLORREF chosen = 0;
    const bool ok = QvKsCADColorTool::InvokeCADColorDlg(0x000000FF, chosen);
    zcutPrintf(QStringLiteral("\n[qvhcolor] %1 %2").arg(ok).arg(chosen, 8, 16, QLatin1Char('0')));
}

void onGrid()
{
    GridTestDialog dialog;
    zcutPrintf(QStringLiteral("\n[qvhgrid] result %1").arg(dialog.exec()));
}

void onTree()
{
    TreeWidgetDialog dialog;
    zcutPrintf(QStringLiteral("\n[qvhtree] result %1").arg(dialog.exec()));
}

void onFile()
{
    CFileDialog dialog(
        TRUE, QStringLiteral("scn"), QStringLiteral("照明.scn"), 0, QStringLiteral("系统编号文件|*.scn|"));
    dialog.m_strTitle = QStringLiteral("导入系统编号");
    const bool ok = dialog.DoModal() == IDOK;
    zcutPrintf(QStringLiteral("\n[qvhfile] %1").arg(ok ? dialog.GetPathName() : QStringLiteral("cancelled")));
}

void onStubborn()
{
    StubbornDialog dialog;
    zcutPrintf(QStringLiteral("\n[qvhstubborn] result %1").arg(dialog.exec()));
}

void onBarDbClick()
{
    zcutPrintf(QStringLiteral("\n[qvhtest] dblclick %1").arg(IFaceBarCtrl::CurSysCode()));
}
} // namespace

extern "C" int zcrxGetApiVersion()
{
    return ZCRX_API_VERSION;
}

extern "C" ZcRx::AppRetCode zcrxEntryPoint(ZcRx::AppMsgCode msg, void* appId)
{
    if (msg != kInitAppMsg)
        return kRetOK;
    auto* linker = ZcRxDynamicLinker::cast(zcrxSysRegistry()->at(ZCRX_DYNAMIC_LINKER));
    linker->unlockApplication(appId);
    auto* commands = ZcEdCommandStack::cast(zcrxSysRegistry()->at(ZCRX_COMMAND_DOCK));
    commands->addCommand(u"QVHTEST", u"_qvhtest", u"qvhtest", 0, onSelect);
    commands->addCommand(u"QVHTEST", u"_qvhdlg", u"qvhdlg", 0, onDialog);
    commands->addCommand(u"QVHTEST", u"_qvhcolor", u"qvhcolor", 0, onColor);
    commands->addCommand(u"QVHTEST", u"_qvhgrid", u"qvhgrid", 0, onGrid);
    commands->addCommand(u"QVHTEST", u"_qvhtree", u"qvhtree", 0, onTree);
    commands->addCommand(u"QVHTEST", u"_qvhfile", u"qvhfile", 0, onFile);
    commands->addCommand(u"QVHTEST", u"_qvhstubborn", u"qvhstubborn", 0, onStubborn);
    IFaceBarCtrl::RegDbClickSysFunc(&onBarDbClick);
    addCodeAtLoad();
    zcutPrintf(u"\n[qvhtest] loaded");
    return kRetOK;
}
