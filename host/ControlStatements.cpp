#include "ControlStatements.h"

#include "ModalDriver.h"
#include "ScriptWords.h"
#include "WidgetInput.h"
#include "WinTypes.h"

#include <QAbstractButton>
#include <QAbstractItemView>
#include <QApplication>
#include <QComboBox>
#include <QDialog>
#include <QKeySequence>
#include <QLabel>
#include <QLineEdit>
#include <QListWidget>
#include <QMenu>
#include <QWindow>

namespace {
QString ControlText(QWidget* control)
{
    if (auto* edit = qobject_cast<QLineEdit*>(control))
        return edit->text();
    if (auto* button = qobject_cast<QAbstractButton*>(control))
        return button->text();
    if (auto* label = qobject_cast<QLabel*>(control))
        return label->text();
    if (auto* combo = qobject_cast<QComboBox*>(control))
        return combo->currentText();
    if (auto* list = qobject_cast<QListWidget*>(control))
        return list->currentItem() ? list->currentItem()->text() : QString();
    if (auto* edit = control->findChild<QLineEdit*>())
        return edit->text();
    return control->windowTitle();
}

QAction* MenuAction(QMenu* menu, int id)
{
    for (QAction* action : menu->actions()) {
        const bool byData = action->data().isValid() && action->data().toInt() == id;
        if ((byData || action->objectName() == QString::number(id)) && action->isVisible())
            return action;
    }
    return nullptr;
}

void Dismiss(QWidget* dialog, bool accept)
{
    if (auto* box = qobject_cast<QDialog*>(dialog))
        accept ? box->accept() : box->reject();
    else
        dialog->close();
}
} // namespace

ControlStatements::ControlStatements(std::function<void(const QString&)> report)
    : m_report(std::move(report))
{ }

bool ControlStatements::Execute(const QString& keyword, const QString& rest, QString& error, bool& handled)
{
    handled = true;
    if (keyword == QLatin1String("click"))
        return Click(rest, error);
    if (keyword == QLatin1String("check") || keyword == QLatin1String("uncheck"))
        return Check(keyword == QLatin1String("check"), rest, error);
    if (keyword == QLatin1String("set-text"))
        return SetText(rest, error);
    if (keyword == QLatin1String("choose"))
        return Choose(rest, error);
    if (keyword == QLatin1String("ok") || keyword == QLatin1String("cancel")
        || keyword == QLatin1String("close"))
        return CloseDialog(keyword, error);
    if (keyword == QLatin1String("key"))
        return Key(rest, error);
    if (keyword == QLatin1String("type"))
        return Type(rest, error);
    if (keyword == QLatin1String("click-outside"))
        return ClickOutside(error);
    if (keyword == QLatin1String("menu"))
        return Menu(rest, error);
    if (keyword == QLatin1String("expect-menu"))
        return ExpectMenu(rest, error);
    if (keyword == QLatin1String("expect-title"))
        return ExpectTitle(rest, error);
    static const QStringList controlChecks { QStringLiteral("expect-visible"),
        QStringLiteral("expect-hidden"), QStringLiteral("expect-enabled"), QStringLiteral("expect-disabled"),
        QStringLiteral("expect-checked"), QStringLiteral("expect-unchecked"), QStringLiteral("expect-text") };
    if (controlChecks.contains(keyword))
        return ExpectControl(keyword, rest, error);
    handled = false;
    return false;
}

QWidget* ControlStatements::Control(QString& rest, QString& error) const
{
    QWidget* dialog = QApplication::activeModalWidget();
    const QString word = ScriptWords::Take(rest);
    bool ok = false;
    const int id = word.toInt(&ok);
    QWidget* control = ok ? ModalDriver::FindControl(dialog, id) : nullptr;
    if (!control)
        error = dialog
            ? QStringLiteral("expected a control %1 in \"%2\", found none").arg(word, dialog->windowTitle())
            : QStringLiteral("expected a dialog with the control %1, found no dialog").arg(word);
    return control;
}

bool ControlStatements::Click(const QString& rest, QString& error)
{
    QString tail = rest;
    QWidget* control = Control(tail, error);
    if (!control)
        return false;
    if (!control->isVisible() || !control->isEnabled()) {
        error = QStringLiteral("expected the control %1 visible and enabled, found it %2")
                    .arg(rest, control->isVisible() ? QStringLiteral("disabled") : QStringLiteral("hidden"));
        return false;
    }
    WidgetInput::Click(control, control->rect().center());
    return true;
}

