#pragma once

// Loads and unloads application files. An application file exports
// zcrxGetApiVersion (it must equal this host's ZCRX_API_VERSION) and zcrxEntryPoint,
// which receives kInitAppMsg after loading and kUnloadAppMsg before unloading; the
// application handle passed there identifies it in unlockApplication and
// registerAppMDIAware. Applications start locked: only an unlocked one can be
// unloaded.
#include "ZcRxObject.h"
#include "ZcadTypes.h"

#include <QString>
#include <QStringList>

#include <memory>
#include <vector>

class ZcRxDynamicLinker : public ZcRxObject
{
    ZCRX_DECLARE_MEMBERS(ZcRxDynamicLinker)
public:
    ZcRxDynamicLinker();
    ~ZcRxDynamicLinker() override;

    bool unlockApplication(void* appId) const;
    bool lockApplication(void* appId) const;
    bool registerAppMDIAware(void* appId) const;
    bool registerAppNotMDIAware(void* appId) const;

    bool isApplicationLocked(const QString& fileName) const;
    bool isAppMDIAware(const QString& fileName) const;

    // False with lastError() set when the file cannot be loaded, is not an
    // application, was built for another API version or fails its initialisation.
    // Loading a file that is already loaded succeeds without a second kInitAppMsg.
    // `printit` also prints the outcome with zcutPrintf.
    bool loadModule(const QString& fileName, bool printit = false, bool asApp = true);
    // Sends kUnloadAppMsg, drops the commands the application added while it was
    // initialised and unloads the file. Refused for a locked application.
    bool unloadModule(const QString& fileName, bool printit = false);

    QStringList loadedModules() const;
    QString lastError() const { return m_lastError; }

    // The application whose kInitAppMsg is running, or null.
    static void* initialisingApp();

private:
    struct App;

    App* findApp(const QString& fileName) const;
    App* appOf(void* appId) const;
    bool fail(const QString& message, bool printit);

    std::vector<std::unique_ptr<App>> m_apps;
    QString m_lastError;
};

ZcRxDynamicLinker* zcrxDynamicLinker();
