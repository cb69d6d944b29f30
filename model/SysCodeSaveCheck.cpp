#include "SysCodeSaveCheck.h"

#include "CQVCheckSysNameLegal.h"

#include <QSet>

SysCodeSaveCheck CheckSysCodesForSave(const QList<QStringList>& siblingGroups)
{
    for (const QStringList& group : siblingGroups) {
        QSet<QString> seen;
        seen.reserve(group.size());
        // Names are one when they are one trimmed, as the name rule judges them.
        for (const QString& name : group) {
            const QString trimmed = name.trimmed();
            if (seen.contains(trimmed))
                return { SysCodeSaveStatus::SiblingDuplicate, trimmed };
            seen.insert(trimmed);
        }
    }
    for (const QStringList& group : siblingGroups) {
        for (const QString& name : group) {
            if (!CQVCheckSysNameLegal::CheckSysNameLegal(name))
                return { SysCodeSaveStatus::IllegalName, name };
        }
    }
    return {};
}
