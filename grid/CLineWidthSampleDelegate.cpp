#include "CLineWidthSampleDelegate.h"

#include <QPainter>
#include <QPen>

int CLineWidthSampleDelegate::SampleLineEnd(const QRect& row)
{
    const int right = row.x() + row.width();
    return 2 * ((row.left() + right) / 3);
}

void CLineWidthSampleDelegate::paint(
    QPainter* painter, const QStyleOptionViewItem& option, const QModelIndex& index) const
{
    if (!index.isValid())
        return;
    const QRect row = option.rect;
    const int bottom = row.y() + row.height();
    painter->save();
    painter->setRenderHint(QPainter::Antialiasing, false);
    painter->fillRect(row, Qt::white);

    const int lineStart = row.left() + 3;
    const int lineEnd = SampleLineEnd(row);
    const int y = (row.top() + bottom) / 2;
    QPen pen(Qt::black, index.row() + 1, Qt::SolidLine, Qt::RoundCap, Qt::RoundJoin);
    painter->setPen(pen);
    painter->drawLine(lineStart, y, lineEnd, y);

    const QRect textRect(lineEnd + 4, row.top(), row.x() + row.width() - (lineEnd + 4), row.height());
    painter->setPen(Qt::black);
    painter->setBackgroundMode(Qt::TransparentMode);
    painter->drawText(textRect, Qt::AlignLeft | Qt::AlignVCenter | Qt::TextSingleLine,
        index.data(Qt::DisplayRole).toString());

    // The entry with the focus is shown as a solid blue bar.
    if (option.state & QStyle::State_HasFocus)
        painter->fillRect(row, QColor(0, 0, 255));
    painter->restore();
}

QSize CLineWidthSampleDelegate::sizeHint(const QStyleOptionViewItem& option, const QModelIndex& index) const
{
    QSize size = QStyledItemDelegate::sizeHint(option, index);
    // Room for the widest sample line with a little air around it.
    size.setHeight(std::max(size.height(), index.row() + 7));
    return size;
}
