#pragma once

// Keeps a dialog's controls anchored to its edges while the dialog is resized.
// A control anchored to an edge keeps its distance to that edge; anchored to both
// opposite edges it stretches; anchored to neither of two opposite edges it stays
// where it is on that axis. Distances are those the control had when it was added.
#include "WinTypes.h"

#include <QObject>
#include <QPointer>
#include <QRect>
#include <QSize>

#include <vector>

class QWidget;

constexpr UINT LM_ANCHOR_TOP = 1;
constexpr UINT LM_ANCHOR_BOTTOM = 2;
constexpr UINT LM_ANCHOR_LEFT = 4;
constexpr UINT LM_ANCHOR_RIGHT = 8;

class CLayoutManager : public QObject
{
    Q_OBJECT
public:
    explicit CLayoutManager(QObject* parent = nullptr);

    // The dialog whose resizes move its controls; relayout follows every resize.
    void Attach(QWidget* dialog);
    QWidget* GetDialog() const { return m_dialog; }
    // Anchors a control (a child of the dialog) or the child with a control id.
    bool AddAnchor(QWidget* control, UINT anchors);
    bool AddAnchor(int controlId, UINT anchors);
    // The smallest size the user can drag the dialog to.
    void SetMinTrackSize(const QSize& size);
    QSize GetMinTrackSize() const { return m_minSize; }
    // Places every anchored control for the dialog's current size.
    void Layout();

protected:
    bool eventFilter(QObject* watched, QEvent* event) override;

private:
    struct Anchor
    {
        QPointer<QWidget> control;
        UINT anchors = 0;
        QRect original;
        QSize dialogSize;
    };
    static QRect place(const Anchor& anchor, const QSize& size);

    QPointer<QWidget> m_dialog;
    std::vector<Anchor> m_anchors;
    QSize m_minSize;
};
