#pragma once

// Message boxes as the module shows them: a text, a caption, the Win32 style value
// (0x12030 …), and a result IDOK / IDYES / IDNO. The box itself is whatever handler
// is installed: the Qt one in a running application, a recording one in tests.
#include "WinTypes.h"

#include <QString>

#include <functional>

struct MessageBoxRequest
{
    HWND owner = nullptr;
    QString text;
    QString caption;
    UINT type = MB_OK;
};

using MessageBoxHandler = std::function<int(const MessageBoxRequest&)>;

// Shows a message box and returns the button pressed.
int MessageBoxExW(HWND owner, const QString& text, const QString& caption, UINT type, WORD languageId = 0);
// The framework's plain message box: the application's name as caption.
int AfxMessageBox(const QString& text, UINT type = MB_OK);

// The active top-level window of the calling thread, or null.
HWND GetActiveWindow();

// Replaces the handler; returns the previous one so a test can put it back.
MessageBoxHandler SetMessageBoxHandler(MessageBoxHandler handler);

// Installed by the widget layer when it is loaded: shows real boxes and finds the
// active window. Without it (a Qt Core program with no handler) a box is written to
// standard error and answered with its default button.
void SetGuiMessageBox(MessageBoxHandler box, std::function<HWND()> activeWindow);

// The answer a box gives when nobody can press a button: the default button.
int DefaultMessageBoxAnswer(UINT type);

// Installs the Qt message box and the top-level window finder (defined by
// QvWin32Ui); a widget program calls it once
// at start-up so it never depends on static initialisation order.
void InstallQtMessageBox();
