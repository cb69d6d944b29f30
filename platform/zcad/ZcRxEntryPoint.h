#pragma once

// What an application file exports to the host: its API version and its entry point.
// A module includes this header and defines both functions.
#include "ZcadTypes.h"

#if defined(_WIN32)
#define ZCRX_EXPORT __declspec(dllexport)
#else
#define ZCRX_EXPORT __attribute__((visibility("default")))
#endif

using ZcRxGetApiVersionFn = int (*)();
using ZcRxEntryPointFn = ZcRx::AppRetCode (*)(ZcRx::AppMsgCode msg, void* appId);

extern "C" {
ZCRX_EXPORT int zcrxGetApiVersion();
ZCRX_EXPORT ZcRx::AppRetCode zcrxEntryPoint(ZcRx::AppMsgCode msg, void* appId);
}
