#include "CQtxmMng.h"

#include "ProjectStore.h"
#include "SqlStatement.h"

namespace {

const char* const kQdColumns
    = "SELECT q.qd_id, f.name, q.code, q.idx, q.name, q.feature, q.unit, q.quantity, "
      "q.sys_code FROM qd_item q JOIN floor f ON f.floor_id = q.floor_id ";
const char* const kDeColumns = "SELECT d.de_id, f.name, d.qd_id, d.code, d.idx, d.name, d.unit, d.quantity, "
                               "d.sys_code FROM de_item d JOIN floor f ON f.floor_id = d.floor_id ";

bool floorExists(const ProjectStore& store, const QString& floor)
{
    SqlStatement stmt(store.Db(), "SELECT 1 FROM floor WHERE name = ?");
    stmt.Bind(1, floor);
    if (stmt.Next())
        return true;
    ProjectStore::Fail(QStringLiteral("the project has no floor \"%1\"").arg(floor));
    return false;
}

SQvKsQdInfo qdFromRow(const SqlStatement& r, ProjectStore& store)
{
    const auto pending = store.PendingQd().find(r.Int64(0));
    if (pending != store.PendingQd().end())
        return pending->second;
    return { r.Int64(0), r.Text(1), r.Text(2), r.Int(3), r.Text(4), r.Text(5), r.Text(6), r.Double(7),
        r.Text(8) };
}

SQvKsDeInfo deFromRow(const SqlStatement& r, ProjectStore& store)
{
    const auto pending = store.PendingDe().find(r.Int64(0));
    if (pending != store.PendingDe().end())
        return pending->second;
    return { r.Int64(0), r.Text(1), r.Int64(2), r.Text(3), r.Int(4), r.Text(5), r.Text(6), r.Double(7),
        r.Text(8) };
}

bool readDe(ProjectStore& store, SqlStatement& stmt, QVector<SQvKsDeInfo>& items)
{
    while (stmt.Next())
        items.push_back(deFromRow(stmt, store));
    if (!stmt.Done())
        store.FailSql(QStringLiteral("the quota items cannot be read"));
    return stmt.Done();
}

// The items of one floor read with the floor itself, one round trip to a server: a
// floor without items gives one row without an item, an unknown floor none.
const char* const kQdOfFloor
    = "SELECT q.qd_id, f.name, q.code, q.idx, q.name, q.feature, q.unit, q.quantity, q.sys_code "
      "FROM floor f LEFT JOIN qd_item q ON q.floor_id = f.floor_id WHERE f.name = ? ORDER BY q.code, q.idx";
const char* const kDeOfFloor
    = "SELECT d.de_id, f.name, d.qd_id, d.code, d.idx, d.name, d.unit, d.quantity, d.sys_code "
      "FROM floor f LEFT JOIN de_item d ON d.floor_id = f.floor_id WHERE f.name = ? ORDER BY d.code, d.idx";

template <typename Item, typename FromRow>
bool readFloorItems(ProjectStore& store, const char* sql, const QString& floor, QVector<Item>& items,
    FromRow fromRow, const QString& what)
{
    SqlStatement stmt(store.Db(), sql);
    stmt.Bind(1, floor);
    bool floorFound = false;
    while (stmt.Next()) {
        floorFound = true;
        if (!stmt.IsNull(0))
            items.push_back(fromRow(stmt, store));
    }
    if (!stmt.Done()) {
        store.FailSql(what);
        return false;
    }
    if (!floorFound)
        ProjectStore::Fail(QStringLiteral("the project has no floor \"%1\"").arg(floor));
    return floorFound;
}

bool idExists(const ProjectStore& store, const char* sql, qint64 id)
{
    SqlStatement stmt(store.Db(), sql);
    stmt.Bind(1, id);
    return stmt.Next();
}

} // namespace

bool CQtxmMng::GetAllQdInfos(const QString& floor, QVector<SQvKsQdInfo>& items)
{
    items.clear();
    ProjectStore* store = ProjectStore::Require();
    return store
        && readFloorItems(
            *store, kQdOfFloor, floor, items, qdFromRow, QStringLiteral("the bill items cannot be read"));
}

bool CQtxmMng::GetAllDeInfos(const QString& floor, QVector<SQvKsDeInfo>& items)
{
    items.clear();
    ProjectStore* store = ProjectStore::Require();
    return store
        && readFloorItems(
            *store, kDeOfFloor, floor, items, deFromRow, QStringLiteral("the quota items cannot be read"));
}

bool CQtxmMng::GetAllQdDeInfosByCode(
    const QString& floor, const QString& qdCode, int qdIndex, QVector<SQvKsDeInfo>& items)
{
    items.clear();
    ProjectStore* store = ProjectStore::Require();
    if (!store || !floorExists(*store, floor))
        return false;
    SqlStatement stmt(store->Db(),
        (QByteArray(kDeColumns)
            + "JOIN qd_item q ON q.qd_id = d.qd_id WHERE f.name = ? AND q.code = ? AND q.idx = ? "
              "ORDER BY d.code, d.idx")
            .constData());
    stmt.Bind(1, floor).Bind(2, qdCode).Bind(3, qdIndex);
    return readDe(*store, stmt, items);
}

bool CQtxmMng::SetQdInfo(const SQvKsQdInfo& item)
{
    ProjectStore* store = ProjectStore::Require();
    if (!store)
        return false;
    if (!idExists(*store, "SELECT 1 FROM qd_item WHERE qd_id = ?", item.nId)) {
        ProjectStore::Fail(QStringLiteral("there is no bill item %1").arg(item.nId));
        return false;
    }
    store->PendingQd()[item.nId] = item;
    return true;
}

bool CQtxmMng::SetQdDeInfo(const SQvKsDeInfo& item)
{
    ProjectStore* store = ProjectStore::Require();
    if (!store)
        return false;
    if (!idExists(*store, "SELECT 1 FROM de_item WHERE de_id = ?", item.nId)) {
        ProjectStore::Fail(QStringLiteral("there is no quota item %1").arg(item.nId));
        return false;
    }
    store->PendingDe()[item.nId] = item;
    return true;
}

QString SQvKsQdInfo::GetName() const
{
    if (strCode.trimmed().isEmpty() && strName.trimmed().isEmpty())
        return QString();
    return QStringLiteral("%1-%2 %3").arg(strCode.trimmed()).arg(nIndex).arg(strName.trimmed());
}

QString SQvKsDeInfo::GetName() const
{
    if (strCode.trimmed().isEmpty() && strName.trimmed().isEmpty())
        return QString();
    return QStringLiteral("%1-%2 %3").arg(strCode.trimmed()).arg(nIndex).arg(strName.trimmed());
}
