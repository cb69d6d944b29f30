// Feeds arbitrary bytes to the drawing reader and walks whatever it made.
#include "QvKsEntity.h"
#include "ZcSdk.h"

#include <cstdint>
#include <string_view>

extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size)
{
    static const bool registered = [] {
        QvKsEntity::rxInit();
        return true;
    }();
    (void)registered;
    ZcDbDatabase db(false, true);
    if (db.readDxfData(std::string_view(reinterpret_cast<const char*>(data), size)) != Zcad::eOk)
        return 0;
    const auto* model = ZcDbBlockTableRecord::cast(db.modelSpaceId().object());
    if (!model)
        return 0;
    for (const ZcDbObjectId& id : model->entityIds()) {
        ZcDbEntity* entity = nullptr;
        if (zcdbOpenObject(entity, id, ZcDb::kForRead, true) != Zcad::eOk)
            continue;
        if (const auto* product = QvKsEntity::cast(entity))
            (void)product->GetSysCodeIndex();
        ZcDbVoidPtrArray pieces;
        entity->explode(pieces);
        for (void* piece : pieces)
            delete static_cast<ZcDbEntity*>(piece);
        ZcDbExtents extents;
        entity->getGeomExtents(extents);
        entity->close();
    }
    return 0;
}
