#pragma once

// Script statements on the active dialog's controls (by control id), its buttons,
// the keyboard, the open popup menu, and the checks of controls and the title.
#include <QString>

#include <functional>

class QWidget;

class ControlStatements
{
public:
    explicit ControlStatements(std::function<void(const QString&)> report);

    // Runs the statement when it is one of these: `handled` tells whether it was.
    bool Execute(const QString& keyword, const QString& rest, QString& error, bool& handled);

private:
    bool Click(const QString& rest, QString& error);
    bool Check(bool checked, const QString& rest, QString& error);
    bool SetText(const QString& rest, QString& error);
    bool Choose(const QString& rest, QString& error);
    bool CloseDialog(const QString& keyword, QString& error);
    bool Key(const QString& rest, QString& error);
    bool Type(const QString& rest, QString& error);
    bool ClickOutside(QString& error);
    bool Menu(const QString& rest, QString& error);
    bool ExpectMenu(const QString& rest, QString& error);
    bool ExpectControl(const QString& keyword, const QString& rest, QString& error);
    bool ExpectTitle(const QString& rest, QString& error);

    // The control of the active dialog with the id at the start of `rest`.
    QWidget* Control(QString& rest, QString& error) const;

    std::function<void(const QString&)> m_report;
};
