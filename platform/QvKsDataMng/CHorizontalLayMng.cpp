#include "CHorizontalLayMng.h"

#include "ProjectStore.h"
#include "SqlStatement.h"

bool CHorizontalLayMng::GetAllLayModeInfos(const QString& floor, QVector<SQvKsLayModeInfo>& modes)
{
    modes.clear();
    const ProjectStore* store = ProjectStore::Require();
    if (!store)
        return false;
    SqlStatement known(store->Db(), "SELECT floor_id FROM floor WHERE name = ?");
    known.Bind(1, floor);
    if (!known.Next()) {
        ProjectStore::Fail(QStringLiteral("the project has no floor \"%1\"").arg(floor));
        return false;
    }
    SqlStatement stmt(
        store->Db(), "SELECT name, code, describe FROM lay_mode WHERE floor_id = ? ORDER BY ord");
    stmt.Bind(1, known.Int64(0));
    while (stmt.Next())
        modes.push_back({ stmt.Text(0), stmt.Text(1), stmt.Text(2) });
    return stmt.Done();
}

bool CHorizontalLayMng::GetVerticalLayModeName(QStringList& names)
{
    names.clear();
    const ProjectStore* store = ProjectStore::Require();
    if (!store)
        return false;
    SqlStatement stmt(store->Db(), "SELECT name FROM ver_lay_mode ORDER BY ord");
    while (stmt.Next())
        names << stmt.Text(0);
    return stmt.Done();
}
