#pragma once

// Finding codes in the management dialog's grid: Ctrl+F opens a field over the
// grid's corner; what is typed keeps the codes whose name, remark or pipeline
// information holds the text (any letter case), with their parents; Enter or F3
// steps through them; Escape shows every code again, opened and closed as before.
#include "SysCodeFindIndex.h"
#include "TreeListTypes.h"

#include <QObject>
#include <QString>

#include <functional>
#include <vector>

class CTreeListCtrl;
class QLineEdit;
class QStringMatcher;
class QWidget;

class SysCodeFindBar : public QObject
{
    Q_OBJECT
public:
    // The field and the keys live on `dialog`. `remarkColumn` and `pipeColumn` give
    // the visible columns of the remark and the pipeline information in the present
    // layout (-1 when it has none); the pipeline cells are searched by their paths.
    SysCodeFindBar(QWidget& dialog, CTreeListCtrl& grid, std::function<int()> remarkColumn,
        std::function<int()> pipeColumn);

    bool IsOpen() const;
    void Open();
    // Shows only the codes holding `text` (every code when it is empty).
    void Apply(const QString& text);
    // The text typed is matched again, after rows changed under the open field.
    void Reapply();
    void Next();
    void Close();
    void CloseIfOpen();

    // A plain substring, any letter case.
    static QStringMatcher Matcher(const QString& text);
    // Whether `value` holds what `matcher` looks for.
    static bool Holds(const QStringMatcher& matcher, const QString& value);

private:
    void Place();
    bool RowMatches(HTREEITEM row, const QStringMatcher& matcher, int remarkColumn) const;
    void RememberExpanded();

    QWidget& m_dialog;
    CTreeListCtrl& m_grid;
    std::function<int()> m_remarkColumn;
    std::function<int()> m_pipeColumn;
    QLineEdit* m_field = nullptr;
    SysCodeFindIndex m_index;
    // The rows open when the field opened, opened again when it closes.
    std::vector<HTREEITEM> m_expanded;
};
