#pragma once

// Dialog templates are laid out in dialog units; this converts them to pixels with
// the base units of the dialog's font, as the window system does: a horizontal unit
// is a quarter of the font's average character width, a vertical unit an eighth of
// its height.
#include <QRect>
#include <QSize>

class QFont;

class CDialogUnits
{
public:
    // The font's base units: average width of the 52 Latin letters (rounded) and
    // the font's height.
    static QSize BaseUnits(const QFont& font);
    // x·cx/4 and y·cy/8, rounded to the nearest pixel.
    static QRect ToPixels(const QRect& dialogUnits, const QSize& baseUnits);
    static QRect ToPixels(const QRect& dialogUnits, const QFont& font);
};
