#include "QvKsBzPub.h"

#include "QvKsCodeStyles.h"
#include "QvKsEntity.h"
#include "QvKsModelSpace.h"
#include "ZcDbDatabase.h"
#include "ZcDbHostApplicationServices.h"
#include "ZcDbText.h"

#include <limits>

namespace {
// How far from its entity an annotation may stand, in text heights.
constexpr double kReachInHeights = 6.0;

struct Candidate
{
    const ZcDbEntity* shape;
    QString indexPath;
};

COLORREF ToRgb(COLORREF color)
{
    return ((color & 0xFF) << 16) | (color & 0xFF00) | ((color >> 16) & 0xFF);
}
} // namespace

QString QvKsBzPub::AnnotationLayer()
{
    return QStringLiteral("QV_标注");
}

int QvKsBzPub::RefreshAllBz()
{
    return RefreshAllBz(zcdbHostApplicationServices()->workingDatabase());
}

int QvKsBzPub::RefreshAllBz(ZcDbDatabase* database)
{
    if (!database)
        return 0;
    const QvKsCodeStyles& styles = QvKsCodeStyles::Instance();
    std::vector<Candidate> runs;
    std::vector<ZcDbObjectId> labels;
    for (const ZcDbObjectId id : QvKsModelSpace::EntityIds(database)) {
        ZcDbEntity* entity = nullptr;
        if (zcdbOpenObject(entity, id, ZcDb::kForRead) != Zcad::eOk)
            continue;
        if (const QvKsEntity* product = QvKsEntity::cast(entity); product && product->shape())
            runs.push_back({ product->shape(), product->GetSysCodeIndex() });
        else if (ZcDbText::cast(entity)
            && entity->layer().compare(AnnotationLayer(), Qt::CaseInsensitive) == 0)
            labels.push_back(id);
        entity->close();
    }
    int changed = 0;
    for (const ZcDbObjectId id : labels) {
        ZcDbText* text = nullptr;
        if (zcdbOpenObject(text, id, ZcDb::kForWrite) != Zcad::eOk)
            continue;
        double best = text->height() * kReachInHeights;
        const Candidate* owner = nullptr;
        for (const Candidate& run : runs) {
            const double distance = QvKsModelSpace::DistanceTo(*run.shape, text->position());
            if (distance <= best) {
                best = distance;
                owner = &run;
            }
        }
        const QvKsCodeStyle* style = owner ? styles.Find(owner->indexPath) : nullptr;
        if (style) {
            const quint32 rgb = ToRgb(style->color);
            if (text->textString() != style->name || !text->hasTrueColor() || text->trueColor() != rgb) {
                text->setTextString(style->name);
                text->setTrueColor(rgb);
                ++changed;
            }
        }
        text->close();
    }
    return changed;
}
