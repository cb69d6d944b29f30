#include "CProj.h"

#include "ProjectStore.h"
#include "SqlStatement.h"

namespace {

QString meta(const char* key)
{
    const ProjectStore* store = ProjectStore::Require();
    return store ? store->Meta(QLatin1String(key)) : QString();
}

bool setMeta(const char* key, const QString& value)
{
    ProjectStore* store = ProjectStore::Require();
    return store && store->SetMeta(QLatin1String(key), value);
}

bool exists(const char* sql, const QString& name)
{
    const ProjectStore* store = ProjectStore::Require();
    if (!store)
        return false;
    SqlStatement stmt(store->Db(), sql);
    stmt.Bind(1, name);
    return stmt.Next();
}

} // namespace

bool CProj::GetAllFloorData(QVector<SQvKsFloorData>& floors) const
{
    floors.clear();
    const ProjectStore* store = ProjectStore::Require();
    if (!store)
        return false;
    SqlStatement stmt(
        store->Db(), "SELECT name, dwg_file, elevation, height FROM floor ORDER BY ord, floor_id");
    while (stmt.Next())
        floors.push_back({ stmt.Text(0), stmt.Text(1), stmt.Double(2), stmt.Double(3) });
    return stmt.Done();
}

QString CProj::GetCurFloorName() const
{
    return meta("current_floor");
}

bool CProj::SetCurFloorName(const QString& floor)
{
    if (!ProjectStore::Require())
        return false;
    if (!exists("SELECT 1 FROM floor WHERE name = ?", floor)) {
        ProjectStore::Fail(QStringLiteral("the project has no floor \"%1\"").arg(floor));
        return false;
    }
    return setMeta("current_floor", floor);
}

QString CProj::GetPrjName() const
{
    return meta("project_name");
}

int CProj::GetColorShowType() const
{
    return meta("color_show_type").toInt();
}

bool CProj::SetColorShowType(int type)
{
    return setMeta("color_show_type", QString::number(type));
}

QString CProj::GetCurrentSpec() const
{
    return meta("current_spec");
}

bool CProj::SetCurrentSpec(const QString& spec)
{
    if (!ProjectStore::Require())
        return false;
    if (!exists("SELECT 1 FROM spec WHERE name = ?", spec)) {
        ProjectStore::Fail(QStringLiteral("the project has no specialty \"%1\"").arg(spec));
        return false;
    }
    return setMeta("current_spec", spec);
}
