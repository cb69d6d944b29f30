#include "ScriptRunner.h"

#include "CommandLineWidget.h"
#include "ControlStatements.h"
#include "DrawingView.h"
#include "GridStatements.h"
#include "HostWindow.h"
#include "IFaceBarCtrl.h"
#include "ModalDriver.h"
#include "QvKsDataMng.h"
#include "QvKsSysCodeBar.h"
#include "ScreenshotFile.h"
#include "ScriptAnswers.h"
#include "WidgetInput.h"
#include "WinMessage.h"
#include "ZcApDocManager.h"
#include "ZcEdSelection.h"

#include <QApplication>
#include <QDialog>
#include <QFile>
#include <QFileInfo>
#include <QProcess>
#include <QRegularExpression>
#include <QThread>
#include <QTimer>
#include <QTreeWidget>

#include <cstdio>

namespace {
constexpr int kPumpMs = 10;
// Cancels of one dialog that leave it open before it is closed without asking it.
constexpr int kMaxDismissals = 10;

bool IsStatement(const QString& line)
{
    const QString text = line.trimmed();
    return !text.isEmpty() && !text.startsWith(u'#');
}

} // namespace

ScriptRunner::ScriptRunner(HostWindow& window, ModalDriver& driver)
    : m_window(window)
    , m_driver(driver)
    , m_pumpOwner(std::make_unique<QObject>())
{
    const auto report = [this](const QString& text) { Report(text); };
    QObject::connect(&m_driver, &ModalDriver::report, m_pumpOwner.get(), report);
    // Every question a command asks is written to the command line with its answer,
    // so a script's log shows them all.
    m_answers = std::make_unique<ScriptAnswers>(report, [this] { return m_driver.Pending() > 0; });
    m_answers->SetFailureHooks([this] { return Failing(); },
        [this](const QString& failure) {
            const QString line = m_running.empty() ? QStringLiteral("end")
                                                   : QStringLiteral("line %1").arg(m_running.back().line + 1);
            m_failures.append(line + QStringLiteral(": ") + failure);
            Report(QStringLiteral("failed: ") + failure);
        });
    m_grid = std::make_unique<GridStatements>(report);
    m_controls = std::make_unique<ControlStatements>(report);
    m_commandsChecked = zcDocManagerPtr()->sentStrings().size();
}

ScriptRunner::~ScriptRunner() = default;

void ScriptRunner::Report(const QString& text)
{
    m_window.CommandLine()->Print(QStringLiteral("\n[script] ") + text);
    std::fprintf(stdout, "[script] %s\n", text.toLocal8Bit().constData());
    std::fflush(stdout);
}

int ScriptRunner::RunFile(const QString& path)
{
    QFile file(path);
    if (!file.open(QIODevice::ReadOnly)) {
        m_failures.append(QStringLiteral("the script %1 cannot be read").arg(path));
        return 1;
    }
    return RunText(QString::fromUtf8(file.readAll()));
}

int ScriptRunner::RunText(const QString& text)
{
    m_lines = text.split(u'\n');
    m_next = 0;
    while (m_next < m_lines.size() && m_failures.isEmpty() && !m_window.QuitRequested())
        RunLine(m_next++);
    return m_failures.isEmpty() ? 0 : 1;
}

void ScriptRunner::RunLine(qsizetype index)
{
    const QString line = m_lines[index].trimmed();
    if (!IsStatement(line))
        return;
    const qsizetype blank = line.indexOf(u' ');
    const QString keyword = blank < 0 ? line : line.left(blank);
    const QString rest = blank < 0 ? QString() : line.mid(blank + 1).trimmed();
    m_running.push_back({ WidgetInput::Innermost(), QThread::currentThread()->loopLevel(), index });
    m_answers->StatementStarted();
    SchedulePump();
    QString error;
    const bool ok = Execute(keyword.toLower(), rest, error);
    m_running.pop_back();
    for (const QString& failure : m_driver.Failures())
        if (!m_failures.contains(QStringLiteral("line %1: %2").arg(index + 1).arg(failure)))
            m_failures.append(QStringLiteral("line %1: %2").arg(index + 1).arg(failure));
    if (!ok) {
        m_failures.append(QStringLiteral("line %1: %2").arg(index + 1).arg(error));
        Report(QStringLiteral("failed: line %1: %2").arg(index + 1).arg(error));
    }
}

bool ScriptRunner::Failing() const
{
    return !m_failures.isEmpty() || !m_driver.Failures().isEmpty();
}

