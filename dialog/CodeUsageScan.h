#pragma once

// Reads the product entities of floors' drawings into the set of used index paths
// and the per-floor counts. A floor whose drawing is missing or cannot be read is
// marked so, with the reason: what it uses is unknown, not nothing.
#include <QString>

class CodeUsageLedger;
class UsedCodeIndexes;
class ZcDbDatabase;

class CodeUsageScan
{
public:
    CodeUsageScan(UsedCodeIndexes& used, CodeUsageLedger& ledger);

    // Each product entity of the database's model space counts for its code on
    // `floor`; nothing for a null database.
    void ScanDrawing(ZcDbDatabase* database, const QString& floor);
    // Reads one floor's drawing file as a side database and scans it.
    void ScanFloorFile(const QString& floor);
    // Every floor of the project not read yet, behind the progress window.
    void ScanUnreadFloors();

private:
    UsedCodeIndexes& m_used;
    CodeUsageLedger& m_ledger;
};
