#pragma once

// The check a specialty's codes pass before they are stored: no two codes under the
// same parent share a name (compared trimmed, so "A" and "A " are one), and every
// name is legal. Duplicates are looked for in
// the whole tree first, then names are judged, so the user hears of a clash before
// a bad name.
#include <QList>
#include <QString>
#include <QStringList>

enum class SysCodeSaveStatus {
    Ok,
    SiblingDuplicate, // `name` appears twice under one parent
    IllegalName, // `name` breaks the name rule
};

struct SysCodeSaveCheck
{
    SysCodeSaveStatus status = SysCodeSaveStatus::Ok;
    QString name;
};

// `siblingGroups`: the names of each parent's children, one list per parent, in the
// order the grid shows them. The first problem found, in that order.
SysCodeSaveCheck CheckSysCodesForSave(const QList<QStringList>& siblingGroups);
