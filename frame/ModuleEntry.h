#pragma once

// The module as the host sees it: library start and end, the entry point, the
// command "bhgl" and the attribute bar's double-click hook.
#include "ZcRxEntryPoint.h"

class SysCodeDlg;

// The dialog of the command "bhgl" while it runs; null otherwise.
extern SysCodeDlg* g_pCommandDlg;

// Library attach (reason 1) and detach (reason 0); always 1.
int ModuleDllMain(void* hInstance, unsigned reason);
// The handle the module's resources are pushed with.
void* ModuleResourceHandle();
bool IsModuleInitialised();

void RegisterModuleCommands();
void OnBhglCommand();
void OnFaceBarSysCodeDblClk();
