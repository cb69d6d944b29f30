#include "IFloorMng.h"

#include "ProjectStore.h"
#include "SqlStatement.h"

#include <QDir>

QString IFloorMng::GetDwgFullNameByFloorName(const QString& floor)
{
    const ProjectStore* store = ProjectStore::Require();
    if (!store)
        return QString();
    SqlStatement stmt(store->Db(), "SELECT dwg_file FROM floor WHERE name = ?");
    stmt.Bind(1, floor);
    if (!stmt.Next() || stmt.Text(0).isEmpty())
        return QString();
    return QDir::cleanPath(QDir(store->Folder()).absoluteFilePath(stmt.Text(0)));
}
