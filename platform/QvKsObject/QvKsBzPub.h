#pragma once

// The annotations (标注) of product entities: texts on the annotation layer that
// name the system code of the pipe or cable they stand beside. An annotation
// belongs to the product entity nearest its insertion point (within a few text
// heights); a refresh gives it that code's current name and colour, so a renamed
// or recoloured code shows in its labels.
#include <QString>

class ZcDbDatabase;

class QvKsBzPub
{
public:
    static QString AnnotationLayer(); // "QV_标注"

    // Refreshes the annotations of the host's working drawing; the number changed.
    static int RefreshAllBz();
    static int RefreshAllBz(ZcDbDatabase* database);
};
