#pragma once

// "使用情况" of the management dialog, opened with Ctrl+U anywhere in it or from the
// menu of the grid's column titles: every code of the grid with the entities that
// use it, floor by floor.
#include "CCodeUsageDlg.h"

#include <QList>
#include <QObject>

class CodeUsageLedger;
class SysCodeDlg;

class CodeUsageWindow : public QObject
{
    Q_OBJECT
public:
    // Connects the keys and the menu on `dialog`; `ledger` holds the counts it shows.
    CodeUsageWindow(SysCodeDlg& dialog, const CodeUsageLedger& ledger);

    void Show();
    // Every code of the grid with its entities' count, parents before children.
    QList<CodeUsageRow> CollectRows() const;

private:
    SysCodeDlg& m_dialog;
    const CodeUsageLedger& m_ledger;
};
