#include "CISysCode.h"

#include "CQVSpecTypeInfoGet.h"
#include "CSysCodeData.h"
#include "CodeTreeStore.h"
#include "ProjectStore.h"
#include "SqlStatement.h"
#include "SysCodeNameRule.h"

#include <QFile>
#include <QSettings>

namespace {
// The open store and the specialty's row; false (with the store's last error set)
// when no project is open or it has no such specialty.
bool RequireSpec(const QString& spec, ProjectStore*& store, int& specId, int& maxIndex)
{
    store = ProjectStore::Require();
    if (!store)
        return false;
    QString error;
    if (!CodeTreeStore::FindSpec(store->Db(), spec, specId, maxIndex, &error)) {
        ProjectStore::Fail(
            error.isEmpty() ? QStringLiteral("the project has no specialty \"%1\"").arg(spec) : error);
        return false;
    }
    return true;
}
} // namespace

bool CISysCode::GetSpecCodeInfos(CSysCodeData& root, const QString& spec)
{
    quint64 stamp = 0;
    return GetSpecCodeInfos(root, spec, stamp);
}

bool CISysCode::GetSpecCodeInfos(CSysCodeData& root, const QString& spec, quint64& stamp)
{
    root.DeleteData();
    ProjectStore* store = nullptr;
    int specId = 0;
    int maxIndex = 0;
    if (!RequireSpec(spec, store, specId, maxIndex))
        return false;
    QString error;
    if (!CodeTreeStore::Load(store->Db(), specId, root, &error, &stamp)) {
        ProjectStore::Fail(error);
        return false;
    }
    root.SetNodeIndex(maxIndex);
    return true;
}

namespace {
CISysCode::SaveResult saveTree(CSysCodeData& root, const QString& spec, quint64* stamp)
{
    ProjectStore* store = nullptr;
    int specId = 0;
    int maxIndex = 0;
    if (!RequireSpec(spec, store, specId, maxIndex))
        return CISysCode::SaveResult::Failed;
    if (const QString problem = SysCodeNameRule::TreeProblem(root); !problem.isEmpty()) {
        ProjectStore::Fail(QStringLiteral("the codes of %1 are not stored: %2").arg(spec, problem));
        return CISysCode::SaveResult::Failed;
    }
    QString error;
    switch (CodeTreeStore::Save(store->Db(), specId, root, &error, stamp, stamp)) {
    case CodeTreeStore::SaveResult::Saved:
        return CISysCode::SaveResult::Saved;
    case CodeTreeStore::SaveResult::ChangedSinceRead:
        ProjectStore::Fail(QStringLiteral("the codes of %1 were changed since they were read").arg(spec));
        return CISysCode::SaveResult::ChangedSinceRead;
    case CodeTreeStore::SaveResult::Failed:
        break;
    }
    ProjectStore::Fail(error);
    return CISysCode::SaveResult::Failed;
}
} // namespace

bool CISysCode::SetSpecCodeInfos(CSysCodeData& root, const QString& spec)
{
    return saveTree(root, spec, nullptr) == SaveResult::Saved;
}

CISysCode::SaveResult CISysCode::SetSpecCodeInfos(CSysCodeData& root, const QString& spec, quint64& stamp)
{
    return saveTree(root, spec, &stamp);
}

QStringList CISysCode::GetAllSpecNames()
{
    QStringList names;
    if (ProjectStore* store = ProjectStore::Require()) {
        SqlStatement stmt(store->Db(), "SELECT name FROM spec ORDER BY ord, spec_id");
        while (stmt.Next())
            names << stmt.Text(0);
    }
    return names;
}

bool CISysCode::GetFullNameAryBySpec(QStringList& fullNames, const QString& spec)
{
    fullNames.clear();
    CSysCodeData root;
    if (!GetSpecCodeInfos(root, spec))
        return false;
    std::vector<std::pair<const CSysCodeData*, QString>> stack;
    for (auto it = root.GetChildren().rbegin(); it != root.GetChildren().rend(); ++it)
        stack.emplace_back(*it, (*it)->GetNodeName());
    while (!stack.empty()) {
        auto [node, name] = stack.back();
        stack.pop_back();
        fullNames << name;
        const auto& children = node->GetChildren();
        for (auto it = children.rbegin(); it != children.rend(); ++it)
            stack.emplace_back(*it, name + QLatin1Char('\\') + (*it)->GetNodeName());
    }
    return true;
}

