#include "HostSession.h"

#include "CProj.h"
#include "IFloorMng.h"
#include "QvKsDataMng.h"
#include "ZcApDocManager.h"
#include "ZcDbDatabase.h"
#include "ZcDbHostApplicationServices.h"
#include "ZcRxDynamicLinker.h"

#include <QFileInfo>

HostSession::HostSession() = default;

HostSession::~HostSession()
{
    Close();
}

bool HostSession::Open(const QString& projectFolder, const QString& floor, QString& error)
{
    QString shown;
    QString file;
    if (!OpenProject(projectFolder, floor, shown, file, error))
        return false;
    auto database = std::make_unique<ZcDbDatabase>(false, false);
    if (!ReadDrawing(*database, shown, file, error)) {
        QvKsDataMng::CloseProject();
        return false;
    }
    Install(std::move(database), shown, file);
    return true;
}

bool HostSession::OpenProject(
    const QString& projectFolder, const QString& floor, QString& shown, QString& drawingFile, QString& error)
{
    Close();
    if (!QFileInfo(projectFolder).isDir()) {
        error = QStringLiteral("the project folder %1 does not exist").arg(projectFolder);
        return false;
    }
    QString why;
    if (!QvKsDataMng::OpenProject(projectFolder, &why)) {
        error = QStringLiteral("the project in %1 cannot be opened: %2").arg(projectFolder, why);
        return false;
    }
    shown = floor.isEmpty() ? CProj().GetCurFloorName() : floor;
    if (shown.isEmpty()) {
        error = QStringLiteral("the project has no current floor; name one with --floor");
        QvKsDataMng::CloseProject();
        return false;
    }
    drawingFile = DrawingFileOf(shown, error);
    if (drawingFile.isEmpty()) {
        QvKsDataMng::CloseProject();
        return false;
    }
    return true;
}

QString HostSession::DrawingFileOf(const QString& floor, QString& error)
{
    const QString file = IFloorMng::GetDwgFullNameByFloorName(floor);
    if (file.isEmpty())
        error = QStringLiteral("the project has no floor \"%1\"").arg(floor);
    return file;
}

bool HostSession::ReadDrawing(
    ZcDbDatabase& database, const QString& floor, const QString& drawingFile, QString& error)
{
    if (database.readDwgFile(drawingFile) == Zcad::eOk)
        return true;
    error = QStringLiteral("the drawing of floor \"%1\" (%2) cannot be read: %3")
                .arg(floor, drawingFile, database.readError());
    return false;
}

std::unique_ptr<ZcDbDatabase> HostSession::ReadFloor(
    const QString& floor, QString& drawingFile, QString& error)
{
    drawingFile = DrawingFileOf(floor, error);
    if (drawingFile.isEmpty())
        return nullptr;
    auto database = std::make_unique<ZcDbDatabase>(false, false);
    if (!ReadDrawing(*database, floor, drawingFile, error))
        return nullptr;
    return database;
}

bool HostSession::SwitchFloor(const QString& floor, QString& error)
{
    QString file;
    std::unique_ptr<ZcDbDatabase> database = ReadFloor(floor, file, error);
    if (!database)
        return false;
    // The current floor is what the data service shows other modules; a store that
    // refuses the write still lets the user look at the floor.
    CProj().SetCurFloorName(floor);
    Install(std::move(database), floor, file);
    return true;
}

void HostSession::Install(std::unique_ptr<ZcDbDatabase> database, const QString& floor, const QString& file)
{
    ZcApDocManager* manager = zcDocManagerPtr();
    ZcApDocument* old = m_document;
    m_document = manager->createDocument(database.get(), file, true);
    zcdbHostApplicationServices()->setWorkingDatabase(database.get());
    if (old)
        manager->destroyDocument(old);
    m_database = std::move(database);
    m_floor = floor;
    m_drawingFile = file;
}

bool HostSession::LoadPlugin(const QString& file, QString& error)
{
    if (!QFileInfo::exists(file)) {
        error = QStringLiteral("the plug-in %1 does not exist").arg(file);
        return false;
    }
    ZcRxDynamicLinker* linker = zcrxDynamicLinker();
    if (!linker->loadModule(QFileInfo(file).absoluteFilePath(), false)) {
        error = QStringLiteral("the plug-in %1 cannot be loaded: %2").arg(file, linker->lastError());
        return false;
    }
    return true;
}

QStringList HostSession::Floors() const
{
    QVector<SQvKsFloorData> floors;
    QStringList names;
    if (CProj().GetAllFloorData(floors))
        for (const SQvKsFloorData& floor : floors)
            names.append(floor.strName);
    return names;
}

void HostSession::Close()
{
    if (m_document) {
        zcdbHostApplicationServices()->setWorkingDatabase(nullptr);
        zcDocManagerPtr()->destroyDocument(m_document);
        m_document = nullptr;
    }
    m_database.reset();
    if (QvKsDataMng::IsProjectOpen())
        QvKsDataMng::CloseProject();
}
