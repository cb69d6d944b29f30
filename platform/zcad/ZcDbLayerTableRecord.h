#pragma once

// A layer of a drawing: its name, colour and state.
#include <QString>
#include <QtGlobal>

struct ZcDbLayerTableRecord
{
    QString name;
    quint16 colorIndex = 7;
    // 0xRRGGBB when the layer has a true colour, else 0 (see hasTrueColor).
    quint32 trueColor = 0;
    bool hasTrueColor = false;
    bool isOff = false;
    bool isFrozen = false;
    bool isLocked = false;
    QString linetype = QStringLiteral("Continuous");
};
