#include "WinFileDialog.h"

#include <cstdio>

namespace {
FileDialogHandler& installedHandler()
{
    static FileDialogHandler handler;
    return handler;
}
FileDialogHandler& guiDialog()
{
    static FileDialogHandler dialog;
    return dialog;
}
} // namespace

CFileDialog::CFileDialog(BOOL bOpenFileDialog, const QString& defaultExt, const QString& fileName,
    DWORD flags, const QString& filter, QWidget* parent)
    : m_parent(parent)
{
    m_request.open = bOpenFileDialog != 0;
    m_request.defaultExt = defaultExt.startsWith(u'.') ? defaultExt.mid(1) : defaultExt;
    m_request.fileName = fileName;
    m_request.flags = flags;
    m_request.filter = filter;
}

int CFileDialog::DoModal()
{
    m_request.title = m_strTitle;
    m_request.initialDir = m_strInitialDir;
    QString path;
    bool chosen = false;
    if (installedHandler())
        chosen = installedHandler()(m_request, path);
    else if (guiDialog())
        chosen = guiDialog()(m_request, path);
    else
        std::fprintf(
            stderr, "[file dialog] %s: no dialog available, cancelled\n", qPrintable(m_request.title));
    if (!chosen || path.isEmpty())
        return IDCANCEL;
    if (!m_request.defaultExt.isEmpty() && !path.section(u'/', -1).contains(u'.'))
        path += u'.' + m_request.defaultExt;
    m_path = path;
    return IDOK;
}

FileDialogHandler SetFileDialogHandler(FileDialogHandler handler)
{
    FileDialogHandler previous = std::move(installedHandler());
    installedHandler() = std::move(handler);
    return previous;
}

void SetGuiFileDialog(FileDialogHandler dialog)
{
    guiDialog() = std::move(dialog);
}
