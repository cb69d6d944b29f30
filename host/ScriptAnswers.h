#pragma once

// What a script answers for the questions a command asks while it runs: message
// boxes, the file dialog and the CAD colour dialog, each from its own queue in the
// order the script gave them. Every question is reported with what it asked and the
// answer it got; a question with nothing queued takes the box's default button, or
// a cancel for the file and colour dialogs.
#include "QvKsCADColorTool.h"
#include "WinFileDialog.h"
#include "WinMessageBox.h"
#include "WinTypes.h"

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

    // "R,G,B" or a COLORREF "0xBBGGRR"; false for anything else.
    static bool ParseColour(const QString& text, COLORREF& colour);
    static QString ColourName(COLORREF colour);

private:
    int AnswerBox(const QString& caption, const QString& text, UINT type);

    Reporter m_report;
    std::function<bool()> m_stepsQueued;
    MessageBoxHandler m_previousBox;
    FileDialogHandler m_previousFile;
    QvKsCADColorTool::Handler m_previousColour;
    std::deque<int> m_boxAnswers;
    std::deque<std::optional<QString>> m_files;
    std::deque<std::optional<COLORREF>> m_colours;
    QStringList m_boxesSinceCheck;
};
