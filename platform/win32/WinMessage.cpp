#include "WinMessage.h"

#include <QCoreApplication>

namespace {
std::function<HWND(const QString&)>& finder()
{
    static std::function<HWND(const QString&)> fn;
    return fn;
}
} // namespace

WinMessageEvent::WinMessageEvent(UINT message, WPARAM wParam, LPARAM lParam)
    : QEvent(eventType())
    , m_message(message)
    , m_wParam(wParam)
    , m_lParam(lParam)
{ }

QEvent::Type WinMessageEvent::eventType()
{
    static const QEvent::Type type = QEvent::Type(QEvent::registerEventType());
    return type;
}

HWND FindWindow(const QString*, const QString& windowName)
{
    return finder() ? finder()(windowName) : nullptr;
}

LRESULT SendMessage(HWND window, UINT message, WPARAM wParam, LPARAM lParam)
{
    if (!window)
        return 0;
    WinMessageEvent event(message, wParam, lParam);
    QCoreApplication::sendEvent(window, &event);
    return event.result();
}

void SetTopLevelWindowFinder(std::function<HWND(const QString&)> fn)
{
    finder() = std::move(fn);
}