QString CISysCode::GetIndexPath(const QString& fullPath)
{
    const qsizetype cut = fullPath.indexOf(QLatin1Char('\\'));
    if (cut <= 0)
        return QString();
    const QString spec = fullPath.left(cut);
    QStringList levels;
    int count = 0;
    if (!SysCodeDivide(fullPath.mid(cut + 1), levels, count))
        return QString();
    ProjectStore* store = ProjectStore::Require();
    int specId = 0;
    int maxIndex = 0;
    if (!store || !CodeTreeStore::FindSpec(store->Db(), spec, specId, maxIndex))
        return QString();
    const int type = CQVSpecTypeInfoGet::GetSpecTypeByName(spec);
    QString path = QString::number(type != eSpecNone ? type : specId);
    SqlStatement step(
        store->Db(), "SELECT node_index FROM sys_code WHERE spec_id = ? AND parent_index = ? AND name = ?");
    int parent = 0;
    for (const QString& level : levels) {
        step.Reset();
        step.Bind(1, specId).Bind(2, parent).Bind(3, level);
        if (!step.Next())
            return QString();
        parent = step.Int(0);
        path += QLatin1Char('\\') + QString::number(parent);
    }
    return path;
}

bool CISysCode::SysCodeDivide(QString fullName, QStringList& levels, int& levelCount)
{
    if (fullName.isEmpty())
        return false;
    const QStringList parts = fullName.split(QLatin1Char('\\'));
    for (const QString& part : parts) {
        if (part.isEmpty())
            return false;
    }
    levels = parts;
    levelCount = int(parts.size());
    return true;
}

QString CISysCode::UniteSysInfo(const QString& first, const QString& second)
{
    auto escape = [](QString text) {
        text.replace(QLatin1Char('\\'), QLatin1String("\\\\"));
        text.replace(QLatin1Char('|'), QLatin1String("\\|"));
        return text;
    };
    return escape(first) + QLatin1Char('|') + escape(second);
}

bool CISysCode::DivideSysInfo(QString combined, QString& first, QString& second)
{
    QString parts[2];
    int part = 0;
    for (qsizetype i = 0; i < combined.size(); ++i) {
        const QChar c = combined[i];
        if (c == QLatin1Char('\\')) {
            if (i + 1 >= combined.size())
                return false;
            parts[part] += combined[++i];
        } else if (c == QLatin1Char('|') && part == 0) {
            part = 1;
        } else {
            parts[part] += c;
        }
    }
    first = parts[0];
    second = parts[1];
    return true;
}

int CISysCode::ReadSysCodeConfigFile(const QString& profileFolder)
{
    const QString file = profileFolder + QStringLiteral("/SysCodeMng.ini");
    if (profileFolder.isEmpty() || !QFile::exists(file))
        return kDefaultDispAddedMsg;
    QSettings ini(file, QSettings::IniFormat);
    bool ok = false;
    const int value = ini.value(QStringLiteral("SysCodeConfig/DispAddedMsg")).toString().trimmed().toInt(&ok);
    return ok ? value : kDefaultDispAddedMsg;
}

bool CISysCode::GetLineTypeScale(QString& scale)
{
    ProjectStore* store = ProjectStore::Require();
    if (!store)
        return false;
    scale = store->Meta(QStringLiteral("line_type_scale"));
    if (scale.isEmpty())
        scale = QStringLiteral("1.0");
    return true;
}

bool CISysCode::SetLineTypeScale(const QString& scale)
{
    bool ok = false;
    const double value = scale.trimmed().toDouble(&ok);
    if (!ok || value < 0.0) {
        ProjectStore::Fail(
            QStringLiteral("the line-type scale \"%1\" is not a number of 0 or more").arg(scale));
        return false;
    }
    ProjectStore* store = ProjectStore::Require();
    return store && store->SetMeta(QStringLiteral("line_type_scale"), scale.trimmed());
}
