#include "ModuleResourceGuard.h"

#include "ModuleEntry.h"
#include "ZcApDocManager.h"

ModuleResourceGuard::ModuleResourceGuard()
{
    zcDocManagerPtr()->pushResourceHandle(ModuleResourceHandle());
}

ModuleResourceGuard::~ModuleResourceGuard()
{
    zcDocManagerPtr()->popResourceHandle();
}
