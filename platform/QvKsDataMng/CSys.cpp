#include "CSys.h"

#include "AttLibrary.h"
#include "ProjectStore.h"

QString CSys::GetNamePath(const QString& categoryId)
{
    const ProjectStore* store = ProjectStore::Require();
    int major = 0, middle = 0, small = 0;
    AttLibrary::Category category;
    if (!store || !AttLibrary::ParseIds(categoryId, major, middle, small)
        || !AttLibrary::FindById(store->Db(), major, middle, small, category))
        return QString();
    return AttLibrary::NamePath(store->Db(), category);
}
