#pragma once

// The command line: the history of commands and of everything printed with
// zcutPrintf, and an input line whose text is submitted with Enter (or a blank,
// as the command loop splits words). Up and Down recall earlier input; Enter on
// an empty line repeats the last command; typing offers the command names that
// begin with what was typed. Object names "commandHistory",
// "commandInput".
#include <QWidget>

#include <functional>

class QCompleter;
class QLineEdit;
class QPlainTextEdit;

class CommandLineWidget : public QWidget
{
    Q_OBJECT
public:
    explicit CommandLineWidget(QWidget* parent = nullptr);

    // Appends printed text; "\n" starts a new line as on the host's command line.
    void Print(const QString& text);
    QString HistoryText() const;
    QLineEdit* Input() const { return m_input; }
    // The names typed input is completed from, asked again as typing starts (plug-ins
    // register commands after the window is made).
    void SetCommandNames(std::function<QStringList()> names);
    QCompleter* Completer() const { return m_completer; }

Q_SIGNALS:
    void submitted(const QString& text);

protected:
    bool eventFilter(QObject* watched, QEvent* event) override;

private:
    void OnReturn();
    void Recall(int step);

    QPlainTextEdit* m_history;
    QLineEdit* m_input;
    void RefreshCompletions();

    QCompleter* m_completer;
    std::function<QStringList()> m_commandNames;
    QStringList m_entered;
    qsizetype m_recall = 0;
};
