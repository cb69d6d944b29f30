#include "QvKsEntity.h"

#include "ZcDbDatabase.h"

#include <algorithm>

ZCRX_DEFINE_MEMBERS(QvKsEntity, ZcDbEntity)

const QString QvKsEntity::kAppName = QStringLiteral("QVKS");

namespace {
ZcDbEntity* promoteProductEntity(ZcDbEntity* plain)
{
    return new QvKsEntity(std::unique_ptr<ZcDbEntity>(plain));
}

// Registered when the library is loaded, so that a host that links it reads
// product entities as such.
const bool g_registered = [] {
    QvKsEntity::rxInit();
    return true;
}();
} // namespace

void QvKsEntity::rxInit()
{
    ZcDbDatabase::registerEntityFactory(kAppName, &promoteProductEntity);
}

QvKsEntity::QvKsEntity() = default;

QvKsEntity::QvKsEntity(std::unique_ptr<ZcDbEntity> shape)
    : m_shape(std::move(shape))
{
    if (!m_shape)
        return;
    setHandle(m_shape->handle());
    setLayerOf(*m_shape);
    setColorIndex(m_shape->colorIndex());
    if (m_shape->hasTrueColor())
        setTrueColor(m_shape->trueColor());
    moveXDataFrom(*m_shape);
}

QvKsEntity::QvKsEntity(const QvKsEntity& other)
    : ZcDbEntity(other)
    , m_shape(other.m_shape ? other.m_shape->clone() : nullptr)
{ }

QvKsEntity::~QvKsEntity() = default;

ZcDbEntity* QvKsEntity::clone() const
{
    return new QvKsEntity(*this);
}

QString QvKsEntity::GetSysCodeIndex() const
{
    // Looked at in place: scans ask this of every entity of a floor.
    if (const auto* apps = xDataAll())
        for (const ZcDbXDataApp& app : *apps)
            // Written as "QVKS" nearly always: the exact match saves the case folding.
            if (app.appName == kAppName || app.appName.compare(kAppName, Qt::CaseInsensitive) == 0) {
                for (const ZcDbXDataValue& value : app.values)
                    if (value.isString())
                        return value.text;
                return QString();
            }
    return QString();
}

void QvKsEntity::SetSysCodeIndex(const QString& indexPath)
{
    std::vector<ZcDbXDataValue> values = xData(kAppName);
    auto first
        = std::find_if(values.begin(), values.end(), [](const ZcDbXDataValue& v) { return v.isString(); });
    if (first != values.end())
        first->text = indexPath;
    else
        values.insert(values.begin(), ZcDbXDataValue::string(indexPath));
    setXData(kAppName, std::move(values));
}

Zcad::ErrorStatus QvKsEntity::transformBy(const ZcGeMatrix3d& transform)
{
    return m_shape ? m_shape->transformBy(transform) : Zcad::eOk;
}

Zcad::ErrorStatus QvKsEntity::explode(ZcDbVoidPtrArray& entitySet) const
{
    if (!m_shape)
        return Zcad::eNotApplicable;
    ZcDbEntity* piece = m_shape->clone();
    piece->setLayer(layer());
    piece->setColorIndex(colorIndex());
    entitySet.append(piece);
    return Zcad::eOk;
}

Zcad::ErrorStatus QvKsEntity::getGeomExtents(ZcDbExtents& extents) const
{
    return m_shape ? m_shape->getGeomExtents(extents) : Zcad::eNotApplicable;
}
