#pragma once

// Writes the drawing of one floor of the demo project: walls and rooms with their
// names, a room tag block with a visible and an invisible attribute, a title, and
// for every system code given a few pipes or cables as product entities.
#include <QList>
#include <QString>

struct DemoFloorCode
{
    // "%d\%d": the specialty number and the code's node index.
    QString indexPath;
    // The code's name, written beside its runs as a label.
    QString codeName;
};

// False (with `error` set when given) when the file cannot be written.
bool WriteDemoFloorDrawing(const QString& filePath, const QString& floorName,
    const QList<DemoFloorCode>& codes, QString* error = nullptr);
