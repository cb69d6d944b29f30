#pragma once

// Paints the grid's cells: the cell's background colour (or the selection) and its
// text in the cell's colour, aligned as its column is, with the item view's text
// margins. A repaint of a full grid draws hundreds of cells, so laid-out texts are
// kept and drawn again without being shaped anew. The few cells the style draws
// otherwise (a text cut off and elided, the cell with the focus frame) are left to
// the style.
#include <QFont>
#include <QHash>
#include <QStaticText>
#include <QStyledItemDelegate>

class CTreeListCellDelegate : public QStyledItemDelegate
{
    Q_OBJECT
public:
    using QStyledItemDelegate::QStyledItemDelegate;

    void paint(
        QPainter* painter, const QStyleOptionViewItem& option, const QModelIndex& index) const override;

private:
    // `text` laid out in `font`, from the kept texts when it was drawn before.
    const QStaticText& LaidOut(const QString& text, const QFont& font) const;

    mutable QHash<QString, QStaticText> m_laidOut;
    mutable QFont m_font;
};
