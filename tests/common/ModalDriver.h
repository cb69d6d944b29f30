#pragma once

// Acts on the next modal dialog that opens while a test runs a blocking exec():
// armed before the call, it waits for a modal widget other than the ones already
// open, runs the action on it inside its event loop, and gives up after a timeout
// by closing the dialog, so a test never hangs.
#include <QApplication>
#include <QDialog>
#include <QPointer>
#include <QTimer>

#include <functional>

class ModalDriver
{
public:
    using Action = std::function<void(QDialog*)>;

    explicit ModalDriver(Action action, int timeoutMs = 5000)
        : m_action(std::move(action))
        , m_before(QApplication::activeModalWidget())
        , m_ticksLeft(timeoutMs / kTickMs)
    {
        m_timer.setInterval(kTickMs);
        QObject::connect(&m_timer, &QTimer::timeout, [this] { tick(); });
        m_timer.start();
    }

    // Whether a dialog opened and the action ran.
    bool acted() const { return m_acted; }
    // The dialog the action ran on, while it exists.
    QDialog* dialog() const { return m_dialog; }

private:
    static constexpr int kTickMs = 10;

    void tick()
    {
        QWidget* modal = QApplication::activeModalWidget();
        auto* dialog = qobject_cast<QDialog*>(modal);
        if (dialog && modal != m_before && dialog->isVisible()) {
            m_timer.stop();
            m_acted = true;
            m_dialog = dialog;
            m_action(dialog);
            return;
        }
        if (--m_ticksLeft <= 0) {
            m_timer.stop();
            if (modal && modal != m_before)
                modal->close();
        }
    }

    Action m_action;
    QWidget* m_before;
    int m_ticksLeft;
    QTimer m_timer;
    bool m_acted = false;
    QPointer<QDialog> m_dialog;
};
