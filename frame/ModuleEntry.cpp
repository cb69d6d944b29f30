// Library start and end, the host entry point and the registration of the
// command and of the attribute bar's double-click hook.
#include "ModuleEntry.h"

#include "CChangeNameDlg.h"
#include "CDocData.h"
#include "CDocDataManager.h"
#include "IFaceBarCtrl.h"
#include "ZcEdCommandStack.h"
#include "ZcRxDictionary.h"
#include "ZcRxDynamicLinker.h"
#include "ZcUi.h"

namespace {
constexpr unsigned kProcessDetach = 0;
constexpr unsigned kProcessAttach = 1;

// The module's record as an extension library: its instance, whose address also
// serves as the handle its resources are pushed with.
struct ExtensionModule
{
    bool bInitialized = false;
    void* hModule = nullptr;
};
ExtensionModule g_extensionModule;

// Attach when the library is loaded, detach when it leaves the process.
struct LibraryLifetime
{
    LibraryLifetime() { ModuleDllMain(&g_extensionModule, kProcessAttach); }
    ~LibraryLifetime() { ModuleDllMain(&g_extensionModule, kProcessDetach); }
};
const LibraryLifetime g_libraryLifetime;

// Per-document data; nothing looks it up yet.
CDocDataManager<CDocData> g_docDataManager;

template <typename Service> Service* registryService(const char16_t* key)
{
    ZcRxObject* entry = zcrxSysRegistry()->at(key);
    if (!entry || !entry->isA()->isDerivedFrom(Service::desc()))
        return nullptr;
    return static_cast<Service*>(entry);
}
} // namespace

SysCodeDlg* g_pCommandDlg = nullptr;

int ModuleDllMain(void* hInstance, unsigned reason)
{
    if (reason == kProcessAttach) {
        if (!g_extensionModule.bInitialized) {
            g_extensionModule.bInitialized = true;
            g_extensionModule.hModule = hInstance;
            SetChangeNameResourceHandle(hInstance);
        }
        InitZcUiDLL();
    } else if (reason == kProcessDetach && g_extensionModule.bInitialized) {
        g_extensionModule.bInitialized = false;
    }
    return 1;
}

void* ModuleResourceHandle()
{
    return g_extensionModule.hModule;
}

bool IsModuleInitialised()
{
    return g_extensionModule.bInitialized;
}

void RegisterModuleCommands()
{
    IFaceBarCtrl::RegDbClickSysFunc(&OnFaceBarSysCodeDblClk);
    ZcEdCommandStack* commands = registryService<ZcEdCommandStack>(ZCRX_COMMAND_DOCK);
    commands->addCommand(u"QV", u"_bhgl", u"bhgl", 0, &OnBhglCommand, nullptr, -1, nullptr, nullptr);
}

// Only the initialisation acts; nothing is removed at unload.
extern "C" ZCRX_EXPORT ZcRx::AppRetCode zcrxEntryPoint(ZcRx::AppMsgCode msg, void* appId)
{
    if (msg != kInitAppMsg)
        return kRetOK;
    registryService<ZcRxDynamicLinker>(ZCRX_DYNAMIC_LINKER)->unlockApplication(appId);
    registryService<ZcRxDynamicLinker>(ZCRX_DYNAMIC_LINKER)->registerAppMDIAware(appId);
    RegisterModuleCommands();
    return kRetOK;
}

extern "C" ZCRX_EXPORT int zcrxGetApiVersion()
{
    return 0x07E20028;
}
