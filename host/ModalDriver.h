#pragma once

// Works the modal dialogs that commands open while a script runs: steps queued
// for "the next dialog" are applied in order to the active modal dialog (a
// screenshot, a check that a control exists, a button press by control id, OK,
// Cancel). A step that closes the dialog moves on to the next dialog. A dialog
// left without steps for the time-out is cancelled and counted as a failure, so a
// script never hangs; one that its cancel does not close is closed without it at
// the next time-out.
#include <QObject>
#include <QPointer>
#include <QStringList>

#include <deque>

class QTimer;
class QWidget;

class ModalDriver : public QObject
{
    Q_OBJECT
public:
    struct Step
    {
        enum Kind { Screenshot, Expect, Click, Accept, Reject };
        Kind kind = Accept;
        int controlId = 0;
        QString file;

        static Step Make(Kind kind, int controlId, const QString& file = QString())
        {
            Step step;
            step.kind = kind;
            step.controlId = controlId;
            step.file = file;
            return step;
        }
    };

    explicit ModalDriver(QObject* parent = nullptr);

    void Queue(const Step& step) { m_steps.push_back(step); }
    int Pending() const { return int(m_steps.size()); }
    void SetTimeout(int milliseconds) { m_timeoutMs = milliseconds; }
    // Something else works the open dialog now: its wait for steps starts over.
    void KeepAlive() { m_idleMs = 0; }
    const QStringList& Failures() const { return m_failures; }
    // The widget carrying `controlId` in the property "controlId" (or as its object
    // name), inside `root`; null when none.
    static QWidget* FindControl(QWidget* root, int controlId);

Q_SIGNALS:
    void report(const QString& text);

private:
    void Poll();
    void Apply(QWidget* dialog, const Step& step);
    void Fail(const QString& message);

    std::deque<Step> m_steps;
    QTimer* m_timer;
    QPointer<QWidget> m_closed; // the dialog a step closed, while it still shows
    QPointer<QWidget> m_waiting; // the dialog open without steps
    int m_closedMs = 0;
    int m_idleMs = 0;
    int m_timeouts = 0; // of the dialog waiting, each ending in a cancel
    int m_timeoutMs = 15000;
    QStringList m_failures;
};
