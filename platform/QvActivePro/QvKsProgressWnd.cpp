#include "QvKsProgressWnd.h"

#include <QApplication>
#include <QCloseEvent>
#include <QLabel>
#include <QProgressBar>
#include <QScreen>
#include <QVBoxLayout>

namespace {

// Often enough for a moving bar, rare enough not to slow a scan of many items.
constexpr qint64 kPumpIntervalMs = 40;

} // namespace

QvKsProgressWnd::QvKsProgressWnd(QWidget* owner)
    : QWidget(owner, Qt::Tool | Qt::CustomizeWindowHint | Qt::WindowTitleHint | Qt::WindowStaysOnTopHint)
{
    setWindowTitle(QStringLiteral("Quorvatek"));
    setAttribute(Qt::WA_ShowWithoutActivating);
    auto* layout = new QVBoxLayout(this);
    m_text = new QLabel(this);
    m_text->setObjectName(QStringLiteral("progressText"));
    m_text->setMinimumWidth(320);
    m_text->setWordWrap(true);
    layout->addWidget(m_text);
    m_bar = new QProgressBar(this);
    m_bar->setObjectName(QStringLiteral("progressBar"));
    m_bar->setRange(0, 0);
    layout->addWidget(m_bar);
}

void QvKsProgressWnd::SetText(const QString& text)
{
    m_text->setText(text);
    Pump(true);
}

QString QvKsProgressWnd::Text() const
{
    return m_text->text();
}

void QvKsProgressWnd::SetRange(int lower, int upper)
{
    m_bar->setRange(qMin(lower, upper), qMax(lower, upper));
    m_bar->setValue(m_bar->minimum());
    Pump(true);
}

void QvKsProgressWnd::SetPos(int pos)
{
    m_bar->setValue(qBound(m_bar->minimum(), pos, m_bar->maximum()));
    Pump(false);
}

int QvKsProgressWnd::Pos() const
{
    return m_bar->value() < m_bar->minimum() ? m_bar->minimum() : m_bar->value();
}

void QvKsProgressWnd::Step(int step)
{
    SetPos(Pos() + step);
}

void QvKsProgressWnd::Open()
{
    adjustSize();
    const QWidget* owner = parentWidget();
    QRect area;
    if (owner && owner->isVisible())
        area = owner->frameGeometry();
    else if (const QScreen* screen = QGuiApplication::primaryScreen())
        area = screen->availableGeometry();
    if (area.isValid())
        move(area.center() - rect().center());
    show();
    raise();
    Pump(true);
}

void QvKsProgressWnd::closeEvent(QCloseEvent* event)
{
    // Only the work that opened the window closes it.
    event->ignore();
}

void QvKsProgressWnd::Pump(bool force)
{
    if (!isVisible())
        return;
    if (!force && m_sincePump.isValid() && m_sincePump.elapsed() < kPumpIntervalMs)
        return;
    m_sincePump.start();
    repaint();
    QCoreApplication::processEvents(QEventLoop::ExcludeUserInputEvents);
}
