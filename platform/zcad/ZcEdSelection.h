#pragma once

// Selection sets of the editor. zcedSSGet takes its selection from a queue that a
// script or a test fills; when the queue is empty it asks the interactive handler
// the host window installs (a window or crossing box in the drawing view). With
// neither, the selection is cancelled (RTCAN).
#include "ZcDbObjectId.h"
#include "ZcadTypes.h"

#include <QString>

#include <functional>
#include <vector>

// RTNORM with `picked` filled, or RTCAN / RTERROR.
using ZcEdSelectionHandler = std::function<int(const QString& mode, std::vector<ZcDbObjectId>& picked)>;

// The mode string is passed on unchanged (to the handler, and kept for
// zcedSSLastMode). Erased or unknown ids are left out; an empty selection is RTERROR.
int zcedSSGet(const ZTCHAR* mode, const void* pt1, const void* pt2, const resbuf* filter, zds_name ss);
int zcedSSLength(const zds_name ss, qint32* length);
int zcedSSName(const zds_name ss, qint32 i, zds_name entity);
int zcedSSFree(const zds_name ss);

// Host and test side.
void zcedSSQueueSelection(const std::vector<ZcDbObjectId>& ids);
void zcedSSQueueCancel();
void zcedSSClearQueue();
int zcedSSQueuedCount();
ZcEdSelectionHandler zcedSSSetInteractiveHandler(ZcEdSelectionHandler handler);
QString zcedSSLastMode();
// Selection sets made and not yet freed.
int zcedSSOpenCount();
