#include "HostWindow.h"

#include "CISysCode.h"
#include "CProj.h"
#include "CSysCodeData.h"
#include "CommandLineWidget.h"
#include "DisplayControlWindow.h"
#include "DisplayListBuilder.h"
#include "DrawingView.h"
#include "HostDrawingCommands.h"
#include "HostSession.h"
#include "IFaceBarCtrl.h"
#include "LineTypeMgr.h"
#include "QvKsCodeStyles.h"
#include "QvKsSysCodeBar.h"
#include "ZcApDocManager.h"
#include "ZcDbDatabase.h"
#include "ZcEdCommandStack.h"
#include "ZcEdSelection.h"
#include "ZcUtPrintf.h"

#include <QApplication>
#include <QCloseEvent>
#include <QDockWidget>
#include <QLabel>
#include <QStatusBar>
#include <QTimer>

namespace {
constexpr double kDrawingUnitsPerPatternUnit = 100.0;

bool CurrentSpecCodes(QString& spec, CSysCodeData& root)
{
    spec = CProj().GetCurrentSpec();
    return !spec.isEmpty() && CISysCode::GetSpecCodeInfos(root, spec);
}
} // namespace

HostWindow::HostWindow(HostSession& session, QWidget* parent)
    : QMainWindow(parent)
    , m_session(session)
    , m_view(new DrawingView(this))
    , m_commandLine(new CommandLineWidget(this))
    , m_barDock(new QDockWidget(tr("属性栏"), this))
    , m_displayControl(new DisplayControlWindow(this))
    , m_status(new QLabel(this))
    , m_queueTimer(new QTimer(this))
    , m_drawingCommands(std::make_unique<HostDrawingCommands>(*this, session))
{
    setObjectName(QStringLiteral("hostWindow"));
    setCentralWidget(m_view);
    auto* commandDock = new QDockWidget(tr("命令行"), this);
    commandDock->setObjectName(QStringLiteral("commandDock"));
    commandDock->setWidget(m_commandLine);
    commandDock->setFeatures(QDockWidget::DockWidgetMovable | QDockWidget::DockWidgetFloatable);
    addDockWidget(Qt::BottomDockWidgetArea, commandDock);
    m_barDock->setObjectName(QStringLiteral("attributeBarDock"));
    IFaceBarCtrl::SetSysCodeProvider(&CurrentSpecCodes);
    m_barDock->setWidget(IFaceBarCtrl::CreateSysCodeBar(m_barDock));
    addDockWidget(Qt::LeftDockWidgetArea, m_barDock);
    statusBar()->addWidget(m_status, 1);
    resize(1280, 800);
    resizeDocks({ commandDock }, { 150 }, Qt::Vertical);
    resizeDocks({ m_barDock }, { 230 }, Qt::Horizontal);

    zcutSetOutputSink([this](const QString& text) { m_commandLine->Print(text); });
    zcedSSSetInteractiveHandler([this](const QString&, std::vector<ZcDbObjectId>& picked) {
        return m_view->RunSelection(picked) ? RTNORM : RTCAN;
    });
    m_loop.setFallbackHandler([this](const QString& word) { return RunHostCommand(word); });
    connect(m_commandLine, &CommandLineWidget::submitted, this,
        [this](const QString& text) { RunCommandText(text); });
    connect(m_view, &DrawingView::prompt, m_commandLine, &CommandLineWidget::Print);
    m_commandLine->SetCommandNames([this] { return CommandNames(); });
    // Strings queued outside a command (a bar double-click, say) run once the host
    // is idle again: no command running and no modal dialog open.
    connect(m_queueTimer, &QTimer::timeout, this, &HostWindow::RunQueuedStrings);
    m_queueTimer->start(40);

    // The bar was filled from the store as it was made, its provider set, just above.
    m_displayControl->Reload();
    if (m_session.Database())
        ShowDrawing();
}

HostWindow::~HostWindow()
{
    zcutSetOutputSink({});
    zcedSSSetInteractiveHandler({});
    IFaceBarCtrl::SetSysCodeProvider({});
}

int HostWindow::RunCommandText(const QString& text)
{
    if (m_inCommand) {
        // Typed while a command waits (a selection, say): queue it behind.
        zcDocManagerPtr()->sendStringToExecute(zcDocManagerPtr()->curDocument(), text, false, true, false);
        return 0;
    }
    m_inCommand = true;
    const int run = m_loop.type(text);
    m_inCommand = false;
    return run;
}

void HostWindow::RunQueuedStrings()
{
    if (m_inCommand || QApplication::activeModalWidget() || m_view->IsSelecting()
        || !zcDocManagerPtr()->hasPendingStrings())
        return;
    m_inCommand = true;
    m_loop.runPending();
    m_inCommand = false;
}

