// The Qt face of CFileDialog: QFileDialog with the title, folder, name and filter of
// the request. Installed with the Qt message box (InstallQtMessageBox).
#include "QtFileDialog.h"

#include "WinFileDialog.h"

#include <QApplication>
#include <QDir>
#include <QFileDialog>

namespace {
// "描述|*.a;*.b|…|" → "描述 (*.a *.b);;…"
QString qtFilter(const QString& filter)
{
    const QStringList parts = filter.split(u'|');
    QStringList out;
    for (qsizetype i = 0; i + 1 < parts.size(); i += 2) {
        if (parts[i].isEmpty())
            continue;
        QString patterns = parts[i + 1];
        patterns.replace(u';', u' ');
        // A description that names its patterns already is shown as it is.
        const bool named = parts[i].endsWith(QStringLiteral("(%1)").arg(patterns));
        out.append(named ? parts[i] : QStringLiteral("%1 (%2)").arg(parts[i], patterns));
    }
    return out.join(QStringLiteral(";;"));
}

bool showFileDialog(const FileDialogRequest& request, QString& path)
{
    if (!qobject_cast<QApplication*>(QCoreApplication::instance()))
        return false;
    QFileDialog dialog(QApplication::activeWindow(), request.title,
        QDir(request.initialDir).filePath(request.fileName), qtFilter(request.filter));
    dialog.setAcceptMode(request.open ? QFileDialog::AcceptOpen : QFileDialog::AcceptSave);
    dialog.setFileMode(request.open ? QFileDialog::ExistingFile : QFileDialog::AnyFile);
    dialog.setDefaultSuffix(request.defaultExt);
    // A name typed without an extension takes the chosen filter's.
    QObject::connect(
        &dialog, &QFileDialog::filterSelected, &dialog, [&dialog, &request](const QString& filter) {
            const qsizetype star = filter.lastIndexOf(QStringLiteral("(*."));
            const QString suffix = star < 0 ? request.defaultExt
                                            : filter.mid(star + 3).section(u')', 0, 0).section(u' ', 0, 0);
            dialog.setDefaultSuffix(suffix);
        });
    dialog.setOption(QFileDialog::DontConfirmOverwrite, !(request.flags & OFN_OVERWRITEPROMPT));
    if (dialog.exec() != QDialog::Accepted || dialog.selectedFiles().isEmpty())
        return false;
    path = dialog.selectedFiles().constFirst();
    return true;
}
} // namespace

void InstallQtFileDialog()
{
    SetGuiFileDialog(&showFileDialog);
}
