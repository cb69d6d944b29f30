#pragma once

// The host's open project: the data service's project, the current floor's
// drawing as the working database of the one document, and the loaded plug-ins.
// Every step reports failure with a message and leaves what was open before.
#include <QString>
#include <QStringList>

#include <memory>

class ZcDbDatabase;
class ZcApDocument;

class HostSession
{
public:
    HostSession();
    ~HostSession();
    HostSession(const HostSession&) = delete;
    HostSession& operator=(const HostSession&) = delete;

    // Opens the project and the drawing of `floor` (the project's current floor when
    // empty); the store is only read.
    bool Open(const QString& projectFolder, const QString& floor, QString& error);
    // Reads another floor's drawing and makes it current; the old one stays on failure.
    bool SwitchFloor(const QString& floor, QString& error);
    // Loads an application file and runs its initialisation.
    bool LoadPlugin(const QString& file, QString& error);
    void Close();

    ZcDbDatabase* Database() const { return m_database.get(); }
    QString Floor() const { return m_floor; }
    QString DrawingFile() const { return m_drawingFile; }
    QStringList Floors() const;
    // The floor's drawing read into a new database, or null with `error` set.
    static std::unique_ptr<ZcDbDatabase> ReadFloor(
        const QString& floor, QString& drawingFile, QString& error);

    // Open in three steps, so that a large drawing can be read while the window is
    // made. First the project, with the floor to show (`floor`, or the current one)
    // and its drawing file; false with the project closed on failure.
    bool OpenProject(const QString& projectFolder, const QString& floor, QString& shown, QString& drawingFile,
        QString& error);
    // Then the drawing, into a database made for it. It touches nothing of the
    // session or the store, so it may run on a thread of its own.
    static bool ReadDrawing(
        ZcDbDatabase& database, const QString& floor, const QString& drawingFile, QString& error);
    // Last, the read drawing becomes the working one.
    void Install(std::unique_ptr<ZcDbDatabase> database, const QString& floor, const QString& file);

private:
    // The drawing file of `floor`; empty with `error` set when the project has none.
    static QString DrawingFileOf(const QString& floor, QString& error);

    std::unique_ptr<ZcDbDatabase> m_database;
    ZcApDocument* m_document = nullptr;
    QString m_floor;
    QString m_drawingFile;
};
