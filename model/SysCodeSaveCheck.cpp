#include "SysCodeSaveCheck.h"

#include "CQVCheckSysNameLegal.h"

#include <QSet>

SysCodeSaveCheck CheckSysCodesForSave(const QList<QStringList>& siblingGroups)
{
    for (const QStringList& group : siblingGroups) {
        QSet<QString> seen;
        seen.reserve(group.size());
        for (const QString& name : group) {
            if (seen.contains(name))
                return { SysCodeSaveStatus::SiblingDuplicate, name };
            seen.insert(name);
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
