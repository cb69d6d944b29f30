#pragma once

// Drawings made in memory for the display list's tests.
#include "ZcDbBlockTableRecord.h"
#include "ZcDbDatabase.h"

// Puts `entity` into the model space of `drawing`, which then owns it.
inline ZcDbObjectId AppendTo(ZcDbDatabase& drawing, ZcDbEntity* entity)
{
    ZcDbBlockTableRecord* space = nullptr;
    ZcDbObjectId id;
    if (zcdbOpenObject(space, drawing.modelSpaceId(), ZcDb::kForWrite) == Zcad::eOk) {
        space->appendZcDbEntity(id, entity);
        space->close();
    } else {
        delete entity;
    }
    return id;
}
