#pragma once

// An open drawing in the host: its database and file name. Documents are created
// and destroyed by the document manager.
#include <QString>

class ZcDbDatabase;

class ZcApDocument
{
public:
    ZcApDocument(ZcDbDatabase* database, const QString& fileName)
        : m_database(database)
        , m_fileName(fileName)
    { }

    ZcDbDatabase* database() const { return m_database; }
    QString fileName() const { return m_fileName; }
    // The file name without its folder.
    QString docTitle() const;

private:
    ZcDbDatabase* m_database;
    QString m_fileName;
};
