#pragma once

// What a script answers for the questions a command asks while it runs: message
// boxes, the file dialog and the CAD colour dialog, each from its own queue in the
// order the script gave them. Every question is reported with what it asked and the
// answer it got; a question with nothing queued takes the box's default button, or
// a cancel for the file and colour dialogs.
//
// Once the script has failed, a box with nothing queued takes No (or Cancel): a
// failing script never saves by default. The same box shown again and again with
// nothing queued and no statement run in between fails the script.
#include "QvKsCADColorTool.h"
#include "WinFileDialog.h"
#include "WinMessageBox.h"
#include "WinTypes.h"

#include <QHash>
#include <QString>
#include <QStringList>

#include <deque>
#include <functional>
#include <optional>

class ScriptAnswers
{
public:
    using Reporter = std::function<void(const QString&)>;

    // Installs the three handlers; the destructor puts the previous ones back. While
    // `stepsQueued` says "dialog" steps wait and no colour answer is queued, the real
    // colour dialog is shown for them to work.
    ScriptAnswers(Reporter report, std::function<bool()> stepsQueued);
    ~ScriptAnswers();
    ScriptAnswers(const ScriptAnswers&) = delete;
    ScriptAnswers& operator=(const ScriptAnswers&) = delete;

    // answer ok|cancel|yes|no|N
    bool QueueBoxAnswer(const QString& rest, QString& error);
    // file PATH|cancel
    bool QueueFile(const QString& rest, QString& error);
    // color ACI|R,G,B|0xBBGGRR|cancel
    bool QueueColour(const QString& rest, QString& error);
    // Since the last box check: a box whose text contains `text` was shown.
    bool ExpectBox(const QString& text, QString& error);
    // Since the last box check: no box at all.
    bool ExpectNoBox(QString& error);

    // `failing` tells whether the script has failed; `fail` fails it.
    void SetFailureHooks(std::function<bool()> failing, Reporter fail);
    // A statement of the script starts: a box shown again after it is no repeat.
    void StatementStarted();
    // How many times the same box may come back with nothing queued before the
    // script fails.
    static constexpr int kMaxRepeatedBoxes = 5;

    // "R,G,B" or a COLORREF "0xBBGGRR"; false for anything else.
    static bool ParseColour(const QString& text, COLORREF& colour);
    static QString ColourName(COLORREF colour);

private:
    int AnswerBox(const QString& caption, const QString& text, UINT type);
    int DefaultAnswer(const QString& caption, const QString& text, UINT type);

    Reporter m_report;
    std::function<bool()> m_stepsQueued;
    MessageBoxHandler m_previousBox;
    FileDialogHandler m_previousFile;
    QvKsCADColorTool::Handler m_previousColour;
    std::deque<int> m_boxAnswers;
    std::deque<std::optional<QString>> m_files;
    std::deque<std::optional<COLORREF>> m_colours;
    QStringList m_boxesSinceCheck;
    std::function<bool()> m_failing;
    Reporter m_fail;
    // Boxes answered by default since the statement started: how often each came.
    QHash<QString, int> m_defaultBoxes;
};
