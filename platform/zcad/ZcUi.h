#pragma once

// The host's user-interface library: a module initialises it once at load.
void InitZcUiDLL();
bool zcuiIsInitialized();
