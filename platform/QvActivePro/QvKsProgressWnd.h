#pragma once

// The progress window: a text and a bar, without buttons and without a close box,
// shown while long work runs on the user-interface thread. Because that work does
// not return to the event loop, the window repaints itself whenever its text or
// position changes (at most every few tens of milliseconds for positions), taking
// no user input meanwhile so nothing can re-enter the running work.
//
// Control names: "progressText", "progressBar".
#include <QElapsedTimer>
#include <QWidget>

class QLabel;
class QProgressBar;

class QvKsProgressWnd : public QWidget
{
    Q_OBJECT
public:
    explicit QvKsProgressWnd(QWidget* owner = nullptr);

    void SetText(const QString& text);
    QString Text() const;
    // An empty range (lower == upper) shows a busy bar without steps.
    void SetRange(int lower, int upper);
    void SetPos(int pos);
    int Pos() const;
    void Step(int step);
    // Shows the window over its owner (or the screen) and paints it at once.
    void Open();

protected:
    void closeEvent(QCloseEvent* event) override;

private:
    void Pump(bool force);

    QLabel* m_text;
    QProgressBar* m_bar;
    QElapsedTimer m_sincePump;
};