bool ControlStatements::Check(bool checked, const QString& rest, QString& error)
{
    QString tail = rest;
    auto* box = qobject_cast<QAbstractButton*>(Control(tail, error));
    if (!box || !box->isCheckable()) {
        error = box ? QStringLiteral("expected the control %1 to be a check box, found a button").arg(rest)
                    : error;
        return false;
    }
    if (box->isChecked() != checked)
        WidgetInput::Click(box, box->rect().center());
    error = QStringLiteral("expected the check box %1 %2 after the click, found it unchanged")
                .arg(rest, checked ? QStringLiteral("ticked") : QStringLiteral("unticked"));
    return box->isChecked() == checked;
}

bool ControlStatements::SetText(const QString& rest, QString& error)
{
    QString text = rest;
    QWidget* control = Control(text, error);
    if (!control)
        return false;
    QLineEdit* edit = qobject_cast<QLineEdit*>(control);
    if (!edit)
        edit = control->findChild<QLineEdit*>();
    if (!edit || !edit->isVisible()) {
        error = QStringLiteral("expected an edit box %1, found %2")
                    .arg(rest.section(u' ', 0, 0), control->metaObject()->className());
        return false;
    }
    // As a person does: click into it, select everything, type over it.
    WidgetInput::Click(edit, edit->rect().center());
    WidgetInput::Key(edit, QKeyCombination(Qt::ControlModifier, Qt::Key_A));
    if (text.isEmpty())
        WidgetInput::Key(edit, QKeyCombination(Qt::Key_Delete));
    else
        WidgetInput::Type(edit, text);
    return true;
}

bool ControlStatements::Choose(const QString& rest, QString& error)
{
    QString text = rest;
    QWidget* control = Control(text, error);
    if (!control)
        return false;
    if (auto* combo = qobject_cast<QComboBox*>(control))
        return WidgetInput::ChooseInCombo(combo, text, error);
    auto* list = qobject_cast<QAbstractItemView*>(control);
    if (!list) {
        error = QStringLiteral("expected a list or combo %1, found %2")
                    .arg(rest.section(u' ', 0, 0), control->metaObject()->className());
        return false;
    }
    const QModelIndexList found
        = list->model()->match(list->model()->index(0, 0), Qt::DisplayRole, text, 1, Qt::MatchExactly);
    if (found.isEmpty()) {
        error = QStringLiteral("expected an entry \"%1\" in the list %2, found none")
                    .arg(text, rest.section(u' ', 0, 0));
        return false;
    }
    list->scrollTo(found.first());
    WidgetInput::Click(list->viewport(), list->visualRect(found.first()).center());
    return true;
}

bool ControlStatements::CloseDialog(const QString& keyword, QString& error)
{
    QWidget* dialog = QApplication::activeModalWidget();
    if (!dialog) {
        error = QStringLiteral("expected a dialog to %1, found none").arg(keyword);
        return false;
    }
    m_report(QStringLiteral("dialog \"%1\": %2").arg(dialog->windowTitle(), keyword));
    if (keyword == QLatin1String("close")) {
        // The close box: the window system asks the window to close.
        dialog->windowHandle()->close();
        return true;
    }
    const bool accept = keyword == QLatin1String("ok");
    auto* button = qobject_cast<QAbstractButton*>(ModalDriver::FindControl(dialog, accept ? IDOK : IDCANCEL));
    if (button && button->isVisible() && button->isEnabled())
        WidgetInput::Click(button, button->rect().center());
    else
        Dismiss(dialog, accept);
    return true;
}

bool ControlStatements::Key(const QString& rest, QString& error)
{
    const QKeySequence sequence = QKeySequence::fromString(rest, QKeySequence::PortableText);
    QWidget* target = WidgetInput::KeyTarget();
    if (sequence.count() != 1 || sequence[0].key() == Qt::Key_unknown || !target) {
        error = target
            ? QStringLiteral("expected one key (Enter, Escape, Tab, Del, Left, Ctrl+C …), found \"%1\"")
                  .arg(rest)
            : QStringLiteral("expected a window for the key, found none");
        return false;
    }
    WidgetInput::Key(target, sequence[0]);
    return true;
}

