#pragma once

// The host's services to the drawing database: which database is being worked on.
class ZcDbDatabase;

class ZcDbHostApplicationServices
{
public:
    ZcDbDatabase* workingDatabase() const { return m_workingDatabase; }
    // Host side: the database of the current document (not owned).
    void setWorkingDatabase(ZcDbDatabase* database) { m_workingDatabase = database; }

private:
    ZcDbDatabase* m_workingDatabase = nullptr;
};

ZcDbHostApplicationServices* zcdbHostApplicationServices();
