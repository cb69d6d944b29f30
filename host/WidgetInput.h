#pragma once

// Real mouse and key input for script statements. Mouse events go through the
// top-level window of the widget, as the window system delivers them, so grabs,
// popups, double clicks and context menus behave as they do for a person; keys go
// to the widget that has the keyboard.
#include <QPoint>
#include <QString>
#include <Qt>

class QComboBox;
class QKeyCombination;
class QWidget;

class WidgetInput
{
public:
    // `pos` is in `widget`'s coordinates.
    static void Click(QWidget* widget, const QPoint& pos, Qt::MouseButton button = Qt::LeftButton,
        Qt::KeyboardModifiers modifiers = {});
    static void DoubleClick(QWidget* widget, const QPoint& pos);
    // Press at `from`, move past the drag distance and on to `to`, release there with
    // `dropModifiers` held.
    static void Drag(
        QWidget* widget, const QPoint& from, const QPoint& to, Qt::KeyboardModifiers dropModifiers);
    static void Key(QWidget* widget, QKeyCombination key);
    // Every character as a key press; characters beyond ASCII (Chinese) as text keys.
    static void Type(QWidget* widget, const QString& text);

    // Opens the combo's list with a click on its arrow, moves to the entry `text`
    // with the arrow keys and takes it with Enter. False with `error` when the combo
    // has no such entry or its list does not open.
    static bool ChooseInCombo(QComboBox* combo, const QString& text, QString& error);

    // The widget keys go to now: the open popup's focus, else the focus widget inside
    // the active dialog, else the active dialog; null when none of them is there.
    static QWidget* KeyTarget();
    // The open popup, else the active modal dialog; null at the top level.
    static QWidget* Innermost();
};
