#include "DrawingView.h"

#include "DrawingPainter.h"

#include <QEventLoop>
#include <QKeyEvent>
#include <QMouseEvent>
#include <QPainter>
#include <QWheelEvent>

#include <cmath>

namespace {
constexpr double kFitMargin = 0.92;
} // namespace

DrawingView::DrawingView(QWidget* parent)
    : QWidget(parent)
{
    setObjectName(QStringLiteral("drawingView"));
    setFocusPolicy(Qt::StrongFocus);
    setMouseTracking(true);
    setMinimumSize(320, 240);
    setAttribute(Qt::WA_OpaquePaintEvent);
}

void DrawingView::ZoomExtents()
{
    const QRectF bounds = m_list.Bounds();
    if (m_list.Entities().empty() || width() <= 0 || height() <= 0) {
        m_centre = QPointF();
        m_scale = 1.0;
        update();
        return;
    }
    m_centre = bounds.center();
    const double sx = bounds.width() > 0 ? width() / bounds.width() : 1e9;
    const double sy = bounds.height() > 0 ? height() / bounds.height() : 1e9;
    m_scale = std::min(sx, sy) * kFitMargin;
    if (!std::isfinite(m_scale) || m_scale <= 0 || m_scale >= 1e9)
        m_scale = 1.0;
    update();
}

void DrawingView::ZoomBy(double factor, const QPointF& screenAnchor)
{
    const QPointF anchor = ToWorld(screenAnchor);
    m_scale = std::clamp(m_scale * factor, 1e-9, 1e9);
    m_centre += anchor - ToWorld(screenAnchor);
    update();
}

QPointF DrawingView::ToScreen(const QPointF& world) const
{
    return QPointF(width() / 2.0 + (world.x() - m_centre.x()) * m_scale,
        height() / 2.0 - (world.y() - m_centre.y()) * m_scale);
}

QPointF DrawingView::ToWorld(const QPointF& screen) const
{
    return QPointF(m_centre.x() + (screen.x() - width() / 2.0) / m_scale,
        m_centre.y() - (screen.y() - height() / 2.0) / m_scale);
}

std::vector<ZcDbObjectId> DrawingView::SelectBox(const QPointF& first, const QPointF& second) const
{
    return m_list.Select(QRectF(first, second).normalized(), second.x() < first.x());
}

bool DrawingView::RunSelection(std::vector<ZcDbObjectId>& picked)
{
    if (m_loop)
        return false;
    m_picked.clear();
    m_pickedSet.clear();
    m_boxing = false;
    m_accepted = false;
    QEventLoop loop;
    m_loop = &loop;
    setFocus();
    Q_EMIT prompt(tr("\n选择对象: 拖出窗口(左→右)或交叉框(右→左), 回车或右键结束, Esc 取消"));
    loop.exec();
    m_loop = nullptr;
    m_boxing = false;
    picked = m_picked;
    m_pickedSet.clear();
    update();
    return m_accepted;
}

void DrawingView::FinishSelection(bool accepted)
{
    m_accepted = accepted;
    if (m_loop)
        m_loop->quit();
}

void DrawingView::paintEvent(QPaintEvent*)
{
    QPainter painter(this);
    painter.fillRect(rect(), QColor(33, 40, 48));
    painter.setRenderHint(QPainter::Antialiasing);
    const QColor highlight(255, 255, 0);
    DrawingPainter drawing(painter, size(), m_centre, m_scale);
    const std::vector<DisplayEntity>& entities = m_list.Entities();
    for (std::size_t e = 0; e < entities.size(); ++e) {
        const bool picked = !m_pickedSet.empty() && m_pickedSet.count(m_list.IdOf(entities[e])) != 0;
        m_list.ForEachPrimitive(e, [&](const DisplayPrimitive& primitive) {
            drawing.Paint(primitive, picked ? &highlight : nullptr);
        });
    }
    if (m_boxing) {
        const QRectF box = QRectF(m_boxStart, m_boxEnd).normalized();
        const bool crossing = m_boxEnd.x() < m_boxStart.x();
        painter.setPen(QPen(Qt::white, 1, crossing ? Qt::DashLine : Qt::SolidLine));
        painter.setBrush(crossing ? QColor(0, 160, 0, 50) : QColor(0, 80, 220, 50));
        painter.drawRect(box);
    }
}

void DrawingView::resizeEvent(QResizeEvent*)
{
    // Until the user pans or zooms, the whole drawing stays in view.
    if (!m_userMoved)
        ZoomExtents();
}

void DrawingView::wheelEvent(QWheelEvent* event)
{
    m_userMoved = true;
    const double steps = event->angleDelta().y() / 120.0;
    ZoomBy(std::pow(1.2, steps), event->position());
}

void DrawingView::mousePressEvent(QMouseEvent* event)
{
    if (m_loop && event->button() == Qt::RightButton) {
        FinishSelection(true);
        return;
    }
    if (m_loop && event->button() == Qt::LeftButton) {
        m_boxing = true;
        m_boxStart = m_boxEnd = event->position();
        return;
    }
    if (event->button() == Qt::MiddleButton || event->button() == Qt::LeftButton) {
        m_panning = true;
        m_userMoved = true;
        m_lastPos = event->position();
    }
}

void DrawingView::mouseMoveEvent(QMouseEvent* event)
{
    if (m_boxing) {
        m_boxEnd = event->position();
        update();
    } else if (m_panning) {
        const QPointF delta = event->position() - m_lastPos;
        m_lastPos = event->position();
        m_centre -= QPointF(delta.x() / m_scale, -delta.y() / m_scale);
        update();
    }
}

void DrawingView::mouseReleaseEvent(QMouseEvent* event)
{
    if (m_boxing && event->button() == Qt::LeftButton) {
        m_boxing = false;
        m_boxEnd = event->position();
        for (const ZcDbObjectId id : SelectBox(ToWorld(m_boxStart), ToWorld(m_boxEnd)))
            if (m_pickedSet.insert(id).second)
                m_picked.push_back(id);
        Q_EMIT prompt(tr("\n已选择 %1 个对象").arg(m_picked.size()));
        update();
        return;
    }
    m_panning = false;
}

void DrawingView::keyPressEvent(QKeyEvent* event)
{
    if (m_loop && (event->key() == Qt::Key_Return || event->key() == Qt::Key_Enter)) {
        FinishSelection(true);
        return;
    }
    if (m_loop && event->key() == Qt::Key_Escape) {
        FinishSelection(false);
        return;
    }
    QWidget::keyPressEvent(event);
}