bool ControlStatements::Type(const QString& rest, QString& error)
{
    QWidget* target = WidgetInput::KeyTarget();
    if (!target) {
        error = QStringLiteral("expected a window to type into, found none");
        return false;
    }
    WidgetInput::Type(target, rest);
    return true;
}

bool ControlStatements::ClickOutside(QString& error)
{
    QWidget* dialog = QApplication::activeModalWidget();
    if (!dialog) {
        error = QStringLiteral("expected a dialog, found none");
        return false;
    }
    // A spot of the dialog itself, where no control lies.
    for (const QPoint& corner : { QPoint(3, 3), QPoint(dialog->width() - 4, 3),
             QPoint(3, dialog->height() - 4), QPoint(dialog->width() - 4, dialog->height() - 4) }) {
        if (!dialog->childAt(corner)) {
            WidgetInput::Click(dialog, corner);
            return true;
        }
    }
    error = QStringLiteral("expected a free spot in the dialog, found controls everywhere");
    return false;
}

bool ControlStatements::Menu(const QString& rest, QString& error)
{
    auto* menu = qobject_cast<QMenu*>(QApplication::activePopupWidget());
    bool ok = false;
    const int id = rest.toInt(&ok);
    QAction* action = menu && ok ? MenuAction(menu, id) : nullptr;
    if (!action || !action->isEnabled()) {
        error = QStringLiteral("expected an enabled menu entry %1, found %2")
                    .arg(rest,
                        !menu        ? QStringLiteral("no open menu")
                            : action ? QStringLiteral("it disabled")
                                     : QStringLiteral("none"));
        return false;
    }
    m_report(QStringLiteral("menu: %1 \"%2\"").arg(rest, action->text()));
    WidgetInput::Click(menu, menu->actionGeometry(action).center());
    return true;
}

bool ControlStatements::ExpectMenu(const QString& rest, QString& error)
{
    auto* menu = qobject_cast<QMenu*>(QApplication::activePopupWidget());
    QString tail = rest;
    const QString word = ScriptWords::Take(tail);
    const QString wanted = tail.toLower();
    static const QStringList states { QStringLiteral("enabled"), QStringLiteral("disabled"),
        QStringLiteral("absent") };
    if (!menu || !states.contains(wanted)) {
        error = menu ? QStringLiteral("expect-menu ID enabled|disabled|absent")
                     : QStringLiteral("expected an open menu, found none");
        return false;
    }
    QAction* action = MenuAction(menu, word.toInt());
    const QString found = !action ? states[2] : action->isEnabled() ? states[0] : states[1];
    error = QStringLiteral("expected the menu entry %1 %2, found it %3").arg(word, wanted, found);
    return found == wanted;
}

bool ControlStatements::ExpectControl(const QString& keyword, const QString& rest, QString& error)
{
    QString tail = rest;
    QWidget* control = Control(tail, error);
    if (!control)
        return false;
    const QString id = rest.section(u' ', 0, 0);
    if (keyword == QLatin1String("expect-text")) {
        const QString found = ControlText(control);
        error = QStringLiteral("expected the control %1 to read \"%2\", found \"%3\"").arg(id, tail, found);
        return found == tail;
    }
    auto* button = qobject_cast<QAbstractButton*>(control);
    const QString wanted = keyword.mid(7); // after "expect-"
    QString found;
    if (wanted == QLatin1String("visible") || wanted == QLatin1String("hidden"))
        found = control->isVisible() ? QStringLiteral("visible") : QStringLiteral("hidden");
    else if (wanted == QLatin1String("enabled") || wanted == QLatin1String("disabled"))
        found = control->isEnabled() ? QStringLiteral("enabled") : QStringLiteral("disabled");
    else
        found = !button           ? QStringLiteral("no check box")
            : button->isChecked() ? QStringLiteral("checked")
                                  : QStringLiteral("unchecked");
    error = QStringLiteral("expected the control %1 %2, found it %3").arg(id, wanted, found);
    return found == wanted;
}

bool ControlStatements::ExpectTitle(const QString& rest, QString& error)
{
    // No title expected: no dialog may be open.
    QWidget* dialog = QApplication::activeModalWidget();
    const QString found = dialog ? u'"' + dialog->windowTitle() + u'"' : QStringLiteral("no dialog");
    const QString wanted = rest.isEmpty() ? QStringLiteral("no dialog") : u'"' + rest + u'"';
    error = QStringLiteral("expected %1, found %2").arg(wanted, found);
    return found == wanted;
}
