#pragma once

// Window messages between top-level windows: FindWindow by title and SendMessage.
// A window that wants messages handles WinMessageEvent in its event() override;
// SendMessage delivers the event synchronously and returns its result.
#include "WinTypes.h"

#include <QEvent>
#include <QString>

#include <cstdint>
#include <functional>

using WPARAM = std::uintptr_t;
using LPARAM = std::intptr_t;
using LRESULT = std::intptr_t;

class WinMessageEvent : public QEvent
{
public:
    WinMessageEvent(UINT message, WPARAM wParam, LPARAM lParam);
    static QEvent::Type eventType();

    UINT message() const { return m_message; }
    WPARAM wParam() const { return m_wParam; }
    LPARAM lParam() const { return m_lParam; }
    LRESULT result() const { return m_result; }
    void setResult(LRESULT result) { m_result = result; }

private:
    UINT m_message;
    WPARAM m_wParam;
    LPARAM m_lParam;
    LRESULT m_result = 0;
};

// The top-level window whose title equals `windowName`; the class name is not used
// here and may be null. Null when there is none.
HWND FindWindow(const QString* className, const QString& windowName);
// Delivers the message to the window at once; 0 for a null window.
LRESULT SendMessage(HWND window, UINT message, WPARAM wParam, LPARAM lParam);

// Installed by the widget layer: lists the top-level windows.
void SetTopLevelWindowFinder(std::function<HWND(const QString& title)> finder);