// Cancels what a script leaves open: a popup closes, a dialog is rejected. A dialog
// that stays open through every cancel (its own cancel keeps failing) is closed
// without asking it, so a script never hangs.
void ScriptRunner::Dismiss(QWidget* widget)
{
    m_dismissals = widget == m_dismissed.data() ? m_dismissals + 1 : 1;
    m_dismissed = widget;
    auto* dialog = qobject_cast<QDialog*>(widget);
    if (!dialog) {
        widget->close();
        return;
    }
    if (m_dismissals <= kMaxDismissals) {
        dialog->reject();
        return;
    }
    const QString failure
        = QStringLiteral("the dialog \"%1\" stayed open through %2 cancels; closed without it")
              .arg(dialog->windowTitle(), QString::number(kMaxDismissals));
    if (!m_failures.contains(QStringLiteral("end: ") + failure)) {
        m_failures.append(QStringLiteral("end: ") + failure);
        Report(QStringLiteral("failed: ") + failure);
    }
    dialog->QDialog::done(QDialog::Rejected);
}

void ScriptRunner::SchedulePump()
{
    if (m_pumpScheduled)
        return;
    m_pumpScheduled = true;
    // A fresh single shot each tick: it fires in whatever event loop runs then, also
    // in the one of a dialog a line of the pump itself opened.
    QTimer::singleShot(kPumpMs, m_pumpOwner.get(), [this] { Pump(); });
}

void ScriptRunner::Pump()
{
    m_pumpScheduled = false;
    if (m_running.empty())
        return;
    SchedulePump();
    QWidget* innermost = WidgetInput::Innermost();
    const Running& running = m_running.back();
    if (!innermost || innermost == running.innermost.data() || m_driver.Pending() > 0
        || QThread::currentThread()->loopLevel() <= running.loopLevel)
        return;
    // A dialog or menu opened over the running statement: the next line works it.
    m_driver.KeepAlive();
    while (m_next < m_lines.size() && !IsStatement(m_lines[m_next]))
        ++m_next;
    if (m_next >= m_lines.size()) {
        const QString failure = QStringLiteral("the dialog \"%1\" waited with no line left to run; cancelled")
                                    .arg(innermost->windowTitle());
        if (!m_failures.contains(QStringLiteral("end: ") + failure)) {
            m_failures.append(QStringLiteral("end: ") + failure);
            Report(QStringLiteral("failed: ") + failure);
        }
        Dismiss(innermost);
        return;
    }
    if (Failing()) {
        Dismiss(innermost);
        return;
    }
    RunLine(m_next++);
}

bool ScriptRunner::Execute(const QString& keyword, const QString& rest, QString& error)
{
    if (keyword == QLatin1String("command")) {
        m_window.CommandLine()->Print(QStringLiteral("\n命令: %1").arg(rest));
        m_window.RunCommandText(rest + u' ');
        return true;
    }
    if (keyword == QLatin1String("select"))
        return Select(rest, error);
    if (keyword == QLatin1String("select-cancel")) {
        zcedSSQueueCancel();
        return true;
    }
    if (keyword == QLatin1String("answer"))
        return m_answers->QueueBoxAnswer(rest, error);
    if (keyword == QLatin1String("file"))
        return m_answers->QueueFile(rest, error);
    if (keyword == QLatin1String("color"))
        return m_answers->QueueColour(rest, error);
    if (keyword == QLatin1String("dialog"))
        return Dialog(rest, error);
    if (keyword == QLatin1String("dialog-timeout")) {
        bool ok = false;
        const int ms = rest.toInt(&ok);
        m_driver.SetTimeout(ms);
        error = QStringLiteral("dialog-timeout needs milliseconds");
        return ok && ms > 0;
    }
    if (keyword == QLatin1String("sql")) {
        if (!QvKsDataMng::RunScript(rest, &error))
            return false;
        Report(QStringLiteral("store updated"));
        return true;
    }
    if (keyword == QLatin1String("run"))
        return RunProgram(rest, error);
    if (keyword == QLatin1String("zoom")) {
        if (rest == QLatin1String("extents")) {
            m_window.View()->ZoomExtents();
            return true;
        }
        bool ok = false;
        const double factor = rest.toDouble(&ok);
        if (ok && factor > 0)
            m_window.View()->ZoomBy(
                factor, QPointF(m_window.View()->width() / 2.0, m_window.View()->height() / 2.0));
        error = QStringLiteral("zoom extents | zoom FACTOR");
        return ok && factor > 0;
    }
    if (keyword == QLatin1String("echo")) {
        Report(rest);
        return true;
    }
    bool handled = false;
    bool ok = m_grid->Execute(keyword, rest, error, handled);
    if (!handled)
        ok = m_controls->Execute(keyword, rest, error, handled);
    if (handled)
        return ok;
    return keyword.startsWith(QLatin1String("expect")) ? ExecuteCheck(keyword, rest, error)
                                                       : ExecuteWindow(keyword, rest, error);
}

