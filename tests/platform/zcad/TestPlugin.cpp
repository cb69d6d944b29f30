// A tiny application file for the dynamic-linker tests: registers two commands and
// a document reactor, and reports what happens through zcutPrintf.
#include "ZcApDocManager.h"
#include "ZcEdCommandStack.h"
#include "ZcRxDictionary.h"
#include "ZcRxDynamicLinker.h"
#include "ZcRxEntryPoint.h"
#include "ZcUtPrintf.h"

#ifndef QV_PLUGIN_API_VERSION
#define QV_PLUGIN_API_VERSION ZCRX_API_VERSION
#endif

namespace {
class Reactor : public ZcApDocManagerReactor
{
public:
    void documentToBeDestroyed(ZcApDocument* document) override
    {
        zcutPrintf(QStringLiteral("[plugin] closing %1").arg(document->docTitle()));
    }
};

Reactor g_reactor;

void onFirst()
{
    zcutPrintf(u"[plugin] first");
    ZcApDocManager* manager = zcDocManagerPtr();
    manager->sendStringToExecute(manager->curDocument(), u"qvsecond ", false, true, false);
    zcutPrintf(u"[plugin] first done");
}

void onSecond()
{
    zcutPrintf(u"[plugin] second");
}
} // namespace

extern "C" int zcrxGetApiVersion()
{
    return QV_PLUGIN_API_VERSION;
}

extern "C" ZcRx::AppRetCode zcrxEntryPoint(ZcRx::AppMsgCode msg, void* appId)
{
    if (msg == kInitAppMsg) {
        auto* linker = ZcRxDynamicLinker::cast(zcrxSysRegistry()->at(ZCRX_DYNAMIC_LINKER));
        linker->unlockApplication(appId);
        linker->registerAppMDIAware(appId);
        auto* commands = ZcEdCommandStack::cast(zcrxSysRegistry()->at(ZCRX_COMMAND_DOCK));
        commands->addCommand(u"QVTEST", u"_qvfirst", u"qvfirst", 0, onFirst);
        commands->addCommand(u"QVTEST", u"_qvsecond", u"qvsecond", 0, onSecond);
        zcDocManagerPtr()->addReactor(&g_reactor);
        zcutPrintf(u"[plugin] init");
    } else if (msg == kUnloadAppMsg) {
        zcDocManagerPtr()->removeReactor(&g_reactor);
        zcutPrintf(u"[plugin] unload");
    }
    return kRetOK;
}
