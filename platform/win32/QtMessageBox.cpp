// The Qt face of MessageBoxExW: a QMessageBox with the buttons, icon and default
// button the Win32 style value asks for. Installed when this library is loaded.
#include "QtFileDialog.h"
#include "WinMessage.h"
#include "WinMessageBox.h"

#include <QApplication>
#include <QMessageBox>
#include <QPushButton>
#include <QWidget>

#include <vector>

namespace {
QMessageBox::Icon iconFor(UINT type)
{
    switch (type & MB_ICONMASK) {
    case MB_ICONERROR:
        return QMessageBox::Critical;
    case MB_ICONQUESTION:
        return QMessageBox::Question;
    case MB_ICONEXCLAMATION:
        return QMessageBox::Warning;
    case MB_ICONINFORMATION:
        return QMessageBox::Information;
    default:
        return QMessageBox::NoIcon;
    }
}

int showBox(const MessageBoxRequest& request)
{
    if (!qobject_cast<QApplication*>(QCoreApplication::instance()))
        return DefaultMessageBoxAnswer(request.type);
    QWidget* owner = qobject_cast<QWidget*>(request.owner);
    QMessageBox box(iconFor(request.type), request.caption, request.text, QMessageBox::NoButton, owner);
    if (request.type & MB_TASKMODAL)
        box.setWindowModality(Qt::ApplicationModal);
    struct Choice
    {
        QMessageBox::StandardButton button;
        int result;
    };
    std::vector<Choice> choices;
    switch (request.type & MB_TYPEMASK) {
    case MB_YESNO:
        choices = { { QMessageBox::Yes, IDYES }, { QMessageBox::No, IDNO } };
        break;
    case MB_YESNOCANCEL:
        choices
            = { { QMessageBox::Yes, IDYES }, { QMessageBox::No, IDNO }, { QMessageBox::Cancel, IDCANCEL } };
        break;
    case MB_OKCANCEL:
        choices = { { QMessageBox::Ok, IDOK }, { QMessageBox::Cancel, IDCANCEL } };
        break;
    default:
        choices = { { QMessageBox::Ok, IDOK } };
        break;
    }
    for (const Choice& c : choices)
        box.addButton(c.button);
    const int defaultIndex = (request.type & MB_DEFMASK) == MB_DEFBUTTON2 && choices.size() > 1 ? 1 : 0;
    box.setDefaultButton(choices[defaultIndex].button);
    if (request.type & MB_SETFOREGROUND) {
        box.raise();
        box.activateWindow();
    }
    box.exec();
    for (const Choice& c : choices)
        if (box.clickedButton() == box.button(c.button))
            return c.result;
    // Closed with Escape or the close box: the cancel-like answer.
    return choices.size() > 1 ? choices.back().result : IDOK;
}

HWND activeWindow()
{
    if (!qobject_cast<QApplication*>(QCoreApplication::instance()))
        return nullptr;
    if (QWidget* modal = QApplication::activeModalWidget())
        return modal;
    return QApplication::activeWindow();
}

HWND topLevelByTitle(const QString& title)
{
    if (!qobject_cast<QApplication*>(QCoreApplication::instance()))
        return nullptr;
    for (QWidget* w : QApplication::topLevelWidgets()) {
        if (w->isWindow() && w->windowTitle() == title)
            return w;
    }
    return nullptr;
}

const bool registered = [] {
    InstallQtMessageBox();
    return true;
}();
} // namespace

void InstallQtMessageBox()
{
    SetGuiMessageBox(&showBox, &activeWindow);
    SetTopLevelWindowFinder(&topLevelByTitle);
    InstallQtFileDialog();
}
