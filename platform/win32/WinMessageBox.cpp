#include "WinMessageBox.h"

#include <QCoreApplication>

#include <cstdio>

namespace {
MessageBoxHandler& installedHandler()
{
    static MessageBoxHandler handler;
    return handler;
}
MessageBoxHandler& guiBox()
{
    static MessageBoxHandler box;
    return box;
}
std::function<HWND()>& guiActiveWindow()
{
    static std::function<HWND()> fn;
    return fn;
}
} // namespace

int DefaultMessageBoxAnswer(UINT type)
{
    const bool second = (type & MB_DEFMASK) == MB_DEFBUTTON2;
    switch (type & MB_TYPEMASK) {
    case MB_YESNO:
    case MB_YESNOCANCEL:
        return second ? IDNO : IDYES;
    case MB_OKCANCEL:
        return second ? IDCANCEL : IDOK;
    default:
        return IDOK;
    }
}

int MessageBoxExW(HWND owner, const QString& text, const QString& caption, UINT type, WORD)
{
    const MessageBoxRequest request { owner, text, caption, type };
    if (installedHandler())
        return installedHandler()(request);
    if (guiBox())
        return guiBox()(request);
    std::fprintf(stderr, "[%s] %s\n", qPrintable(caption), qPrintable(text));
    return DefaultMessageBoxAnswer(type);
}

int AfxMessageBox(const QString& text, UINT type)
{
    const QString caption = QCoreApplication::instance() ? QCoreApplication::applicationName() : QString();
    return MessageBoxExW(GetActiveWindow(), text, caption, type);
}

HWND GetActiveWindow()
{
    return guiActiveWindow() ? guiActiveWindow()() : nullptr;
}

MessageBoxHandler SetMessageBoxHandler(MessageBoxHandler handler)
{
    MessageBoxHandler previous = std::move(installedHandler());
    installedHandler() = std::move(handler);
    return previous;
}

void SetGuiMessageBox(MessageBoxHandler box, std::function<HWND()> activeWindow)
{
    guiBox() = std::move(box);
    guiActiveWindow() = std::move(activeWindow);
}
