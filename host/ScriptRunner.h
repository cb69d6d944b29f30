#pragma once

// Runs a qvhost script: one statement a line, "#" starts a comment.
//
// Linear scripts: a statement that opens a modal dialog or a popup menu ("command
// bhgl", "click 202", "rclick 公共照明") waits inside it, and the lines after it run
// inside that dialog, one at a time, until one of them closes it; then the waiting
// statement returns and the script goes on after the last line that ran. Nested
// dialogs work the same way. Dialog statements act on the innermost open dialog, the
// grid statements on its grid, through real mouse and key events.
//
//   command TEXT          type TEXT on the command line and run it ("bhgl", "regen")
//   select X1 Y1 X2 Y2    queue a selection for the next zcedSSGet (X1 < X2 window,
//                         X1 > X2 crossing) | select-cancel
//   answer WHAT           queue the answer to the next message box: ok, cancel, yes, no,
//                         or a number (without one the box's default answer is taken)
//   file PATH|cancel      queue the answer to the next file dialog
//   color ACI|R,G,B|0xBBGGRR|cancel   queue the answer to the next colour dialog
//   dialog STEP           queue a step for the next modal dialog: screenshot FILE |
//                         expect ID | click ID | ok | cancel (taken before linear lines)
//   dialog-timeout MS     how long a dialog may wait with nothing to do before it is
//                         cancelled (the script fails)
//   rows on the grid:     row ROW [COL] | row-ctrl ROW [COL] | row-shift ROW [COL] |
//                         rclick ROW [COL] |
//                         rclick-empty | dblclick ROW COL | drag ROW TARGET |
//                         drag-ctrl ROW TARGET | drag-out ROW | expand ROW | collapse ROW
//   editing:              edit ROW COL | type TEXT | key KEY | click-outside |
//                         cell-button ID | pick TEXT (in the open drop-down editor)
//   controls:             click ID | check ID | uncheck ID | set-text ID TEXT |
//                         choose ID TEXT | ok | cancel | close | menu ID
//   checks:               expect-cell ROW COL TEXT | expect-color ROW COL COLOUR |
//                         expect-back ROW COL COLOUR | expect-rows DUMP |
//                         expect-selected ROW | ROW … | rows (prints them) |
//                         expect-menu ID enabled|disabled|absent |
//                         expect-visible|hidden|enabled|disabled|checked|unchecked ID |
//                         expect-text ID TEXT | expect-title TEXT |
//                         expect-box TEXT | expect-no-box | expect-commands WORD… |
//                         expect TEXT | expect-not TEXT | expect-bar CODE
//   screenshot FILE | screenshot-dialog FILE (the innermost dialog or menu) |
//   screenshot-window TITLE FILE | message TITLE NUMBER |
//   bar-select CODE | bar-dblclick CODE | sql TEXT | zoom extents|FACTOR | echo TEXT
//
// ROW is the full name, levels joined by "&"; COL a column number or title; words
// with blanks go in double quotes. host/README.md has the details. Relative file
// names are taken from the current folder. The script stops at the first failing
// statement (a dialog still open is cancelled; after a failure every box with no
// answer queued says No or Cancel, so a failed script saves nothing by default, and
// a dialog that stays open through repeated cancels is closed without them); Run()
// returns 0 when all succeeded. The same message box coming back again and again
// with nothing queued and no statement run in between fails the script.
#include <QPointer>
#include <QString>
#include <QStringList>

#include <memory>
#include <vector>

class ControlStatements;
class GridStatements;
class HostWindow;
class ModalDriver;
class QObject;
class QWidget;
class ScriptAnswers;

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
    void RunLine(qsizetype index);
    void SchedulePump();
    void Pump();
    bool Execute(const QString& keyword, const QString& rest, QString& error);
    bool ExecuteWindow(const QString& keyword, const QString& rest, QString& error);
    bool ExecuteCheck(const QString& keyword, const QString& rest, QString& error);
    bool ExpectCommands(const QString& rest, QString& error);
    bool Select(const QString& rest, QString& error);
    // "run PROGRAM ARG…": another program on the same project, such as a colleague's
    // qvproj, waited for; a program beside qvhost is found by its name.
    bool RunProgram(const QString& rest, QString& error);
    bool Dialog(const QString& rest, QString& error);
    bool Screenshot(QWidget* widget, const QString& file, QString& error);
    bool BarDoubleClick(const QString& code, QString& error);
    void Report(const QString& text);
    bool Failing() const;
    void Dismiss(QWidget* widget);

    HostWindow& m_window;
    ModalDriver& m_driver;
    std::unique_ptr<ScriptAnswers> m_answers;
    std::unique_ptr<GridStatements> m_grid;
    std::unique_ptr<ControlStatements> m_controls;
    // The pump's ticks belong to it: none fires after the runner is gone.
    std::unique_ptr<QObject> m_pumpOwner;
    QStringList m_lines;
    qsizetype m_next = 0;
    // For each statement running, the dialog or popup that was innermost when it
    // started and the event-loop depth then: a different one on top, with a deeper
    // loop running, means the statement waits inside it (a combo's list that a
    // statement opens and closes itself runs no loop of its own).
    struct Running
    {
        QPointer<QWidget> innermost;
        int loopLevel = 0;
        qsizetype line = 0;
    };
    std::vector<Running> m_running;
    bool m_pumpScheduled = false;
    // The dialog being cancelled and how often in a row.
    QPointer<QWidget> m_dismissed;
    int m_dismissals = 0;
    qsizetype m_commandsChecked = 0;
    QStringList m_failures;
};
