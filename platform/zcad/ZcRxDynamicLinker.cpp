#include "ZcRxDynamicLinker.h"

#include "ZcEdCommandStack.h"
#include "ZcRxDictionary.h"
#include "ZcRxEntryPoint.h"
#include "ZcUtPrintf.h"

#include <QFileInfo>
#include <QLibrary>

ZCRX_DEFINE_MEMBERS(ZcRxDynamicLinker, ZcRxObject)

struct ZcRxDynamicLinker::App
{
    QString path;
    QLibrary library;
    ZcRxEntryPointFn entry = nullptr;
    bool locked = true;
    bool mdiAware = false;
};

namespace {
void* g_initialising = nullptr;

QString canonicalPath(const QString& fileName)
{
    const QFileInfo info(fileName);
    const QString canonical = info.canonicalFilePath();
    return canonical.isEmpty() ? info.absoluteFilePath() : canonical;
}

QString hexVersion(int version)
{
    return QStringLiteral("0x") + QString::number(uint(version), 16).toUpper().rightJustified(8, u'0');
}
} // namespace

ZcRxDynamicLinker::ZcRxDynamicLinker() = default;
ZcRxDynamicLinker::~ZcRxDynamicLinker() = default;

void* ZcRxDynamicLinker::initialisingApp()
{
    return g_initialising;
}

ZcRxDynamicLinker::App* ZcRxDynamicLinker::findApp(const QString& fileName) const
{
    const QString path = canonicalPath(fileName);
    for (const auto& app : m_apps)
        if (app->path == path)
            return app.get();
    return nullptr;
}

ZcRxDynamicLinker::App* ZcRxDynamicLinker::appOf(void* appId) const
{
    for (const auto& app : m_apps)
        if (app.get() == appId)
            return app.get();
    return nullptr;
}

bool ZcRxDynamicLinker::unlockApplication(void* appId) const
{
    App* app = appOf(appId);
    if (!app)
        return false;
    app->locked = false;
    return true;
}

bool ZcRxDynamicLinker::lockApplication(void* appId) const
{
    App* app = appOf(appId);
    if (!app)
        return false;
    app->locked = true;
    return true;
}

bool ZcRxDynamicLinker::registerAppMDIAware(void* appId) const
{
    App* app = appOf(appId);
    if (!app)
        return false;
    app->mdiAware = true;
    return true;
}

bool ZcRxDynamicLinker::registerAppNotMDIAware(void* appId) const
{
    App* app = appOf(appId);
    if (!app)
        return false;
    app->mdiAware = false;
    return true;
}

bool ZcRxDynamicLinker::isApplicationLocked(const QString& fileName) const
{
    const App* app = findApp(fileName);
    return app && app->locked;
}

bool ZcRxDynamicLinker::isAppMDIAware(const QString& fileName) const
{
    const App* app = findApp(fileName);
    return app && app->mdiAware;
}

bool ZcRxDynamicLinker::fail(const QString& message, bool printit)
{
    m_lastError = message;
    if (printit)
        zcutPrintf(QStringLiteral("\n%1").arg(message));
    return false;
}

bool ZcRxDynamicLinker::loadModule(const QString& fileName, bool printit, bool)
{
    m_lastError.clear();
    if (findApp(fileName))
        return true;
    auto app = std::make_unique<App>();
    app->path = canonicalPath(fileName);
    app->library.setFileName(app->path);
    if (!app->library.load())
        return fail(
            QStringLiteral("Cannot load application %1: %2").arg(fileName, app->library.errorString()),
            printit);
    const auto version = reinterpret_cast<ZcRxGetApiVersionFn>(app->library.resolve("zcrxGetApiVersion"));
    app->entry = reinterpret_cast<ZcRxEntryPointFn>(app->library.resolve("zcrxEntryPoint"));
    if (!version || !app->entry) {
        app->library.unload();
        return fail(QStringLiteral("%1 is not an application of this host: it does not export "
                                   "zcrxGetApiVersion and zcrxEntryPoint.")
                        .arg(fileName),
            printit);
    }
    const int apiVersion = version();
    if (apiVersion != ZCRX_API_VERSION) {
        app->library.unload();
        return fail(QStringLiteral("%1 was built for API version %2; this host runs API version %3.")
                        .arg(fileName, hexVersion(apiVersion), hexVersion(ZCRX_API_VERSION)),
            printit);
    }
    App* raw = app.get();
    m_apps.push_back(std::move(app));
    void* previous = g_initialising;
    g_initialising = raw;
    const ZcRx::AppRetCode result = raw->entry(kInitAppMsg, raw);
    g_initialising = previous;
    if (result != kRetOK) {
        zcedRegCmds()->removeCommandsOf(raw);
        raw->library.unload();
        std::erase_if(m_apps, [raw](const auto& entry) { return entry.get() == raw; });
        return fail(QStringLiteral("%1 failed to initialise.").arg(fileName), printit);
    }
    if (printit)
        zcutPrintf(QStringLiteral("\nLoaded %1.").arg(fileName));
    return true;
}

bool ZcRxDynamicLinker::unloadModule(const QString& fileName, bool printit)
{
    m_lastError.clear();
    App* app = findApp(fileName);
    if (!app)
        return fail(QStringLiteral("%1 is not loaded.").arg(fileName), printit);
    if (app->locked)
        return fail(QStringLiteral("%1 is locked and cannot be unloaded.").arg(fileName), printit);
    if (app->entry(kUnloadAppMsg, app) != kRetOK)
        return fail(QStringLiteral("%1 refused to unload.").arg(fileName), printit);
    zcedRegCmds()->removeCommandsOf(app);
    app->library.unload();
    std::erase_if(m_apps, [app](const auto& entry) { return entry.get() == app; });
    if (printit)
        zcutPrintf(QStringLiteral("\nUnloaded %1.").arg(fileName));
    return true;
}

QStringList ZcRxDynamicLinker::loadedModules() const
{
    QStringList list;
    for (const auto& app : m_apps)
        list.append(app->path);
    return list;
}

ZcRxDynamicLinker* zcrxDynamicLinker()
{
    return ZcRxDynamicLinker::cast(zcrxSysRegistry()->at(ZCRX_DYNAMIC_LINKER));
}
