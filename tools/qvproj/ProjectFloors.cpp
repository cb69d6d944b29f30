#include "ProjectFloors.h"

#include "CISysCode.h"
#include "CProj.h"
#include "CSysCodeData.h"
#include "ExchangeFileName.h"
#include "IFloorMng.h"
#include "QvKsAtomicFile.h"
#include "QvKsDataMng.h"
#include "QvKsEntity.h"
#include "Specialty.h"
#include "SysCodeSettings.h"
#include "ZcDbBlockTableRecord.h"
#include "ZcDbDatabase.h"

#include <QDir>
#include <QFile>
#include <QFileInfo>
#include <QSet>
#include <QTextStream>

namespace ProjectFloors {

namespace {

int fail(QTextStream& err, const QString& message)
{
    err << "qvproj: " << message << "\n";
    return 1;
}

QString sqlText(const QString& text)
{
    QString quoted = text;
    quoted.replace(QLatin1Char('\''), QLatin1String("''"));
    return QLatin1Char('\'') + quoted + QLatin1Char('\'');
}

// A floor's drawing as the host will read it: its bytes, and what its model space
// holds, or why it cannot be used.
struct FloorDrawing
{
    QByteArray bytes;
    int entities = 0;
    int productEntities = 0;
    QString error;
};

FloorDrawing readFloorDrawing(const QString& file)
{
    FloorDrawing drawing;
    ZcDbDatabase database(false, true);
    if (database.readDwgFile(file) != Zcad::eOk) {
        drawing.error = QStringLiteral("the drawing %1 cannot be read: %2").arg(file, database.readError());
        return drawing;
    }
    QFile source(file);
    if (!source.open(QIODevice::ReadOnly)) {
        drawing.error = QStringLiteral("the drawing %1 cannot be read: %2").arg(file, source.errorString());
        return drawing;
    }
    drawing.bytes = source.readAll();
    if (auto* space = ZcDbBlockTableRecord::cast(database.modelSpaceId().object()))
        for (const ZcDbObjectId& id : space->entityIds()) {
            ++drawing.entities;
            drawing.productEntities += QvKsEntity::cast(id.object()) != nullptr;
        }
    return drawing;
}

QString describeDrawing(const FloorDrawing& drawing)
{
    return QStringLiteral("%1 entities, %2 with a system code")
        .arg(drawing.entities)
        .arg(drawing.productEntities);
}

QString validateFloors(const QList<FloorSource>& floors)
{
    if (floors.isEmpty())
        return QStringLiteral("a project needs at least one floor to open: give --floor NAME=FILE.dxf");
    QSet<QString> names;
    for (const FloorSource& floor : floors) {
        if (floor.name.trimmed().isEmpty())
            return QStringLiteral("a floor needs a name");
        if (names.contains(floor.name))
            return QStringLiteral("the floor %1 is given twice").arg(floor.name);
        names.insert(floor.name);
    }
    return QString();
}

bool copyDrawing(const QString& folder, const QString& fileName, const QByteArray& bytes, QTextStream& err)
{
    const QvKsWriteStatus written
        = QvKsAtomicFile::Write(QDir(folder).filePath(fileName), bytes, QDir(folder).absolutePath());
    if (!written) {
        fail(err, written.Describe());
        return false;
    }
    return true;
}

} // namespace

// Everything a refused or failed `new` made goes again: the folder when it made
// it, else what it put into the (empty) folder.
void RemoveMade(const QString& folder, bool madeFolder)
{
    QvKsDataMng::CloseProject();
    QDir dir(folder);
    if (madeFolder) {
        dir.removeRecursively();
        return;
    }
    for (const QFileInfo& entry : dir.entryInfoList(QDir::AllEntries | QDir::NoDotAndDotDot | QDir::Hidden)) {
        if (entry.isDir() && !entry.isSymLink())
            QDir(entry.filePath()).removeRecursively();
        else
            QFile::remove(entry.filePath());
    }
}

bool ParseFloorArgument(const QString& argument, FloorSource& floor)
{
    const qsizetype equals = argument.indexOf(QLatin1Char('='));
    if (equals <= 0 || equals == argument.size() - 1)
        return false;
    floor = { argument.left(equals), argument.mid(equals + 1) };
    return true;
}

QString FloorFileName(const QString& folder, const QString& floor, const QStringList& taken)
{
    const QString base = CleanFileNamePart(floor, QStringLiteral("floor"));
    const QDir dir(folder);
    for (int n = 1;; ++n) {
        const QString name
            = n == 1 ? base + QStringLiteral(".dxf") : QStringLiteral("%1-%2.dxf").arg(base).arg(n);
        // Names that differ only in case are one file on some disks a project is
        // copied to.
        if (!dir.exists(name) && !taken.contains(name, Qt::CaseInsensitive))
            return name;
    }
}

QString DefaultsFromDemoSql(const QString& projectName)
{
    QString sql
        = QStringLiteral("DELETE FROM de_item;\n"
                         "DELETE FROM qd_item;\n"
                         "CREATE TEMP TABLE lay_template AS SELECT ord, name, code, describe FROM lay_mode\n"
                         "  WHERE floor_id = (SELECT min(floor_id) FROM lay_mode);\n"
                         "DELETE FROM floor;\n"
                         "DELETE FROM sys_code WHERE parent_index <> 0;\n");
    // The catalogue decides which top-level codes a new project starts with; a
    // specialty outside it starts empty.
    const QStringList specs { g_strSpecWater, g_strSpecElectrical, g_strSpecHvac, g_strSpecFire,
        g_strSpecLowVoltage };
    QStringList quotedSpecs;
    for (const QString& spec : specs) {
        QStringList names;
        GetDefaultSysNames(spec, names);
        QStringList quoted;
        for (const QString& name : names)
            quoted.append(sqlText(name));
        sql += QStringLiteral(
            "DELETE FROM sys_code WHERE spec_id IN (SELECT spec_id FROM spec WHERE name = %1)"
            " AND name NOT IN (%2);\n")
                   .arg(sqlText(spec), quoted.join(QStringLiteral(", ")));
        quotedSpecs.append(sqlText(spec));
    }
    sql += QStringLiteral(
        "DELETE FROM sys_code WHERE spec_id NOT IN (SELECT spec_id FROM spec WHERE name IN (%1));\n"
        "UPDATE spec SET max_index = (SELECT coalesce(max(node_index), 0) FROM sys_code"
        " WHERE sys_code.spec_id = spec.spec_id);\n"
        "UPDATE meta SET value = %2 WHERE key = 'project_name';\n"
        "UPDATE meta SET value = (SELECT name FROM spec ORDER BY ord LIMIT 1) WHERE key = 'current_spec';\n"
        "UPDATE meta SET value = '' WHERE key = 'current_floor';\n")
               .arg(quotedSpecs.join(QStringLiteral(", ")), sqlText(projectName));
    return sql;
}

QString NewFloorsLayModesSql()
{
    return QStringLiteral(
        "INSERT INTO lay_mode(floor_id, ord, name, code, describe)\n"
        "  SELECT floor.floor_id, t.ord, t.name, t.code, t.describe FROM floor CROSS JOIN temp.lay_template "
        "AS t\n"
        "  WHERE NOT EXISTS (SELECT 1 FROM lay_mode WHERE lay_mode.floor_id = floor.floor_id);\n"
        "DROP TABLE temp.lay_template;\n");
}

QString AddFloorSql(const QString& floor, const QString& file)
{
    return QStringLiteral(
        "INSERT INTO floor(name, ord, dwg_file)\n"
        "  VALUES (%1, (SELECT coalesce(max(ord), 0) + 1 FROM floor), %2);\n"
        "INSERT INTO lay_mode(floor_id, ord, name, code, describe)\n"
        "  SELECT (SELECT floor_id FROM floor WHERE name = %1), ord, name, code, describe FROM lay_mode\n"
        "  WHERE floor_id = (SELECT min(floor_id) FROM lay_mode);\n"
        "UPDATE meta SET value = %1 WHERE key = 'current_floor' AND value = '';\n")
        .arg(sqlText(floor), sqlText(file));
}

int New(const QString& folder, const QString& name, const QList<FloorSource>& floors, QTextStream& out,
    QTextStream& err)
{
    const QDir dir(folder);
    if (QFileInfo(folder).exists() && !QFileInfo(folder).isDir())
        return fail(err, QStringLiteral("%1 is not a folder").arg(folder));
    if (QFileInfo::exists(dir.filePath(QvKsDataMng::StoreFileName())))
        return fail(err, QStringLiteral("%1 already holds a project; add floors with add-floor").arg(folder));
    if (dir.exists() && !dir.isEmpty(QDir::AllEntries | QDir::NoDotAndDotDot | QDir::Hidden))
        return fail(
            err, QStringLiteral("%1 is not empty; a project is made in a new or empty folder").arg(folder));
    if (name.trimmed().isEmpty())
        return fail(err, QStringLiteral("the project needs a name (--name NAME)"));
    if (const QString why = validateFloors(floors); !why.isEmpty())
        return fail(err, why);
    // Every drawing is read before anything is made: one that cannot be read
    // refuses the whole project.
    QList<FloorDrawing> drawings;
    for (const FloorSource& floor : floors) {
        drawings.append(readFloorDrawing(floor.file));
        if (!drawings.last().error.isEmpty())
            return fail(err, drawings.last().error);
    }
    QFile script(QStringLiteral(":/demo/demo.sql"));
    if (!script.open(QIODevice::ReadOnly))
        return fail(err, QStringLiteral("the default codes are missing from this build"));

    const bool madeFolder = !dir.exists();
    QString error;
    if (!QvKsDataMng::CreateProject(folder, name, &error)) {
        RemoveMade(folder, madeFolder);
        return fail(err, error);
    }
    const QString projectFolder = QvKsDataMng::ProjectFolder();
    QString sql = QString::fromUtf8(script.readAll()) + DefaultsFromDemoSql(name);
    QStringList files;
    for (const FloorSource& floor : floors) {
        files.append(FloorFileName(projectFolder, floor.name, files));
        sql += AddFloorSql(floor.name, files.last());
    }
    sql += NewFloorsLayModesSql();
    bool made = QvKsDataMng::RunScript(sql, &error);
    for (qsizetype i = 0; made && i < floors.size(); ++i)
        made = copyDrawing(projectFolder, files[i], drawings[i].bytes, err);
    const QString profile = projectFolder + QLatin1Char('/') + QvKsDataMng::ProfileFolderName();
    if (made) {
        if (const QvKsWriteStatus settings = SaveDispAddedMsgSetting(profile, 1, projectFolder); !settings) {
            error = settings.Describe();
            made = false;
        } else if (!QDir().mkpath(profile + QStringLiteral("/系统编号"))) {
            error = QStringLiteral("the folder %1/系统编号 cannot be made").arg(profile);
            made = false;
        }
    }
    if (!made) {
        RemoveMade(folder, madeFolder);
        return error.isEmpty() ? 1 : fail(err, error);
    }
    for (const QString& spec : CISysCode::GetAllSpecNames()) {
        CSysCodeData root;
        CISysCode::GetSpecCodeInfos(root, spec);
        out << spec << ": " << root.GetChildCount() << " codes\n";
    }
    for (qsizetype i = 0; i < floors.size(); ++i)
        out << "floor " << floors[i].name << ": " << files[i] << " (" << describeDrawing(drawings[i])
            << ")\n";
    out << "project \"" << name << "\" made in " << projectFolder << "\n";
    QvKsDataMng::CloseProject();
    return 0;
}

int AddFloor(const QString& folder, const FloorSource& floor, QTextStream& out, QTextStream& err)
{
    if (floor.name.trimmed().isEmpty())
        return fail(err, QStringLiteral("a floor needs a name"));
    QString error;
    if (!QvKsDataMng::OpenProject(folder, &error))
        return fail(err, error);
    QVector<SQvKsFloorData> floors;
    CProj().GetAllFloorData(floors);
    for (const SQvKsFloorData& existing : floors)
        if (existing.strName == floor.name) {
            QvKsDataMng::CloseProject();
            return fail(err, QStringLiteral("the project already has a floor %1").arg(floor.name));
        }
    const FloorDrawing drawing = readFloorDrawing(floor.file);
    if (!drawing.error.isEmpty()) {
        QvKsDataMng::CloseProject();
        return fail(err, drawing.error);
    }
    const QString projectFolder = QvKsDataMng::ProjectFolder();
    const QString file = FloorFileName(projectFolder, floor.name);
    // The drawing goes in first: a store that refuses the floor has it taken out
    // again, and a store never names a drawing that is not there.
    if (!copyDrawing(projectFolder, file, drawing.bytes, err)) {
        QvKsDataMng::CloseProject();
        return 1;
    }
    if (!QvKsDataMng::RunScript(AddFloorSql(floor.name, file), &error)) {
        QFile::remove(QDir(projectFolder).filePath(file));
        QvKsDataMng::CloseProject();
        return fail(err, error);
    }
    out << "floor " << floor.name << ": " << file << " (" << describeDrawing(drawing) << ")\n";
    QvKsDataMng::CloseProject();
    return 0;
}

int Floors(const QString& folder, QTextStream& out, QTextStream& err)
{
    QString error;
    if (!QvKsDataMng::OpenProject(folder, &error))
        return fail(err, error);
    QVector<SQvKsFloorData> floors;
    const CProj project;
    if (!project.GetAllFloorData(floors)) {
        QvKsDataMng::CloseProject();
        return fail(err, QvKsDataMng::LastError());
    }
    const QString current = project.GetCurFloorName();
    for (const SQvKsFloorData& floor : floors) {
        out << floor.strName << "\t" << floor.strDwgFile;
        if (!QFileInfo::exists(IFloorMng::GetDwgFullNameByFloorName(floor.strName)))
            out << "\t(missing)";
        if (floor.strName == current)
            out << "\t(current)";
        out << "\n";
    }
    QvKsDataMng::CloseProject();
    return 0;
}

} // namespace ProjectFloors
