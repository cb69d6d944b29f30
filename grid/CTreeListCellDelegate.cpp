#include "CTreeListCellDelegate.h"

#include "CTreeListModel.h"

#include <QApplication>
#include <QPainter>

namespace {
// Texts kept at most; past that they are dropped and laid out again as drawn.
constexpr int kLaidOutLimit = 20000;

QPalette::ColorGroup ColorGroupOf(const QStyleOptionViewItem& option)
{
    if (!(option.state & QStyle::State_Enabled))
        return QPalette::Disabled;
    return (option.state & QStyle::State_Active) ? QPalette::Normal : QPalette::Inactive;
}
} // namespace

const QStaticText& CTreeListCellDelegate::LaidOut(const QString& text, const QFont& font) const
{
    if (font != m_font || m_laidOut.size() >= kLaidOutLimit) {
        m_laidOut.clear();
        m_font = font;
    }
    auto it = m_laidOut.find(text);
    if (it == m_laidOut.end()) {
        QStaticText laidOut(text);
        laidOut.setTextFormat(Qt::PlainText);
        laidOut.setTextWidth(-1);
        laidOut.prepare(QTransform(), font);
        it = m_laidOut.insert(text, laidOut);
    }
    return *it;
}

void CTreeListCellDelegate::paint(
    QPainter* painter, const QStyleOptionViewItem& option, const QModelIndex& index) const
{
    const auto* model = qobject_cast<const CTreeListModel*>(index.model());
    HTREEITEM item = model ? model->itemFromIndex(index) : nullptr;
    if (!item || (option.state & QStyle::State_HasFocus)) {
        QStyledItemDelegate::paint(painter, option, index);
        return;
    }
    const CTreeListCell& cell = item->cell(index.column());
    const QWidget* widget = option.widget;
    const QStyle* style = widget ? widget->style() : QApplication::style();
    const int margin = style->pixelMetric(QStyle::PM_FocusFrameHMargin, nullptr, widget) + 1;
    const QRect room = option.rect.adjusted(margin, 0, -margin, 0);
    const QStaticText* laidOut = cell.text.isEmpty() ? nullptr : &LaidOut(cell.text, option.font);
    // A text cut off is elided as the style does it: rare enough to leave to it.
    if (laidOut && laidOut->size().width() > room.width()) {
        QStyledItemDelegate::paint(painter, option, index);
        return;
    }
    const QPalette::ColorGroup group = ColorGroupOf(option);
    const bool selected = option.state & QStyle::State_Selected;
    if (selected)
        painter->fillRect(option.rect, option.palette.brush(group, QPalette::Highlight));
    else if (cell.hasBackColor)
        painter->fillRect(option.rect, ColorFromColorref(cell.backColor));
    if (!laidOut)
        return;
    QColor colour = option.palette.color(group, QPalette::Text);
    if (selected)
        colour = option.palette.color(group, QPalette::HighlightedText);
    else if (cell.hasTextColor)
        colour = ColorFromColorref(cell.textColor);
    const QRect at = QStyle::alignedRect(
        option.direction, model->ColumnAlignment(index.column()), laidOut->size().toSize(), room);
    painter->save();
    painter->setClipRect(option.rect);
    painter->setPen(colour);
    painter->setFont(option.font);
    painter->drawStaticText(at.topLeft(), *laidOut);
    painter->restore();
}
