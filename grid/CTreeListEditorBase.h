#pragma once

// What the three in-place editors of the grid share: the control id the dialog
// tells them apart by, the text the edit started with, the finished flag the dialog
// raises when it ends an edit, and the end of an edit with its one notification.
#include "TreeListTypes.h"

#include <QString>

class CTreeListCtrl;
class QRect;
#include <QStringList>
class QWidget;

class CTreeListEditorBase
{
public:
    virtual ~CTreeListEditorBase() = default;

    virtual QWidget* widget() = 0;
    virtual QString GetWindowText() const = 0;
    virtual void SetWindowText(const QString& text) = 0;
    // Ends the open edit. `onRow` false reports the row as -1 (the dialog's reject).
    // `mode`: 1 commit (runs the editor's own check), -1 cancel (puts the start text
    // back), 0 neither. Sends the end-of-edit notification once and hides the editor.
    // Returns false when no edit is open or the editor's commit check failed.
    virtual bool EndEdit(bool onRow, int mode) = 0;

    int GetDlgCtrlID();
    void SetDlgCtrlID(int id);
    QString GetStartText() const { return m_startText; }
    void SetStartText(const QString& text) { m_startText = text; }
    bool IsFinished() const { return m_finished; }
    void SetFinished(bool finished) { m_finished = finished; }
    // Whether an edit is open (begun and not yet notified).
    bool IsEditing() const { return m_editing; }
    HTREEITEM GetItem() const { return m_item; }
    int GetColumn() const { return m_column; }
    CTreeListCtrl* GetGrid() const { return m_grid; }

protected:
    explicit CTreeListEditorBase(CTreeListCtrl* grid)
        : m_grid(grid)
    { }
    friend class CTreeListCtrl;

    // Called by the grid: fills the editor for the cell and shows it over `rect`.
    virtual void BeginEdit(
        HTREEITEM item, int column, const QString& text, const QStringList& options, const QRect& rect);
    // Sends the notification once per edit, then hides the editor.
    bool Finish(bool onRow, UINT state);

private:
    CTreeListCtrl* m_grid;
    QString m_startText;
    HTREEITEM m_item = nullptr;
    int m_column = 0;
    bool m_finished = true;
    bool m_editing = false;
};
