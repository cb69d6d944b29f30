#include "WidgetInput.h"

#include <QAbstractItemView>
#include <QApplication>
#include <QComboBox>
#include <QKeyCombination>
#include <QStyle>
#include <QStyleOptionComboBox>
#include <QTest>
#include <QWidget>
#include <QWindow>

namespace {
// The top-level window carrying `widget` and the point in its coordinates.
QWindow* WindowOf(QWidget* widget, const QPoint& pos, QPoint& windowPos)
{
    QWidget* top = widget->window();
    windowPos = widget->mapTo(top, pos);
    return top->windowHandle();
}
} // namespace

void WidgetInput::Click(
    QWidget* widget, const QPoint& pos, Qt::MouseButton button, Qt::KeyboardModifiers modifiers)
{
    QPoint at;
    if (QWindow* window = WindowOf(widget, pos, at))
        QTest::mouseClick(window, button, modifiers, at);
}

void WidgetInput::DoubleClick(QWidget* widget, const QPoint& pos)
{
    QPoint at;
    if (QWindow* window = WindowOf(widget, pos, at))
        QTest::mouseDClick(window, Qt::LeftButton, {}, at);
}

void WidgetInput::Drag(
    QWidget* widget, const QPoint& from, const QPoint& to, Qt::KeyboardModifiers dropModifiers)
{
    QPoint start;
    QWindow* window = WindowOf(widget, from, start);
    if (!window)
        return;
    const QPoint end = widget->mapTo(widget->window(), to);
    const QPoint step((end - start) / 4);
    QTest::mousePress(window, Qt::LeftButton, {}, start);
    // Past the drag distance first, then on in steps, as a hand moves.
    QTest::mouseMove(window, start + QPoint(0, QApplication::startDragDistance() + 2));
    for (int i = 1; i <= 4; ++i)
        QTest::mouseMove(window, i == 4 ? end : start + step * i);
    QTest::mouseRelease(window, Qt::LeftButton, dropModifiers, end);
}

void WidgetInput::Key(QWidget* widget, QKeyCombination key)
{
    // A window's shortcuts answer only while it is the active window, and a dialog
    // just opened on a busy machine may not be yet: a hand would click it first.
    QWidget* window = widget->window();
    if (!(window->windowType() == Qt::Popup) && QApplication::activeWindow() != window) {
        window->activateWindow();
        // Still inactive after the wait, the key goes anyway: its own handler answers.
        (void)QTest::qWaitForWindowActive(window, 1000);
    }
    QTest::keyClick(widget, key.key(), key.keyboardModifiers());
}

void WidgetInput::Type(QWidget* widget, const QString& text)
{
    for (const QChar c : text) {
        if (c.unicode() >= 0x20 && c.unicode() < 0x7F)
            QTest::keyClick(widget, char(c.unicode()));
        else
            QTest::sendKeyEvent(QTest::Click, widget, Qt::Key_unknown, QString(c), {});
    }
}

bool WidgetInput::ChooseInCombo(QComboBox* combo, const QString& text, QString& error)
{
    const int wanted = combo->findText(text, Qt::MatchExactly);
    if (wanted < 0) {
        QStringList entries;
        for (int i = 0; i < combo->count(); ++i)
            entries.append(combo->itemText(i));
        error = QStringLiteral("expected an entry \"%1\", found \"%2\"")
                    .arg(text, entries.join(QStringLiteral("\", \"")));
        return false;
    }
    QAbstractItemView* view = combo->view();
    if (!view->isVisible()) {
        QStyleOptionComboBox option;
        option.initFrom(combo);
        option.editable = combo->isEditable();
        const QRect arrow
            = combo->style()->subControlRect(QStyle::CC_ComboBox, &option, QStyle::SC_ComboBoxArrow, combo);
        Click(combo, arrow.isValid() ? arrow.center() : combo->rect().center());
    }
    if (!view->isVisible()) {
        error = QStringLiteral("the list of the combo did not open");
        return false;
    }
    const int current = view->currentIndex().isValid() ? view->currentIndex().row() : -1;
    if (current < 0)
        QTest::keyClick(view, Qt::Key_Home);
    const int from = current < 0 ? 0 : current;
    for (int i = from; i != wanted; i += wanted > from ? 1 : -1)
        QTest::keyClick(view, wanted > from ? Qt::Key_Down : Qt::Key_Up);
    QTest::keyClick(view, Qt::Key_Return);
    return true;
}

QWidget* WidgetInput::KeyTarget()
{
    if (QWidget* popup = QApplication::activePopupWidget())
        return popup->focusWidget() ? popup->focusWidget() : popup;
    // The dialog's own focus child: the application's focus widget is null while the
    // window system has not activated the dialog's window (offscreen, say).
    QWidget* dialog = QApplication::activeModalWidget();
    if (!dialog)
        return QApplication::focusWidget();
    return dialog->focusWidget() ? dialog->focusWidget() : dialog;
}

QWidget* WidgetInput::Innermost()
{
    if (QWidget* popup = QApplication::activePopupWidget())
        return popup;
    return QApplication::activeModalWidget();
}
