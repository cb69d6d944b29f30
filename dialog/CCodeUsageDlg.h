#pragma once

// "使用情况": for every code of the specialty, how many product entities use it and
// on which floors; a code nothing uses is marked so the drafter can clean up. The
// other floors are read only when the drafter asks ("扫描全部楼层"). A floor whose
// drawing could not be read is marked "无法读取" with the reason, and a code no
// readable floor uses says which floors it may still be used on.
#include "UsedCodeIndexes.h"

#include <QDialog>
#include <QList>
#include <QString>

#include <functional>

class QLabel;
class QPushButton;
class QTreeWidget;

struct CodeUsageRow
{
    QString fullName;
    int level = 1;
    bool saved = true; // a code made in the dialog and not saved yet has no entities
    int count = 0;
    QString floors; // "B1 12，1F 3"
};

class CCodeUsageDlg : public QDialog
{
    Q_OBJECT
public:
    // `scanAll` reads the other floors; the rows are then asked for again. The row of
    // `current` (a full name) is selected and shown.
    CCodeUsageDlg(std::function<QList<CodeUsageRow>()> rows, std::function<void()> scanAll,
        bool allFloorsScanned, const QString& current, QWidget* parent = nullptr);

    int DoModal();

    // The floors tried and not read, asked again after each scan.
    void SetUnreadableFloors(std::function<QList<UnreadableFloor>()> floors);

private:
    void Fill();
    void OnScanAll();

    std::function<QList<CodeUsageRow>()> m_rows;
    std::function<void()> m_scanAll;
    std::function<QList<UnreadableFloor>()> m_unreadable;
    bool m_allFloorsScanned;
    QString m_current;
    QTreeWidget* m_list = nullptr;
    QLabel* m_summary = nullptr;
    QLabel* m_floors = nullptr;
    QPushButton* m_scanButton = nullptr;
};
