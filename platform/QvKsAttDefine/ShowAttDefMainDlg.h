#pragma once

// The attribute-definition dialog of the attribute module: browses the project's
// attribute library (major, middle and small categories and their detail members)
// opened at a name path, and adds or renames detail members, each change stored
// at once. IDOK when the library was changed, IDCANCEL otherwise.
//
//   bModal      run modally (the only way it runs here; false is taken as true)
//   namePath    the category or member to select on opening ("电气\管线\导线·导管")
//   owner       the owner window, or null for the active window
//   bSpecOnly   show only the major category (specialty) of `namePath`
#include "WinTypes.h"

#include <QString>

int ShowAttDefMainDlg(bool bModal, const QString& namePath, HWND* owner, bool bSpecOnly);
