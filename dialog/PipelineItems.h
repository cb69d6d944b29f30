#pragma once

// The pipeline bill and quota items of a floor as the dialog keeps them for
// carrying renamed codes into them: items without a name are left out, and each
// name is kept once.
#include "QvKsQtxmInfo.h"

#include <QVector>

// The floor's bill items and its quota items (those of the floor and those under
// each kept bill item). A floor the store does not know yields nothing.
void LoadFloorPipelineItems(
    const QString& floor, QVector<SQvKsQdInfo>& qdItems, QVector<SQvKsDeInfo>& deItems);
