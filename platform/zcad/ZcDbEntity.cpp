#include "ZcDbEntity.h"

ZCRX_DEFINE_MEMBERS(ZcDbEntity, ZcDbObject)

// The layer name given last on this thread, held with a reference of its own so
// that entity after entity set to the same layer share one name.
struct ZcDbEntity::RecentLayer
{
    LayerName* name = nullptr;
    ~RecentLayer() { releaseLayer(name); }
};

ZcDbEntity::LayerName*& ZcDbEntity::recentLayer()
{
    thread_local RecentLayer recent;
    return recent.name;
}

ZcDbEntity::LayerName* ZcDbEntity::defaultLayer()
{
    // Never released: entities start on it without counting.
    static LayerName* const name = new LayerName { { 1 }, QStringLiteral("0") };
    return name;
}

ZcDbEntity::LayerName* ZcDbEntity::shareLayer(const QString& layer)
{
    LayerName*& recent = recentLayer();
    if (recent && recent->text == layer) {
        recent->refs.fetch_add(1, std::memory_order_relaxed);
        return recent;
    }
    if (layer == defaultLayer()->text)
        return defaultLayer();
    auto* name = new LayerName { { 2 }, layer };
    releaseLayer(recent);
    recent = name;
    return name;
}

void ZcDbEntity::releaseLayer(LayerName* name)
{
    if (name && name != defaultLayer() && name->refs.fetch_sub(1, std::memory_order_acq_rel) == 1)
        delete name;
}

ZcDbEntity::ZcDbEntity() = default;

ZcDbEntity::~ZcDbEntity()
{
    releaseLayer(m_layer);
}

ZcDbEntity::ZcDbEntity(const ZcDbEntity& other)
    : ZcDbObject(other)
    , m_layer(other.m_layer)
    , m_trueColor(other.m_trueColor)
    , m_colorIndex(other.m_colorIndex)
    , m_lineStyle(other.m_lineStyle)
{
    if (m_layer != defaultLayer())
        m_layer->refs.fetch_add(1, std::memory_order_relaxed);
}

Zcad::ErrorStatus ZcDbEntity::setLayer(const QString& layer)
{
    if (layer.isEmpty())
        return Zcad::eInvalidInput;
    if (layer == m_layer->text)
        return Zcad::eOk;
    LayerName* name = shareLayer(layer);
    releaseLayer(m_layer);
    m_layer = name;
    return Zcad::eOk;
}

void ZcDbEntity::setLayerOf(const ZcDbEntity& other)
{
    if (other.m_layer == m_layer)
        return;
    if (other.m_layer != defaultLayer())
        other.m_layer->refs.fetch_add(1, std::memory_order_relaxed);
    releaseLayer(m_layer);
    m_layer = other.m_layer;
}

Zcad::ErrorStatus ZcDbEntity::setColorIndex(quint16 index)
{
    if (index > kZcColorByLayer)
        return Zcad::eInvalidInput;
    m_colorIndex = index;
    return Zcad::eOk;
}

Zcad::ErrorStatus ZcDbEntity::transformBy(const ZcGeMatrix3d&)
{
    return Zcad::eNotApplicable;
}

Zcad::ErrorStatus ZcDbEntity::explode(ZcDbVoidPtrArray&) const
{
    return Zcad::eNotApplicable;
}

Zcad::ErrorStatus ZcDbEntity::getGeomExtents(ZcDbExtents&) const
{
    return Zcad::eNotApplicable;
}
