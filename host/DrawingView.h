#pragma once

// The drawing view: paints the display list on the CAD's dark background, pans
// (middle or left drag) and zooms (wheel), and draws selection boxes: dragged left
// to right a window (entities wholly inside), right to left a crossing (entities
// touching it). Object name "drawingView".
#include "DisplayList.h"

#include <QPointF>
#include <QWidget>

#include <set>

class QEventLoop;

class DrawingView : public QWidget
{
    Q_OBJECT
public:
    explicit DrawingView(QWidget* parent = nullptr);

    DisplayList& List() { return m_list; }
    // Shows the whole drawing (and keeps it in view on resizes until the user
    // pans or zooms).
    void ZoomExtents();
    void ZoomBy(double factor, const QPointF& screenAnchor);

    QPointF ToScreen(const QPointF& world) const;
    QPointF ToWorld(const QPointF& screen) const;
    double Scale() const { return m_scale; }

    // Interactive selection: runs until Enter or a right click (true with what was
    // boxed, possibly nothing) or Escape (false).
    bool RunSelection(std::vector<ZcDbObjectId>& picked);
    bool IsSelecting() const { return m_loop != nullptr; }
    // Ends a running selection as if Escape was pressed.
    void CancelSelection() { FinishSelection(false); }
    // The entities a box in drawing coordinates selects; from right to left
    // (x1 > x2) it is a crossing box.
    std::vector<ZcDbObjectId> SelectBox(const QPointF& first, const QPointF& second) const;

Q_SIGNALS:
    void prompt(const QString& text);

protected:
    void paintEvent(QPaintEvent* event) override;
    void resizeEvent(QResizeEvent* event) override;
    void wheelEvent(QWheelEvent* event) override;
    void mousePressEvent(QMouseEvent* event) override;
    void mouseMoveEvent(QMouseEvent* event) override;
    void mouseReleaseEvent(QMouseEvent* event) override;
    void keyPressEvent(QKeyEvent* event) override;

private:
    void FinishSelection(bool accepted);

    DisplayList m_list;
    QPointF m_centre;
    double m_scale = 1.0;
    bool m_userMoved = false;
    // Panning.
    bool m_panning = false;
    QPointF m_lastPos;
    // Selecting.
    QEventLoop* m_loop = nullptr;
    bool m_boxing = false;
    QPointF m_boxStart;
    QPointF m_boxEnd;
    std::vector<ZcDbObjectId> m_picked;
    std::set<ZcDbObjectId> m_pickedSet;
    bool m_accepted = false;
};
