#include "CLayoutManager.h"

#include "CtrlId.h"

#include <QEvent>
#include <QWidget>

#include <algorithm>

CLayoutManager::CLayoutManager(QObject* parent)
    : QObject(parent)
{ }

void CLayoutManager::Attach(QWidget* dialog)
{
    if (m_dialog)
        m_dialog->removeEventFilter(this);
    m_dialog = dialog;
    m_anchors.clear();
    if (dialog)
        dialog->installEventFilter(this);
}

bool CLayoutManager::AddAnchor(QWidget* control, UINT anchors)
{
    if (!m_dialog || !control || !m_dialog->isAncestorOf(control))
        return false;
    Anchor anchor;
    anchor.control = control;
    anchor.anchors = anchors;
    anchor.original = control->geometry();
    anchor.dialogSize = m_dialog->size();
    // A control added twice follows its latest anchors.
    auto same = std::find_if(
        m_anchors.begin(), m_anchors.end(), [control](const Anchor& a) { return a.control == control; });
    if (same != m_anchors.end())
        *same = anchor;
    else
        m_anchors.push_back(anchor);
    return true;
}

bool CLayoutManager::AddAnchor(int controlId, UINT anchors)
{
    return AddAnchor(GetDlgItem(m_dialog, controlId), anchors);
}

void CLayoutManager::SetMinTrackSize(const QSize& size)
{
    m_minSize = size;
    if (m_dialog)
        m_dialog->setMinimumSize(size);
}

QRect CLayoutManager::place(const Anchor& anchor, const QSize& size)
{
    const int dx = size.width() - anchor.dialogSize.width();
    const int dy = size.height() - anchor.dialogSize.height();
    QRect r = anchor.original;
    const bool left = anchor.anchors & LM_ANCHOR_LEFT;
    const bool right = anchor.anchors & LM_ANCHOR_RIGHT;
    const bool top = anchor.anchors & LM_ANCHOR_TOP;
    const bool bottom = anchor.anchors & LM_ANCHOR_BOTTOM;
    if (left && right)
        r.setWidth(std::max(0, r.width() + dx));
    else if (right)
        r.translate(dx, 0);
    if (top && bottom)
        r.setHeight(std::max(0, r.height() + dy));
    else if (bottom)
        r.translate(0, dy);
    return r;
}

void CLayoutManager::Layout()
{
    if (!m_dialog)
        return;
    const QSize size = m_dialog->size();
    for (const Anchor& anchor : m_anchors)
        if (anchor.control)
            anchor.control->setGeometry(place(anchor, size));
}

bool CLayoutManager::eventFilter(QObject* watched, QEvent* event)
{
    if (watched == m_dialog && event->type() == QEvent::Resize)
        Layout();
    return QObject::eventFilter(watched, event);
}
