#include "CLayerManage.h"

#include "QvKsCodeStyles.h"
#include "QvKsEntity.h"
#include "QvKsModelSpace.h"
#include "ZcDbDatabase.h"
#include "ZcDbHostApplicationServices.h"

namespace {
quint32 ToRgb(COLORREF color)
{
    return ((color & 0xFF) << 16) | (color & 0xFF00) | ((color >> 16) & 0xFF);
}

bool SetCodeLayer(ZcDbDatabase* database, const QString& name, quint32 rgb)
{
    const ZcDbLayerTableRecord* existing = database->layer(name);
    if (existing && existing->hasTrueColor && existing->trueColor == rgb)
        return false;
    ZcDbLayerTableRecord layer = existing ? *existing : ZcDbLayerTableRecord();
    layer.name = name;
    layer.trueColor = rgb;
    layer.hasTrueColor = true;
    database->setLayer(layer);
    return true;
}
} // namespace

CLayerManage* CLayerManage::GetInstance()
{
    static CLayerManage manager;
    return &manager;
}

QString CLayerManage::LayerNameOf(const QvKsCodeStyle& style)
{
    QString name = QStringLiteral("QV-%1-%2").arg(style.spec, style.fullName);
    name.replace(u'\\', u'&');
    for (QChar& c : name)
        if (QStringLiteral("<>/\":;?*|=,`").contains(c) || c.unicode() < 0x20)
            c = u'_';
    return name;
}

int CLayerManage::UpdateCurDwgLayerColor()
{
    return UpdateLayerColor(zcdbHostApplicationServices()->workingDatabase());
}

int CLayerManage::UpdateLayerColor(ZcDbDatabase* database)
{
    if (!database)
        return 0;
    QvKsCodeStyles& styles = QvKsCodeStyles::Instance();
    styles.Reload();
    int changed = 0;
    for (const ZcDbObjectId id : QvKsModelSpace::EntityIds(database)) {
        QvKsEntity* entity = nullptr;
        if (zcdbOpenObject(entity, id, ZcDb::kForWrite) != Zcad::eOk)
            continue;
        if (const QvKsCodeStyle* style = styles.Find(entity->GetSysCodeIndex())) {
            const QString layer = LayerNameOf(*style);
            const bool layerChanged = SetCodeLayer(database, layer, ToRgb(style->color));
            if (layerChanged || entity->layer() != layer) {
                entity->setLayer(layer);
                ++changed;
            }
        }
        entity->close();
    }
    return changed;
}