bool HostWindow::RunHostCommand(const QString& word)
{
    if (m_awaitFloor) {
        m_awaitFloor = false;
        SwitchFloor(word);
        return true;
    }
    const QString name = word.toUpper().remove(0, word.startsWith(u'_') ? 1 : 0);
    if (m_drawingCommands->Run(name))
        return true;
    if (name == QLatin1String("REGEN")) {
        Regen();
        zcutPrintf(QStringLiteral("\n正在重生成模型。"));
    } else if (name == QLatin1String("FREDRAW")) {
        Fredraw();
    } else if (name == QLatin1String("FLOOR")) {
        m_awaitFloor = true;
        zcutPrintf(QStringLiteral("\n楼层名称 [%1]:").arg(m_session.Floors().join(u'/')));
    } else if (name == QLatin1String("QUIT")) {
        m_quit = true;
        Q_EMIT quitRequested();
        close();
    } else {
        return false;
    }
    return true;
}

QStringList HostWindow::CommandNames() const
{
    QStringList names { QStringLiteral("REGEN"), QStringLiteral("FREDRAW"), QStringLiteral("FLOOR"),
        QStringLiteral("QUIT") };
    for (const HostCommandName& command : HostDrawingCommands::Names())
        names << command.local << u'_' + command.global;
    for (const ZcEdCommand* command : zcedRegCmds()->commands())
        names << command->localName() << u'_' + command->globalName();
    names.removeDuplicates();
    return names;
}

void HostWindow::ReloadStoreViews()
{
    IFaceBarCtrl::ReFreshSysCodeBar();
    m_displayControl->Reload();
}

void HostWindow::ShowDrawing()
{
    Regen();
    m_view->ZoomExtents();
    // What the drawing holds but the view cannot show, and what its reader passed
    // over, is said once a drawing.
    const ZcDbDatabase* drawing = m_session.Database();
    if (!drawing || drawing->serial() == m_announcedDrawing)
        return;
    m_announcedDrawing = drawing->serial();
    for (const QString& note : drawing->readNotes())
        zcutPrintf(QStringLiteral("\n读图时跳过: %1").arg(note));
    if (!m_notShown.isEmpty())
        zcutPrintf(u'\n' + m_notShown);
}

void HostWindow::Regen()
{
    ++m_regens;
    const DisplayListBuilder builder = MakeBuilder();
    builder.Build(m_session.Database(), m_view->List());
    m_notShown = builder.NotShownSummary();
    Regenerated();
}

DisplayListBuilder HostWindow::MakeBuilder() const
{
    QvKsCodeStyles::Instance().Reload();
    LineTypeMgr::Instance()->LoadOrBuild(QvKsCodeStyles::Instance());
    DisplayListBuilder::Settings settings;
    const CProj project;
    settings.colorBySystem = project.GetColorShowType() == 1;
    QString scale;
    bool ok = false;
    const double ltScale = CISysCode::GetLineTypeScale(scale) ? scale.toDouble(&ok) : 1.0;
    settings.lineTypeScale = (ok && ltScale > 0 ? ltScale : 1.0) * kDrawingUnitsPerPatternUnit;
    return DisplayListBuilder(QvKsCodeStyles::Instance(), *LineTypeMgr::Instance(), settings);
}

void HostWindow::Regenerated()
{
    UpdateStatus();
    m_view->update();
}

void HostWindow::Fredraw()
{
    m_view->update();
    m_view->repaint();
}

bool HostWindow::SwitchFloor(const QString& floor)
{
    QString error;
    if (!m_session.SwitchFloor(floor, error)) {
        zcutPrintf(u'\n' + error);
        return false;
    }
    ShowDrawing();
    zcutPrintf(QStringLiteral("\n当前楼层: %1").arg(floor));
    return true;
}

void HostWindow::UpdateStatus()
{
    const CProj project;
    setWindowTitle(QStringLiteral("qvhost - %1 - %2").arg(project.GetPrjName(), m_session.Floor()));
    m_status->setText(QStringLiteral("楼层 %1 | 专业 %2 | %3 | %4 个对象")
                          .arg(m_session.Floor(), project.GetCurrentSpec(),
                              project.GetColorShowType() == 1 ? tr("按系统显示颜色") : tr("按图层显示颜色"))
                          .arg(m_view->List().Entities().size()));
}

void HostWindow::closeEvent(QCloseEvent* event)
{
    m_view->CancelSelection();
    m_quit = true;
    Q_EMIT quitRequested();
    event->accept();
}
