#pragma once

// The product's services interface: the one progress window that long work on the
// user-interface thread shows. Modeless; the work calls these between its steps.
#include "WinTypes.h"

#include <QString>

class QWidget;

class QvProInterface
{
public:
    // bShow true: opens the window (or re-labels it when it is open) with `text`, a
    // busy bar, over `owner` (a widget) or the screen when there is none.
    // bShow false: closes and destroys it; nothing happens when it is not open.
    static void ShowProgressDialog(bool bShow, const QString& text = QString(), HWND owner = nullptr);

    // Counted work: the bar runs from lower to upper (lower == upper: busy bar).
    static void SetProgressRange(int lower, int upper);
    static void SetProgressPos(int pos);
    static void StepProgress(int step = 1);
    static void SetProgressText(const QString& text);

    static bool IsProgressDialogShown();
    // The open window, or null; for hosts that place it and for tests.
    static QWidget* ProgressWindow();
};
