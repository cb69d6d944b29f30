#pragma once

// Layers of the current drawing per system code: every product entity is put on
// the layer of its code ("QV-" specialty "-" levels joined by "&"), and that layer
// takes the code's colour. A drawing shown by layer then still tells its systems
// apart, and a code's new colour reaches its layer.
#include <QString>

class ZcDbDatabase;
struct QvKsCodeStyle;

class CLayerManage
{
public:
    static CLayerManage* GetInstance();

    // Re-reads the codes from the store and updates the working drawing; the number
    // of entities moved to their layer or whose layer took a new colour. Entities of unknown codes
    // stay where they are.
    int UpdateCurDwgLayerColor();
    int UpdateLayerColor(ZcDbDatabase* database);

    // The layer name of a code; characters a layer name may not hold become "_".
    static QString LayerNameOf(const QvKsCodeStyle& style);
};
