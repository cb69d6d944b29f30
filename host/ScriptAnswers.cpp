#include "ScriptAnswers.h"

#include "QvKsAciPalette.h"
#include "QvKsCADColorDlg.h"
#include "QvKsCADColorTool.h"
#include "WinFileDialog.h"
#include "WinMessageBox.h"

#include <QApplication>
#include <QFileInfo>
#include <QHash>

#include <utility>

namespace {
bool ParseAnswer(const QString& word, int& answer)
{
    static const QHash<QString, int> names { { QStringLiteral("ok"), IDOK },
        { QStringLiteral("cancel"), IDCANCEL }, { QStringLiteral("yes"), IDYES },
        { QStringLiteral("no"), IDNO } };
    bool ok = false;
    answer = names.value(word.toLower(), word.toInt(&ok));
    return names.contains(word.toLower()) || (ok && answer > 0);
}

QString AnswerName(int answer)
{
    switch (answer) {
    case IDOK:
        return QStringLiteral("OK");
    case IDCANCEL:
        return QStringLiteral("Cancel");
    case IDYES:
        return QStringLiteral("Yes");
    case IDNO:
        return QStringLiteral("No");
    default:
        return QString::number(answer);
    }
}

bool IsCancel(const QString& word)
{
    return word.compare(QLatin1String("cancel"), Qt::CaseInsensitive) == 0;
}
} // namespace

ScriptAnswers::ScriptAnswers(Reporter report, std::function<bool()> stepsQueued)
    : m_report(std::move(report))
    , m_stepsQueued(std::move(stepsQueued))
{
    m_previousBox = SetMessageBoxHandler(
        [this](const MessageBoxRequest& box) { return AnswerBox(box.caption, box.text, box.type); });
    m_previousFile = SetFileDialogHandler([this](const FileDialogRequest& request, QString& path) {
        const QString asked = QStringLiteral("%1 file dialog \"%2\" (folder \"%3\", name \"%4\")")
                                  .arg(request.open ? QStringLiteral("open") : QStringLiteral("save"),
                                      request.title, request.initialDir, request.fileName);
        if (m_files.empty() || !m_files.front()) {
            m_report(asked
                + (m_files.empty() ? QStringLiteral(": nothing queued, cancelled")
                                   : QStringLiteral(": cancelled")));
            if (!m_files.empty())
                m_files.pop_front();
            return false;
        }
        path = *m_files.front();
        m_files.pop_front();
        m_report(asked + QStringLiteral(": %1").arg(path));
        return true;
    });
    m_previousColour = QvKsCADColorTool::SetColorDialogHandler([this](COLORREF current, COLORREF& chosen) {
        const QString asked = QStringLiteral("colour dialog (current %1)").arg(ColourName(current));
        if (m_colours.empty() && m_stepsQueued()) {
            m_report(asked + QStringLiteral(": shown for the queued dialog steps"));
            QvKsCADColorDlg dialog(current, QApplication::activeWindow());
            if (dialog.exec() != QDialog::Accepted)
                return false;
            chosen = dialog.ChosenColor();
            return true;
        }
        if (m_colours.empty() || !m_colours.front()) {
            m_report(asked
                + (m_colours.empty() ? QStringLiteral(": nothing queued, cancelled")
                                     : QStringLiteral(": cancelled")));
            if (!m_colours.empty())
                m_colours.pop_front();
            return false;
        }
        chosen = *m_colours.front();
        m_colours.pop_front();
        m_report(asked + QStringLiteral(": %1").arg(ColourName(chosen)));
        return true;
    });
}

ScriptAnswers::~ScriptAnswers()
{
    QvKsCADColorTool::SetColorDialogHandler(std::move(m_previousColour));
    SetFileDialogHandler(std::move(m_previousFile));
    SetMessageBoxHandler(std::move(m_previousBox));
}

void ScriptAnswers::SetFailureHooks(std::function<bool()> failing, Reporter fail)
{
    m_failing = std::move(failing);
    m_fail = std::move(fail);
}

void ScriptAnswers::StatementStarted()
{
    m_defaultBoxes.clear();
}

