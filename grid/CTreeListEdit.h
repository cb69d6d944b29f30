#pragma once

// The grid's single-line text editor. The grid owns two: the text editor for names
// and remarks, and a second one for short codes, whose commit runs the check its
// owner gives it.
#include "CTreeListEditorBase.h"

#include <QLineEdit>

#include <functional>

class CTreeListEdit : public QLineEdit, public CTreeListEditorBase
{
    Q_OBJECT
public:
    CTreeListEdit(CTreeListCtrl* grid, QWidget* parent);

    QWidget* widget() override { return this; }
    QString GetWindowText() const override { return text(); }
    void SetWindowText(const QString& text) override { setText(text); }
    bool EndEdit(bool onRow, int mode) override;

    // The rule a committed text, trimmed at both ends, must pass; none: every text.
    void SetCommitCheck(std::function<bool(const QString&)> check) { m_check = std::move(check); }
    bool HasCommitCheck() const { return bool(m_check); }
    // The commit check: a trimmed text that passes the rule becomes the text and
    // the start text, and the result is 1; otherwise the start text is put back and
    // the result is 0.
    int CheckCode();

protected:
    void keyPressEvent(QKeyEvent* event) override;

private:
    std::function<bool(const QString&)> m_check;
};
