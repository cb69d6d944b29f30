#pragma once

// The system-code part of the attribute bar: the current specialty's codes as a
// tree, each with its colour, the current code selected. Clicking a code makes it
// current; double-clicking also runs the function registered with
// IFaceBarCtrl::RegDbClickSysFunc (queued, so that function may rebuild the bar).
//
// Control names: "specLabel", "sysCodeTree". Each item holds its "&" code in
// Qt::UserRole.
#include "WinTypes.h"

#include <QHash>
#include <QIcon>
#include <QList>
#include <QWidget>

class CSysCodeData;
class QLabel;
class QTreeWidget;
class QTreeWidgetItem;

class QvKsSysCodeBar : public QWidget
{
    Q_OBJECT
public:
    explicit QvKsSysCodeBar(QWidget* parent = nullptr);

    // Rebuilds the tree from IFaceBarCtrl's codes and selects its current code.
    void Reload();
    // Selects the item of an "&" code; an empty or unknown code clears the selection.
    void ShowCode(const QString& code);

    QTreeWidget* Tree() const { return m_tree; }
    QTreeWidgetItem* ItemOf(const QString& code) const;

private:
    void AddChildren(QList<QTreeWidgetItem*>& items, const CSysCodeData* node, const QString& prefix,
        QHash<COLORREF, QIcon>& icons);
    void OnCurrentItemChanged(QTreeWidgetItem* item);
    void OnItemDoubleClicked(QTreeWidgetItem* item);

    QLabel* m_spec;
    QTreeWidget* m_tree;
    bool m_filling = false;
};