bool ScriptRunner::ExecuteWindow(const QString& keyword, const QString& rest, QString& error)
{
    if (keyword == QLatin1String("screenshot"))
        return Screenshot(&m_window, rest, error);
    if (keyword == QLatin1String("screenshot-dialog")) {
        QWidget* dialog = WidgetInput::Innermost();
        error = QStringLiteral("expected an open dialog to save, found none");
        return dialog && Screenshot(dialog, rest, error);
    }
    if (keyword == QLatin1String("screenshot-window")) {
        const QString title = rest.section(u' ', 0, 0);
        const QString file = rest.section(u' ', 1).trimmed();
        QWidget* window = qobject_cast<QWidget*>(FindWindow(nullptr, title));
        if (!window) {
            error = QStringLiteral("no window titled \"%1\"").arg(title);
            return false;
        }
        return Screenshot(window, file, error);
    }
    if (keyword == QLatin1String("message")) {
        const QString title = rest.section(u' ', 0, -2);
        bool ok = false;
        const UINT number = rest.section(u' ', -1).toUInt(&ok);
        HWND window = FindWindow(nullptr, title);
        if (!ok || !window) {
            error = ok ? QStringLiteral("no window titled \"%1\"").arg(title)
                       : QStringLiteral("message TITLE NUMBER");
            return false;
        }
        Report(QStringLiteral("message %1 to \"%2\" -> %3")
                   .arg(number)
                   .arg(title)
                   .arg(SendMessage(window, number, 0, 0)));
        return true;
    }
    if (keyword == QLatin1String("bar-select")) {
        IFaceBarCtrl::SetTreeItem(rest);
        error = QStringLiteral("the attribute bar has no code \"%1\"").arg(rest);
        return IFaceBarCtrl::CurSysCode() == IFaceBarCtrl::ResolveCode(rest)
            && !IFaceBarCtrl::CurSysCode().isEmpty();
    }
    if (keyword == QLatin1String("bar-dblclick"))
        return BarDoubleClick(rest, error);
    error = QStringLiteral("unknown statement \"%1\"").arg(keyword);
    return false;
}

bool ScriptRunner::ExecuteCheck(const QString& keyword, const QString& rest, QString& error)
{
    if (keyword == QLatin1String("expect") || keyword == QLatin1String("expect-not")) {
        const bool found = m_window.CommandLine()->HistoryText().contains(rest);
        const bool wanted = keyword == QLatin1String("expect");
        error = (wanted ? QStringLiteral("the command history has no \"%1\"")
                        : QStringLiteral("the command history has \"%1\""))
                    .arg(rest);
        return found == wanted;
    }
    if (keyword == QLatin1String("expect-box"))
        return m_answers->ExpectBox(rest, error);
    if (keyword == QLatin1String("expect-no-box"))
        return m_answers->ExpectNoBox(error);
    if (keyword == QLatin1String("expect-commands"))
        return ExpectCommands(rest, error);
    if (keyword == QLatin1String("expect-bar")) {
        error = QStringLiteral("the attribute bar shows \"%1\", not \"%2\"")
                    .arg(IFaceBarCtrl::CurSysCode(), rest);
        return IFaceBarCtrl::CurSysCode() == rest;
    }
    error = QStringLiteral("unknown statement \"%1\"").arg(keyword);
    return false;
}

bool ScriptRunner::ExpectCommands(const QString& rest, QString& error)
{
    const QStringList& sent = zcDocManagerPtr()->sentStrings();
    QStringList words;
    for (qsizetype i = m_commandsChecked; i < sent.size(); ++i)
        words.append(sent[i].split(QRegularExpression(QStringLiteral("\\s+")), Qt::SkipEmptyParts));
    m_commandsChecked = sent.size();
    const QString found = words.join(u' ');
    const QString wanted = rest.split(u' ', Qt::SkipEmptyParts).join(u' ');
    error = QStringLiteral("expected the commands \"%1\" sent to the document, found \"%2\"")
                .arg(wanted, found);
    return found.compare(wanted, Qt::CaseInsensitive) == 0;
}

