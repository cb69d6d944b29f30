#include "ZcUi.h"

namespace {
bool g_initialized = false;
}

void InitZcUiDLL()
{
    g_initialized = true;
}

bool zcuiIsInitialized()
{
    return g_initialized;
}
