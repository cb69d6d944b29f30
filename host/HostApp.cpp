#include "HostApp.h"

#include "CommandLineWidget.h"
#include "DisplayControlWindow.h"
#include "HostOptions.h"
#include "HostSession.h"
#include "HostWindow.h"
#include "ModalDriver.h"
#include "QvKsDataMng.h"
#include "ScriptRunner.h"
#include "WinMessageBox.h"
#include "ZcDbDatabase.h"
#include "ZcUtPrintf.h"

#include <QApplication>
#include <QDir>
#include <QFileInfo>
#include <QTimer>

#include <cstdio>
#include <memory>
#include <thread>

namespace {
void PrintError(const QString& text)
{
    std::fprintf(stderr, "qvhost: %s\n", text.toLocal8Bit().constData());
}
} // namespace

void HostApp::PreparePlatform(const QStringList& arguments)
{
    // Scripts, the usage and a refused call need no display.
    HostOptions options;
    QString error;
    const bool windowShown = HostOptions::Parse(arguments, options, error) && !options.help;
    if (windowShown && options.script.isEmpty())
        return;
    qputenv("QT_QPA_PLATFORM", "offscreen");
    // The offscreen platform's notes on window hints say nothing to a script's reader.
    if (qEnvironmentVariableIsEmpty("QT_LOGGING_RULES"))
        qputenv("QT_LOGGING_RULES", "qt.*.warning=false;default.warning=false");
}

QString HostApp::DefaultPlugin()
{
    const QString path
        = QDir(QCoreApplication::applicationDirPath()).filePath(QStringLiteral("QvCommonSysUI.zrx"));
    return QFileInfo::exists(path) ? path : QString();
}

int HostApp::Run(const QStringList& arguments)
{
    HostOptions options;
    QString error;
    if (!HostOptions::Parse(arguments, options, error)) {
        PrintError(error);
        std::fputs(HostOptions::Usage().toLocal8Bit().constData(), stderr);
        return kBadArguments;
    }
    if (options.help) {
        std::fputs(HostOptions::Usage().toLocal8Bit().constData(), stdout);
        return kOk;
    }
    if (!options.script.isEmpty() && !QFileInfo(options.script).isReadable()) {
        PrintError(QStringLiteral("the script %1 cannot be read").arg(options.script));
        return kBadArguments;
    }
    InstallQtMessageBox();
    HostSession session;
    QString floor;
    QString drawingFile;
    if (!session.OpenProject(options.project, options.floor, floor, drawingFile, error)) {
        PrintError(error);
        return kBadProject;
    }
    // The floor's drawing takes the longest to open on a large floor; the window,
    // which needs only the store until the drawing is shown, is made meanwhile.
    auto database = std::make_unique<ZcDbDatabase>(false, false);
    bool read = false;
    QString readError;
    std::thread reader([&] { read = HostSession::ReadDrawing(*database, floor, drawingFile, readError); });
    HostWindow window(session);
    reader.join();
    if (!read) {
        PrintError(readError);
        return kBadProject;
    }
    session.Install(std::move(database), floor, drawingFile);
    // The plug-ins load before the drawing is shown, so its one regen already shows
    // what they set up; what they print meanwhile waits for the command line. The
    // bar and "显示控制" were filled beside the read: a plug-in that wrote to the
    // store while loading has them filled again.
    const qint64 storeChanges = QvKsDataMng::ChangesMade();
    QString loadText;
    ZcUtOutputSink hostSink = zcutSetOutputSink([&loadText](const QString& text) { loadText += text; });
    const QStringList plugins = options.pluginsGiven ? options.plugins : QStringList { DefaultPlugin() };
    for (const QString& plugin : plugins) {
        if (plugin.isEmpty())
            continue;
        if (!session.LoadPlugin(plugin, error)) {
            zcutSetOutputSink(std::move(hostSink));
            PrintError(error);
            return kBadPlugin;
        }
        loadText += QStringLiteral("\n已加载 %1").arg(QFileInfo(plugin).fileName());
    }
    zcutSetOutputSink(std::move(hostSink));
    if (QvKsDataMng::ChangesMade() != storeChanges)
        window.ReloadStoreViews();
    window.ShowDrawing();
    window.CommandLine()->Print(loadText);
    window.show();
    window.DisplayControl()->move(window.geometry().topRight() - QPoint(280, -60));
    window.DisplayControl()->show();
    if (options.script.isEmpty())
        return QApplication::exec();

    ModalDriver driver;
    ScriptRunner runner(window, driver);
    int result = kOk;
    QTimer::singleShot(0, [&] {
        result = runner.RunFile(options.script) == 0 ? kOk : kScriptFailed;
        QApplication::quit();
    });
    QApplication::exec();
    for (const QString& failure : runner.Failures())
        PrintError(QStringLiteral("script %1: %2").arg(options.script, failure));
    return result;
}
