#pragma once

// Control ids on Qt widgets: every control of a dialog carries the id of its
// template entry in the property "controlId", so code and tests find it by id.
class QObject;
class QWidget;

void SetDlgCtrlID(QObject* control, int id);
// The control's id, 0 when it has none.
int GetDlgCtrlID(const QObject* control);
// The first descendant of `parent` (depth first, the parent itself excluded) that
// carries the id; null when none does.
QWidget* GetDlgItem(const QObject* parent, int id);
