#pragma once

// A dialog template as the module's dialogs are laid out: every control with its
// id, kind, text and rectangle in dialog units, and the edges it stays anchored to
// when the dialog is resized (1 top, 2 bottom, 4 left, 8 right).
#include <QList>
#include <QRect>
#include <QString>

enum class ControlKind { PushButton, DefPushButton, Static, ListBox, ListView, CheckBox, NumEdit };

struct ControlTemplate
{
    int id;
    ControlKind kind;
    QString text;
    QRect rect; // dialog units
    int anchors;
    bool visible = true;
};

struct DialogTemplate
{
    int id;
    QString caption;
    QSize size; // dialog units
    QList<ControlTemplate> controls;

    const ControlTemplate* control(int controlId) const;
};

// The system-code management dialog.
const DialogTemplate& SysCodeDlgTemplate();
