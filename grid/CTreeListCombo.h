#pragma once

// The grid's drop-down editor: a list of the cell's options, either for choosing only
// (line styles, laying modes) or editable (line widths, with samples of each width
// drawn in the list and a number check of the typed text).
#include "CTreeListEditorBase.h"

#include <QComboBox>

#include <functional>

class CLineWidthSampleDelegate;

class CTreeListCombo : public QComboBox, public CTreeListEditorBase
{
    Q_OBJECT
public:
    CTreeListCombo(CTreeListCtrl* grid, QWidget* parent);

    QWidget* widget() override { return this; }
    QString GetWindowText() const override { return currentText(); }
    void SetWindowText(const QString& text) override;
    bool EndEdit(bool onRow, int mode) override;

    // Editable: the user may type a text of their own, and the list shows the samples.
    void SetEditableMode(bool editableWithSamples);
    bool DrawsSamples() const { return m_samples; }

    // The line-width check: a number (QvString::IsDouble) is rounded to two decimals,
    // written back with "%g" and kept as the last good text (true). Anything else,
    // and a rounded number the range check set by the grid's owner refuses, puts the
    // last good text back and shows "线宽支持范围0-100" (false).
    bool CheckLineWidth();
    // The range a typed width must lie in; without one, every number passes.
    void SetWidthRangeCheck(std::function<bool(double)> inRange) { m_widthInRange = std::move(inRange); }
    QString GetLastGoodText() const { return m_lastGoodText; }
    void SetLastGoodText(const QString& text) { m_lastGoodText = text; }

    // The line-width rounding alone: add 0.5 to the value times 100, drop the
    // fraction, divide by 100; formatted with "%g".
    static QString RoundLineWidth(double value);

protected:
    void BeginEdit(HTREEITEM item, int column, const QString& text, const QStringList& options,
        const QRect& rect) override;
    void keyPressEvent(QKeyEvent* event) override;

private:
    CLineWidthSampleDelegate* m_sampleDelegate;
    QAbstractItemDelegate* m_plainDelegate;
    QString m_lastGoodText;
    bool m_samples = false;
    std::function<bool(double)> m_widthInRange;
};
