#include "CReNameMng.h"

#include "AttLibrary.h"
#include "ProjectStore.h"
#include "SqlStatement.h"

bool CReNameMng::GetUpDetail(const QString& categoryIndex, QStringList& categoryIds)
{
    categoryIds.clear();
    const ProjectStore* store = ProjectStore::Require();
    bool ok = false;
    const qint64 key = categoryIndex.toLongLong(&ok);
    AttLibrary::Category self;
    if (!store || !ok || !AttLibrary::FindByKey(store->Db(), key, self) || self.small == 0)
        return false;
    auto idText = [](int major, int middle, int small) {
        return QStringLiteral("%1\\%2\\%3").arg(major).arg(middle).arg(small);
    };
    categoryIds << idText(self.major, self.middle, self.small);
    SqlStatement stmt(store->Db(),
        "SELECT c.major, c.middle, c.small FROM att_relation r "
        "JOIN att_category c ON c.cat_id = r.related_cat_id "
        "WHERE r.cat_id = ? AND c.small > 0 ORDER BY c.major, c.middle, c.small");
    stmt.Bind(1, key);
    while (stmt.Next()) {
        const QString id = idText(stmt.Int(0), stmt.Int(1), stmt.Int(2));
        if (!categoryIds.contains(id))
            categoryIds << id;
    }
    return stmt.Done();
}
