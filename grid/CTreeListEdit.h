#pragma once

// The grid's single-line text editor. The grid owns two: the text editor for names
// and remarks, and a second one for short codes whose commit runs the code check.
#include "CTreeListEditorBase.h"

#include <QLineEdit>

class CTreeListEdit : public QLineEdit, public CTreeListEditorBase
{
    Q_OBJECT
public:
    CTreeListEdit(CTreeListCtrl* grid, QWidget* parent);

    QWidget* widget() override { return this; }
    QString GetWindowText() const override { return text(); }
    void SetWindowText(const QString& text) override { setText(text); }
    bool EndEdit(bool onRow, int mode) override;

    // Whether a commit runs the short-code check.
    void SetCodeCheck(bool enabled) { m_codeCheck = enabled; }
    bool HasCodeCheck() const { return m_codeCheck; }
    // The short-code check: the trimmed text has at most 3 characters, each an ASCII
    // letter or digit (the empty text passes). A passing text becomes the start text
    // and the result is 1; otherwise the start text is put back and the result is 0.
    int CheckCode();

protected:
    void keyPressEvent(QKeyEvent* event) override;

private:
    bool m_codeCheck = false;
};
