#pragma once

// Draws the entries of the line-width combo as samples: entry n shows a black line
// n + 1 pixels wide with its value beside it, so the user sees the widths 1, 2, 3 …
#include <QStyledItemDelegate>

class CLineWidthSampleDelegate : public QStyledItemDelegate
{
    Q_OBJECT
public:
    using QStyledItemDelegate::QStyledItemDelegate;

    void paint(
        QPainter* painter, const QStyleOptionViewItem& option, const QModelIndex& index) const override;
    QSize sizeHint(const QStyleOptionViewItem& option, const QModelIndex& index) const override;

    // Where the sample line of a row ends: 2 × ⌊(left + right) / 3⌋, with right the
    // first pixel past the row (as a Win32 rectangle counts it).
    static int SampleLineEnd(const QRect& row);
};
