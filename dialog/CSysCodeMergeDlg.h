#pragma once

// "合并": someone else stored the specialty while it was being edited here, and
// some codes were changed on both sides. Each collision (code, attribute, the value
// as read → theirs / mine) is settled by taking theirs or mine, one at a time or all
// at once; OK merges once every collision is settled, Cancel goes back to editing
// with nothing written.
#include "SysCodeThreeWayMerge.h"

#include <QDialog>

class QLabel;
class QPushButton;
class QTreeWidget;

class CSysCodeMergeDlg : public QDialog
{
    Q_OBJECT
public:
    // `choices` settles the first collisions already (a merge asked again).
    CSysCodeMergeDlg(const QList<SysCodeCollision>& collisions, const QList<SysCodeMergeChoice>& choices,
        QWidget* parent = nullptr);

    // IDOK or IDCANCEL.
    int DoModal();
    QList<SysCodeMergeChoice> Choices() const { return m_choices; }

    // The row's texts: code, attribute, as read, theirs, mine.
    static QStringList CollisionTexts(const SysCodeCollision& collision);

private:
    void Choose(SysCodeMergeChoice choice, bool all);
    void ShowChoices();

    QList<SysCodeMergeChoice> m_choices;
    QLabel* m_summary = nullptr;
    QTreeWidget* m_list = nullptr;
    QPushButton* m_ok = nullptr;
};
