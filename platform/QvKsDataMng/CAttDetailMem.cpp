#include "CAttDetailMem.h"

#include "AttLibrary.h"
#include "ProjectStore.h"
#include "SqlStatement.h"

namespace {

bool lookUp(const SQvKsDetailMemId& id, QString& categoryPath, QString& name)
{
    const ProjectStore* store = ProjectStore::Require();
    int major = 0, middle = 0, small = 0;
    AttLibrary::Category category;
    bool ok = false;
    const int memberNo = id.strMemId.toInt(&ok);
    if (!store || !ok || !id.SmallCategory().IsComplete()
        || !AttLibrary::ParseIds(id.SmallCategory().ToString(), major, middle, small)
        || !AttLibrary::FindById(store->Db(), major, middle, small, category))
        return false;
    SqlStatement stmt(store->Db(), "SELECT name FROM att_member WHERE cat_id = ? AND member_no = ?");
    stmt.Bind(1, category.catId).Bind(2, memberNo);
    if (!stmt.Next())
        return false;
    name = stmt.Text(0);
    categoryPath = AttLibrary::NamePath(store->Db(), category);
    return !categoryPath.isEmpty();
}

} // namespace

QString CAttDetailMem::GetNamePath() const
{
    QString path, name;
    return lookUp(m_id, path, name) ? path + QLatin1Char('\\') + name : QString();
}

QString CAttDetailMem::GetName() const
{
    QString path, name;
    return lookUp(m_id, path, name) ? name : QString();
}
