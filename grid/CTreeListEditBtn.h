#pragma once

// The grid's edit box with a browse button at its right end. The control itself
// carries the editor's id; the button carries its own id (the colour cell's 10008,
// the pipeline cell's 10009, the name editor's 10002 …), set by the dialog.
#include "CTreeListEditorBase.h"

#include <QWidget>

class QLineEdit;
class QToolButton;

class CTreeListEditBtn : public QWidget, public CTreeListEditorBase
{
    Q_OBJECT
public:
    CTreeListEditBtn(CTreeListCtrl* grid, QWidget* parent);

    QWidget* widget() override { return this; }
    QString GetWindowText() const override;
    void SetWindowText(const QString& text) override;
    bool EndEdit(bool onRow, int mode) override;

    void SetButtonId(int id);
    int GetButtonId() const;
    // Read-only: the text is shown but only the button changes the cell.
    void SetReadOnly(bool readOnly);
    QLineEdit* GetEdit() const { return m_edit; }
    QToolButton* GetButton() const { return m_button; }

Q_SIGNALS:
    // The browse button was pressed (its id).
    void buttonClicked(int buttonId);

protected:
    bool eventFilter(QObject* watched, QEvent* event) override;
    void BeginEdit(HTREEITEM item, int column, const QString& text, const QStringList& options,
        const QRect& rect) override;

private:
    QLineEdit* m_edit;
    QToolButton* m_button;
};
