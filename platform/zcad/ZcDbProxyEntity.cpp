#include "ZcDbProxyEntity.h"

ZCRX_DEFINE_MEMBERS(ZcDbProxyEntity, ZcDbEntity)
