#include "ModalDriver.h"

#include "ScreenshotFile.h"

#include <QAbstractButton>
#include <QApplication>
#include <QDialog>
#include <QTimer>

namespace {
constexpr int kPollMs = 50;
constexpr int kClosingMs = 1000;
} // namespace

ModalDriver::ModalDriver(QObject* parent)
    : QObject(parent)
    , m_timer(new QTimer(this))
{
    connect(m_timer, &QTimer::timeout, this, &ModalDriver::Poll);
    m_timer->start(kPollMs);
}

QWidget* ModalDriver::FindControl(QWidget* root, int controlId)
{
    if (!root)
        return nullptr;
    const QString name = QString::number(controlId);
    for (QWidget* child : root->findChildren<QWidget*>()) {
        const QVariant id = child->property("controlId");
        if ((id.isValid() && id.toInt() == controlId) || child->objectName() == name)
            return child;
    }
    return nullptr;
}

void ModalDriver::Poll()
{
    QWidget* dialog = QApplication::activeModalWidget();
    if (!dialog) {
        m_idleMs = 0;
        return;
    }
    // A press that should have closed the dialog but did not (its checks refused)
    // leaves it to the next steps after a while.
    if (dialog == m_closed && (m_closedMs += kPollMs) < kClosingMs)
        return;
    m_closed = nullptr;
    m_closedMs = 0;
    while (!m_steps.empty() && dialog == QApplication::activeModalWidget()) {
        const Step step = m_steps.front();
        m_steps.pop_front();
        Apply(dialog, step);
        if (step.kind == Step::Click || step.kind == Step::Accept || step.kind == Step::Reject) {
            m_closed = dialog;
            m_idleMs = 0;
            return;
        }
    }
    if (dialog != QApplication::activeModalWidget())
        return;
    if (m_waiting != dialog) {
        m_waiting = dialog;
        m_idleMs = 0;
        m_timeouts = 0;
    }
    m_idleMs += kPollMs;
    if (m_idleMs >= m_timeoutMs) {
        Fail(QStringLiteral("the dialog \"%1\" waited for %2 ms with nothing to do; cancelled")
                 .arg(dialog->windowTitle())
                 .arg(m_timeoutMs));
        auto* box = qobject_cast<QDialog*>(dialog);
        // A dialog whose own cancel did not close it the first time is closed
        // without it: a script never hangs.
        if (box && ++m_timeouts > 1)
            box->QDialog::done(QDialog::Rejected);
        else if (box)
            box->reject();
        else
            dialog->close();
        m_idleMs = 0;
    }
}

void ModalDriver::Apply(QWidget* dialog, const Step& step)
{
    auto* box = qobject_cast<QDialog*>(dialog);
    switch (step.kind) {
    case Step::Screenshot: {
        if (const QvKsWriteStatus saved = SaveScreenshot(dialog, step.file))
            Q_EMIT report(QStringLiteral("dialog \"%1\" saved to %2").arg(dialog->windowTitle(), step.file));
        else
            Fail(saved.Describe());
        return;
    }
    case Step::Expect:
        if (!FindControl(dialog, step.controlId))
            Fail(QStringLiteral("the dialog \"%1\" has no control %2")
                     .arg(dialog->windowTitle())
                     .arg(step.controlId));
        return;
    case Step::Click: {
        auto* button = qobject_cast<QAbstractButton*>(FindControl(dialog, step.controlId));
        if (!button) {
            Fail(QStringLiteral("the dialog \"%1\" has no button %2; cancelled")
                     .arg(dialog->windowTitle())
                     .arg(step.controlId));
            box ? box->reject() : void(dialog->close());
            return;
        }
        Q_EMIT report(
            QStringLiteral("dialog \"%1\": pressed %2").arg(dialog->windowTitle()).arg(step.controlId));
        button->click();
        return;
    }
    case Step::Accept:
        Q_EMIT report(QStringLiteral("dialog \"%1\": OK").arg(dialog->windowTitle()));
        box ? box->accept() : void(dialog->close());
        return;
    case Step::Reject:
        Q_EMIT report(QStringLiteral("dialog \"%1\": Cancel").arg(dialog->windowTitle()));
        box ? box->reject() : void(dialog->close());
        return;
    }
}

void ModalDriver::Fail(const QString& message)
{
    m_failures.append(message);
    Q_EMIT report(QStringLiteral("failed: ") + message);
}
