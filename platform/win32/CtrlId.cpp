#include "CtrlId.h"

#include <QVariant>
#include <QWidget>

namespace {
constexpr const char* kControlIdProperty = "controlId";
}

void SetDlgCtrlID(QObject* control, int id)
{
    if (control)
        control->setProperty(kControlIdProperty, id);
}

int GetDlgCtrlID(const QObject* control)
{
    return control ? control->property(kControlIdProperty).toInt() : 0;
}

QWidget* GetDlgItem(const QObject* parent, int id)
{
    if (!parent || id == 0)
        return nullptr;
    for (QObject* child : parent->children()) {
        if (child->isWidgetType() && GetDlgCtrlID(child) == id)
            return static_cast<QWidget*>(child);
        if (QWidget* found = GetDlgItem(child, id))
            return found;
    }
    return nullptr;
}