bool ScriptRunner::RunProgram(const QString& rest, QString& error)
{
    QStringList words = QProcess::splitCommand(rest);
    if (words.isEmpty()) {
        error = QStringLiteral("run PROGRAM ARG…");
        return false;
    }
    QString program = words.takeFirst();
    const QString beside = QCoreApplication::applicationDirPath() + u'/' + program;
    if (!program.contains(u'/') && QFileInfo(beside).isExecutable())
        program = beside;
    QProcess process;
    process.setProcessChannelMode(QProcess::MergedChannels);
    process.start(program, words);
    constexpr int kWaitMs = 60000;
    if (!process.waitForStarted(kWaitMs) || !process.waitForFinished(kWaitMs)) {
        process.kill();
        process.waitForFinished();
        error = QStringLiteral("%1 did not run to its end: %2").arg(program, process.errorString());
        return false;
    }
    const QString output = QString::fromUtf8(process.readAll()).trimmed();
    if (!output.isEmpty())
        Report(output);
    if (process.exitStatus() != QProcess::NormalExit || process.exitCode() != 0) {
        error = QStringLiteral("%1 ended with %2").arg(program).arg(process.exitCode());
        return false;
    }
    return true;
}

bool ScriptRunner::Select(const QString& rest, QString& error)
{
    const QStringList parts = rest.split(u' ', Qt::SkipEmptyParts);
    double v[4] = {};
    bool ok = parts.size() == 4;
    for (int i = 0; ok && i < 4; ++i)
        v[i] = parts[i].toDouble(&ok);
    if (!ok) {
        error = QStringLiteral("select X1 Y1 X2 Y2");
        return false;
    }
    const std::vector<ZcDbObjectId> ids
        = m_window.View()->SelectBox(QPointF(v[0], v[1]), QPointF(v[2], v[3]));
    zcedSSQueueSelection(ids);
    Report(QStringLiteral("selection of %1 objects queued").arg(ids.size()));
    return true;
}

bool ScriptRunner::Dialog(const QString& rest, QString& error)
{
    const QString kind = rest.section(u' ', 0, 0).toLower();
    const QString value = rest.section(u' ', 1).trimmed();
    bool ok = false;
    const int id = value.toInt(&ok);
    ModalDriver::Step step;
    if (kind == QLatin1String("ok"))
        step.kind = ModalDriver::Step::Accept;
    else if (kind == QLatin1String("cancel"))
        step.kind = ModalDriver::Step::Reject;
    else if (kind == QLatin1String("screenshot") && !value.isEmpty())
        step = ModalDriver::Step::Make(ModalDriver::Step::Screenshot, 0, QFileInfo(value).absoluteFilePath());
    else if (kind == QLatin1String("click") && ok)
        step = ModalDriver::Step::Make(ModalDriver::Step::Click, id);
    else if (kind == QLatin1String("expect") && ok)
        step = ModalDriver::Step::Make(ModalDriver::Step::Expect, id);
    else {
        error = QStringLiteral("dialog screenshot FILE | expect ID | click ID | ok | cancel");
        return false;
    }
    m_driver.Queue(step);
    return true;
}

bool ScriptRunner::Screenshot(QWidget* widget, const QString& file, QString& error)
{
    if (file.isEmpty()) {
        error = QStringLiteral("screenshot needs a file name");
        return false;
    }
    const QString path = QFileInfo(file).absoluteFilePath();
    QApplication::processEvents();
    if (const QvKsWriteStatus saved = SaveScreenshot(widget, path); !saved) {
        error = saved.Describe();
        return false;
    }
    Report(QStringLiteral("\"%1\" saved to %2").arg(widget->windowTitle(), path));
    return true;
}

bool ScriptRunner::BarDoubleClick(const QString& code, QString& error)
{
    QvKsSysCodeBar* bar = IFaceBarCtrl::SysCodeBar();
    QTreeWidgetItem* item = bar ? bar->ItemOf(IFaceBarCtrl::ResolveCode(code)) : nullptr;
    if (!item) {
        error = QStringLiteral("the attribute bar has no code \"%1\"").arg(code);
        return false;
    }
    bar->Tree()->setCurrentItem(item);
    Q_EMIT bar->Tree()->itemDoubleClicked(item, 0);
    // The bar calls the registered function queued: let it run (it may open dialogs,
    // which the queued dialog steps work).
    QApplication::processEvents();
    QApplication::processEvents();
    return true;
}
