#pragma once

// Writes the working drawing of a floor back to its DXF file in one step (the
// atomic write): every entity the host read, and product entities as the shapes
// they wrap with their codes' index paths. With colours by system, each product
// entity goes out in its code's colour (true colour and the nearest indexed
// colour) and line type, so that a program without this module shows the systems
// as the host does.
#include "DxfWriter.h"
#include "QvKsWriteStatus.h"

#include <QByteArray>
#include <QString>
#include <QStringList>

class LineTypeMgr;
class QvKsCodeStyles;
class ZcDbDatabase;

struct FloorSaveResult
{
    QvKsWriteStatus status;
    int entities = 0;
    int productEntities = 0;
    // Entities that could not be written ("SPLINE ×2"), and the parts of the old
    // file a save does not carry over (tables, sections, header variables).
    QString droppedEntities;
    QStringList partsNotKept;
};

class FloorSaver
{
public:
    struct Settings
    {
        bool colorBySystem = true;
        // Drawing units per unit of a line-type pattern, as the view draws them.
        double lineTypeScale = 100.0;
    };

    FloorSaver(const QvKsCodeStyles& styles, const LineTypeMgr& lineTypes, const Settings& settings);

    // The drawing as DXF text (R2018, UTF-8); counts and drops go to `result`.
    QByteArray ToDxf(const ZcDbDatabase& database, FloorSaveResult& result) const;
    // Writes `path` (inside `confineTo` when given); a failure leaves the old file.
    FloorSaveResult Save(const ZcDbDatabase& database, const QString& path, const QString& confineTo) const;

    // The indexed colour 1-255 nearest to 0xRRGGBB (an exact one when there is).
    static int NearestAci(quint32 rgb);

private:
    QList<DxfLinetype> CodeLinetypes() const;

    const QvKsCodeStyles& m_styles;
    const LineTypeMgr& m_lineTypes;
    Settings m_settings;
};
