#include "CAtt.h"

#include "AttLibrary.h"
#include "ProjectStore.h"
#include "SqlStatement.h"
#include "SqlTransaction.h"

bool CAtt::Save()
{
    ProjectStore* store = ProjectStore::Require();
    if (!store)
        return false;
    if (store->PendingQd().empty() && store->PendingDe().empty())
        return true;
    SqlTransaction tx(store->Db());
    SqlStatement qd(store->Db(),
        "UPDATE qd_item SET code = ?, idx = ?, name = ?, feature = ?, unit = ?, "
        "quantity = ?, sys_code = ? WHERE qd_id = ?");
    SqlStatement de(store->Db(),
        "UPDATE de_item SET code = ?, idx = ?, name = ?, unit = ?, quantity = ?, "
        "sys_code = ? WHERE de_id = ?");
    bool ok = tx.IsActive();
    for (auto it = store->PendingQd().begin(); ok && it != store->PendingQd().end(); ++it) {
        const SQvKsQdInfo& i = it->second;
        qd.Bind(1, i.strCode).Bind(2, i.nIndex).Bind(3, i.strName).Bind(4, i.strFeature).Bind(5, i.strUnit);
        qd.Bind(6, i.dQuantity).Bind(7, i.strSysCode).Bind(8, i.nId);
        ok = qd.Exec();
    }
    for (auto it = store->PendingDe().begin(); ok && it != store->PendingDe().end(); ++it) {
        const SQvKsDeInfo& i = it->second;
        de.Bind(1, i.strCode).Bind(2, i.nIndex).Bind(3, i.strName).Bind(4, i.strUnit).Bind(5, i.dQuantity);
        de.Bind(6, i.strSysCode).Bind(7, i.nId);
        ok = de.Exec();
    }
    if (!ok || !tx.Commit()) {
        store->FailSql(QStringLiteral("the pipeline items cannot be saved"));
        return false;
    }
    store->PendingQd().clear();
    store->PendingDe().clear();
    return true;
}

bool CAtt::GetAllDetailMemIdsBySmallCategory(
    const SQvKsSmallCategoryId& category, QVector<SQvKsDetailMemId>& members)
{
    members.clear();
    const ProjectStore* store = ProjectStore::Require();
    int major = 0, middle = 0, small = 0;
    AttLibrary::Category found;
    if (!store || !category.IsComplete() || !AttLibrary::ParseIds(category.ToString(), major, middle, small)
        || !AttLibrary::FindById(store->Db(), major, middle, small, found) || small == 0)
        return false;
    SqlStatement stmt(store->Db(), "SELECT member_no FROM att_member WHERE cat_id = ? ORDER BY member_no");
    stmt.Bind(1, found.catId);
    while (stmt.Next())
        members.push_back(
            { category.strMajorId, category.strMiddleId, category.strSmallId, QString::number(stmt.Int(0)) });
    return stmt.Done();
}