// The answer to a box the script gave none for.
int ScriptAnswers::DefaultAnswer(const QString& caption, const QString& text, UINT type)
{
    const QString box = caption + u'\n' + QString::number(type) + u'\n' + text;
    const int times = ++m_defaultBoxes[box];
    if (times > kMaxRepeatedBoxes && m_fail && !(m_failing && m_failing()))
        m_fail(QStringLiteral("the message box \"%1\" came %2 times with no answer queued and no "
                              "statement run in between; the script stops")
                   .arg(text, QString::number(times)));
    if (!(m_failing && m_failing()))
        return DefaultMessageBoxAnswer(type);
    // A failed script says no to everything it did not answer itself.
    switch (type & MB_TYPEMASK) {
    case MB_YESNO:
        return IDNO;
    case MB_YESNOCANCEL:
    case MB_OKCANCEL:
        return IDCANCEL;
    default:
        return IDOK;
    }
}

int ScriptAnswers::AnswerBox(const QString& caption, const QString& text, UINT type)
{
    int answer = 0;
    if (!m_boxAnswers.empty()) {
        answer = m_boxAnswers.front();
        m_boxAnswers.pop_front();
    } else {
        answer = DefaultAnswer(caption, text, type);
    }
    m_boxesSinceCheck.append(text);
    m_report(QStringLiteral("message box \"%1\" [0x%2]: %3 -> %4")
                 .arg(caption)
                 .arg(type, 0, 16)
                 .arg(text, AnswerName(answer)));
    return answer;
}

bool ScriptAnswers::QueueBoxAnswer(const QString& rest, QString& error)
{
    int answer = 0;
    if (!ParseAnswer(rest, answer)) {
        error = QStringLiteral("answer ok|cancel|yes|no|NUMBER");
        return false;
    }
    m_boxAnswers.push_back(answer);
    return true;
}

bool ScriptAnswers::QueueFile(const QString& rest, QString& error)
{
    if (rest.isEmpty()) {
        error = QStringLiteral("file PATH|cancel");
        return false;
    }
    if (IsCancel(rest))
        m_files.emplace_back(std::nullopt);
    else
        m_files.emplace_back(QFileInfo(rest).absoluteFilePath());
    return true;
}

bool ScriptAnswers::QueueColour(const QString& rest, QString& error)
{
    if (IsCancel(rest)) {
        m_colours.emplace_back(std::nullopt);
        return true;
    }
    bool isIndex = false;
    const int index = rest.toInt(&isIndex);
    COLORREF colour = 0;
    if (isIndex && QvKsAciPalette::IsValidIndex(index))
        colour = QvKsAciPalette::ColorOf(index);
    else if (isIndex || !ParseColour(rest, colour)) {
        error = QStringLiteral("color ACI (1-255)|R,G,B|0xBBGGRR|cancel");
        return false;
    }
    m_colours.emplace_back(colour);
    return true;
}

bool ScriptAnswers::ExpectBox(const QString& text, QString& error)
{
    const QStringList shown = std::exchange(m_boxesSinceCheck, {});
    for (const QString& box : shown)
        if (box.contains(text))
            return true;
    error = QStringLiteral("expected a message box with \"%1\", found %2")
                .arg(text,
                    shown.isEmpty() ? QStringLiteral("none")
                                    : u'"' + shown.join(QStringLiteral("\", \"")) + u'"');
    return false;
}

bool ScriptAnswers::ExpectNoBox(QString& error)
{
    const QStringList shown = std::exchange(m_boxesSinceCheck, {});
    error = QStringLiteral("expected no message box, found \"%1\"").arg(shown.join(QStringLiteral("\", \"")));
    return shown.isEmpty();
}

bool ScriptAnswers::ParseColour(const QString& text, COLORREF& colour)
{
    const QStringList parts = text.split(u',');
    bool ok = true;
    if (parts.size() == 3) {
        int rgb[3] = {};
        for (int i = 0; i < 3 && ok; ++i) {
            rgb[i] = parts[i].trimmed().toInt(&ok);
            ok = ok && rgb[i] >= 0 && rgb[i] <= 255;
        }
        colour = COLORREF(rgb[0] | (rgb[1] << 8) | (rgb[2] << 16));
        return ok;
    }
    if (!text.startsWith(QLatin1String("0x"), Qt::CaseInsensitive))
        return false;
    const uint value = text.mid(2).toUInt(&ok, 16);
    colour = COLORREF(value);
    return ok && value <= 0xFFFFFF;
}

QString ScriptAnswers::ColourName(COLORREF colour)
{
    return QStringLiteral("0x%1 (%2,%3,%4)")
        .arg(colour, 6, 16, QLatin1Char('0'))
        .arg(colour & 0xFF)
        .arg((colour >> 8) & 0xFF)
        .arg((colour >> 16) & 0xFF);
}
