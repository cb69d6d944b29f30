#pragma once

// Runs a qvhost script: one statement a line, "#" starts a comment. Statements:
//
//   command TEXT          type TEXT on the command line and run it ("bhgl", "regen")
//   select X1 Y1 X2 Y2    queue a selection for the next zcedSSGet: the entities a box
//                         in drawing coordinates selects (X1 < X2 window, X1 > X2 crossing)
//   select-cancel         queue a cancelled selection
//   answer WHAT           queue the answer to the next message box: ok, cancel, yes, no
//                         or a number (without one the box's default answer is taken)
//   dialog STEP           queue a step for the next modal dialog, in order:
//                         screenshot FILE | expect ID | click ID | ok | cancel
//   dialog-timeout MS     how long a dialog without steps may wait before it is cancelled
//   screenshot FILE       save the main window to a PNG file
//   screenshot-window TITLE FILE   save the top-level window of that title
//   message TITLE NUMBER  send the window message NUMBER to the window of that title
//   bar-select CODE       make CODE ("&"-joined levels) current in the attribute bar
//   bar-dblclick CODE     double-click CODE in the attribute bar
//   sql TEXT              run SQL on the project store (one transaction)
//   expect TEXT           fail unless the command history contains TEXT
//   expect-not TEXT       fail if it does
//   expect-bar CODE       fail unless the attribute bar's current code is CODE
//   zoom extents | zoom FACTOR
//   echo TEXT             print TEXT on the command line
//
// Relative file names are taken from the current folder. The script stops at the
// first failing statement; Run() returns 0 when every statement succeeded.
#include <QString>
#include <QStringList>

#include <deque>

class HostWindow;
class ModalDriver;
class QWidget;

class ScriptRunner
{
public:
    ScriptRunner(HostWindow& window, ModalDriver& driver);
    ~ScriptRunner();

    // Runs the file; the failures (with their line numbers) are in Failures().
    int RunFile(const QString& path);
    int RunText(const QString& text);
    const QStringList& Failures() const { return m_failures; }

private:
    bool Execute(const QString& keyword, const QString& rest, QString& error);
    bool ExecuteWindow(const QString& keyword, const QString& rest, QString& error);
    bool ExecuteCheck(const QString& keyword, const QString& rest, QString& error);
    bool Select(const QString& rest, QString& error);
    bool Answer(const QString& rest, QString& error);
    bool Dialog(const QString& rest, QString& error);
    bool Screenshot(QWidget* widget, const QString& file, QString& error);
    bool BarDoubleClick(const QString& code, QString& error);
    void Report(const QString& text);

    HostWindow& m_window;
    ModalDriver& m_driver;
    std::deque<int> m_answers;
    QStringList m_failures;
};
