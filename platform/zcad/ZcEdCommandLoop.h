#pragma once

// The host's command line: typed input and the strings that commands queue with
// sendStringToExecute are split at blanks and line ends; each complete word is
// looked up in the command stack and run. A word without a blank or line end after
// it waits for more input. Strings a command queues run after it returns.
#include <QString>
#include <QStringList>

#include <functional>

class ZcEdCommandLoop
{
public:
    // Called for a word no registered command answers to; true when it handled it.
    using FallbackHandler = std::function<bool(const QString& word)>;

    void setFallbackHandler(FallbackHandler handler) { m_fallback = std::move(handler); }

    // Adds typed text and runs every command it completes (and everything queued
    // meanwhile). The number of commands run.
    int type(const QString& text);
    // Runs the strings queued with sendStringToExecute. The number of commands run.
    int runPending();

    // The typed text not yet submitted.
    QString pendingInput() const { return m_buffer; }
    // The words run so far, in order, and how many commands left the resource stack
    // unbalanced (each is also reported on the command line).
    const QStringList& history() const { return m_history; }
    int unbalancedCommands() const { return m_unbalanced; }
    bool lastCommandBalanced() const { return m_lastBalanced; }

private:
    void execute(const QString& word);

    QString m_buffer;
    QStringList m_history;
    FallbackHandler m_fallback;
    int m_unbalanced = 0;
    bool m_lastBalanced = true;
};
