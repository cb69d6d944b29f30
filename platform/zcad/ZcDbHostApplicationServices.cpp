#include "ZcDbHostApplicationServices.h"

ZcDbHostApplicationServices* zcdbHostApplicationServices()
{
    static ZcDbHostApplicationServices* services = new ZcDbHostApplicationServices;
    return services;
}
