#pragma once

// The framework's file dialog as the module uses it: open or save, a title, an
// initial folder and file name, a filter in the "*.scn|*.scn|" form, the OFN_ flags.
// The dialog itself is whatever handler is installed: the Qt file dialog in a running
// application, a scripted or recording one in tests and host scripts.
#include "WinTypes.h"

#include <QString>

#include <functional>

class QWidget;

constexpr DWORD OFN_OVERWRITEPROMPT = 0x00000002;
constexpr DWORD OFN_HIDEREADONLY = 0x00000004;

struct FileDialogRequest
{
    bool open = true;
    QString title;
    QString initialDir;
    QString fileName;
    QString defaultExt;
    QString filter;
    DWORD flags = 0;
};

// Returns true with the chosen full path, false when the user cancelled.
using FileDialogHandler = std::function<bool(const FileDialogRequest&, QString& path)>;

class CFileDialog
{
public:
    // `defaultExt` without the dot ("scn"); `filter` as "描述|*.ext|…|".
    CFileDialog(BOOL bOpenFileDialog, const QString& defaultExt = QString(),
        const QString& fileName = QString(), DWORD flags = 0, const QString& filter = QString(),
        QWidget* parent = nullptr);

    QString m_strTitle;
    QString m_strInitialDir;

    // IDOK with a path, IDCANCEL otherwise.
    int DoModal();
    QString GetPathName() const { return m_path; }
    const FileDialogRequest& Request() const { return m_request; }

private:
    FileDialogRequest m_request;
    QWidget* m_parent;
    QString m_path;
};

// Replaces the handler; returns the previous one so a test can put it back.
FileDialogHandler SetFileDialogHandler(FileDialogHandler handler);
// Installed by the widget layer: shows the Qt file dialog.
void SetGuiFileDialog(FileDialogHandler dialog);
