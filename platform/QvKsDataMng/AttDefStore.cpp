#include "AttDefStore.h"

#include "AttLibrary.h"
#include "ProjectStore.h"
#include "SqlStatement.h"
#include "SqlTransaction.h"

namespace {
bool FindCategory(SqlDb* db, const QString& path, AttLibrary::Category& category)
{
    const QStringList names = path.split(u'\\');
    return names.size() == 3 && AttLibrary::FindByNames(db, names, category) && category.small != 0;
}

bool MemberExists(SqlDb* db, qint64 catId, const QString& name)
{
    SqlStatement find(db, "SELECT 1 FROM att_member WHERE cat_id = ? AND name = ?");
    find.Bind(1, catId).Bind(2, name);
    return find.Next();
}

bool Fail(QString& error, const QString& message)
{
    error = message;
    return false;
}
} // namespace

QString AttDefStore::CheckName(const QString& name)
{
    if (name.trimmed().isEmpty())
        return QStringLiteral("名称不能为空");
    if (name.contains(u'\\'))
        return QStringLiteral("名称中不能包含\\");
    if (name.size() > kMaxNameLength)
        return QStringLiteral("名称过长");
    return QString();
}

bool AttDefStore::LoadPaths(QStringList& categoryPaths, QStringList& memberPaths)
{
    categoryPaths.clear();
    memberPaths.clear();
    ProjectStore* store = ProjectStore::Require();
    if (!store)
        return false;
    SqlDb* db = store->Db();
    SqlStatement categories(
        db, "SELECT cat_id FROM att_category WHERE small <> 0 ORDER BY major, middle, small");
    SqlStatement members(db, "SELECT name FROM att_member WHERE cat_id = ? ORDER BY member_no");
    while (categories.Next()) {
        AttLibrary::Category category;
        if (!AttLibrary::FindByKey(db, categories.Int64(0), category))
            continue;
        const QString path = AttLibrary::NamePath(db, category);
        categoryPaths.append(path);
        members.Reset();
        members.Bind(1, category.catId);
        while (members.Next())
            memberPaths.append(path + u'\\' + members.Text(0));
    }
    return categories.Done();
}

namespace {
// The open store when `name` may be a member's name; null with `error` otherwise.
SqlDb* StoreForEdit(const QString& name, QString& error)
{
    const QString problem = AttDefStore::CheckName(name);
    if (!problem.isEmpty()) {
        Fail(error, problem);
        return nullptr;
    }
    ProjectStore* store = ProjectStore::Require();
    if (!store) {
        Fail(error, ProjectStore::LastError());
        return nullptr;
    }
    return store->Db();
}
} // namespace

bool AttDefStore::AddMember(const QString& categoryPath, const QString& name, QString& error)
{
    SqlDb* db = StoreForEdit(name, error);
    if (!db)
        return false;
    AttLibrary::Category category;
    if (!FindCategory(db, categoryPath, category))
        return Fail(error, QStringLiteral("%1 不是属性库的小类").arg(categoryPath));
    SqlTransaction transaction(db);
    if (!transaction.IsActive())
        return Fail(error, QStringLiteral("工程数据被占用"));
    if (MemberExists(db, category.catId, name))
        return Fail(error, QStringLiteral("%1 已存在").arg(name));
    SqlStatement insert(db,
        "INSERT INTO att_member(cat_id, member_no, name) "
        "SELECT ?1, coalesce(max(member_no), 0) + 1, ?2 FROM att_member WHERE cat_id = ?1");
    insert.Bind(1, category.catId).Bind(2, name);
    if (!insert.Exec() || !transaction.Commit())
        return Fail(error, QStringLiteral("明细写入失败"));
    return true;
}

bool AttDefStore::RenameMember(const QString& memberPath, const QString& newName, QString& error)
{
    SqlDb* db = StoreForEdit(newName, error);
    if (!db)
        return false;
    const qsizetype cut = memberPath.lastIndexOf(u'\\');
    AttLibrary::Category category;
    if (cut <= 0 || !FindCategory(db, memberPath.left(cut), category))
        return Fail(error, QStringLiteral("%1 不是属性库的明细").arg(memberPath));
    const QString oldName = memberPath.mid(cut + 1);
    if (oldName == newName)
        return true;
    SqlTransaction transaction(db);
    if (!transaction.IsActive())
        return Fail(error, QStringLiteral("工程数据被占用"));
    if (!MemberExists(db, category.catId, oldName))
        return Fail(error, QStringLiteral("%1 不是属性库的明细").arg(memberPath));
    if (MemberExists(db, category.catId, newName))
        return Fail(error, QStringLiteral("%1 已存在").arg(newName));
    SqlStatement update(db, "UPDATE att_member SET name = ? WHERE cat_id = ? AND name = ?");
    update.Bind(1, newName).Bind(2, category.catId).Bind(3, oldName);
    if (!update.Exec() || !transaction.Commit())
        return Fail(error, QStringLiteral("明细写入失败"));
    return true;
}
