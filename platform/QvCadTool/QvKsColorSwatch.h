#pragma once

// One colour cell of the colour dialog: a small square of a colour that can be
// clicked (checked) and double-clicked. Its index is 0 for a cell that shows a true
// colour rather than an indexed one.
#include "WinTypes.h"

#include <QAbstractButton>

class QvKsColorSwatch : public QAbstractButton
{
    Q_OBJECT
public:
    QvKsColorSwatch(int index, COLORREF color, QWidget* parent = nullptr);

    int Index() const { return m_index; }
    COLORREF Color() const { return m_color; }
    void SetColor(int index, COLORREF color);

    QSize sizeHint() const override;

Q_SIGNALS:
    void doubleClicked();

protected:
    void paintEvent(QPaintEvent* event) override;
    void mouseDoubleClickEvent(QMouseEvent* event) override;

private:
    void UpdateToolTip();

    int m_index;
    COLORREF m_color;
};
