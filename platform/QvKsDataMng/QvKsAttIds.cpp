#include "QvKsAttIds.h"

#include "AttLibrary.h"
#include "ProjectStore.h"
#include "SqlStatement.h"

namespace {

// The category and member of a member's name path; false when either is unknown.
bool findMember(const QString& namePath, AttLibrary::Category& category, qint64& memId, int& memberNo)
{
    const ProjectStore* store = ProjectStore::Require();
    QStringList names = namePath.split(QLatin1Char('\\'));
    if (!store || names.size() != 4 || names.last().isEmpty())
        return false;
    const QString member = names.takeLast();
    if (!AttLibrary::FindByNames(store->Db(), names, category) || category.small == 0)
        return false;
    SqlStatement stmt(store->Db(), "SELECT mem_id, member_no FROM att_member WHERE cat_id = ? AND name = ?");
    stmt.Bind(1, category.catId).Bind(2, member);
    if (!stmt.Next())
        return false;
    memId = stmt.Int64(0);
    memberNo = stmt.Int(1);
    return true;
}

} // namespace

QString SQvKsSmallCategoryId::ToString() const
{
    return QStringList { strMajorId, strMiddleId, strSmallId }.join(QLatin1Char('\\'));
}

SQvKsSmallCategoryId SmallCategoryNameToId(const QString& namePath)
{
    const ProjectStore* store = ProjectStore::Require();
    AttLibrary::Category category;
    const QStringList names = namePath.split(QLatin1Char('\\'));
    if (!store || names.size() != 3 || !AttLibrary::FindByNames(store->Db(), names, category))
        return {};
    return { QString::number(category.major), QString::number(category.middle),
        QString::number(category.small) };
}

SQvKsDetailMemId AttNameToAttId(const QString& namePath)
{
    AttLibrary::Category category;
    qint64 memId = 0;
    int memberNo = 0;
    if (!findMember(namePath, category, memId, memberNo))
        return {};
    return { QString::number(category.major), QString::number(category.middle),
        QString::number(category.small), QString::number(memberNo) };
}

QString SmallCategoryIdToIndex(const SQvKsSmallCategoryId& id)
{
    const ProjectStore* store = ProjectStore::Require();
    int major = 0, middle = 0, small = 0;
    AttLibrary::Category category;
    if (!store || !id.IsComplete() || !AttLibrary::ParseIds(id.ToString(), major, middle, small)
        || !AttLibrary::FindById(store->Db(), major, middle, small, category))
        return QString();
    return QString::number(category.catId);
}

QString AttNameToAttIndex(const QString& namePath)
{
    AttLibrary::Category category;
    qint64 memId = 0;
    int memberNo = 0;
    return findMember(namePath, category, memId, memberNo) ? QString::number(memId) : QString();
}
