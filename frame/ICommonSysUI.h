#pragma once

// What the product's other modules call: the management dialog for a specialty,
// and the reload of the dialog that the command "bhgl" has open.
#include <QString>

#if defined(_WIN32)
#define QV_COMMONSYSUI_EXPORT __declspec(dllexport)
#else
#define QV_COMMONSYSUI_EXPORT __attribute__((visibility("default")))
#endif

class QV_COMMONSYSUI_EXPORT ICommonSysUI
{
public:
    // Opens the dialog on `spec` with the code `code` (level names joined by "\",
    // may be empty) selected; 1 when the user closed it with OK, else 0. The
    // import and export buttons stay hidden.
    static int SysCodeMng(QString spec, const QString& code);
};

extern "C" {
// Hands a system-code file to the dialog of the command "bhgl"; false when that
// dialog is not open.
QV_COMMONSYSUI_EXPORT bool RefreshSyscode(const QString& path);
}
