#pragma once

// The host's documents: which one is current, the reactors told about them, the
// stack of resource handles that commands push while their dialogs run, and the
// strings queued for the command line.
#include "ZcApDocManagerReactor.h"
#include "ZcApDocument.h"
#include "ZcadTypes.h"

#include <QString>
#include <QStringList>

#include <deque>
#include <memory>
#include <vector>

class ZcDbDatabase;

class ZcApDocManager
{
public:
    struct PendingString
    {
        ZcApDocument* document;
        QString text;
    };

    ZcApDocManager();
    ~ZcApDocManager();
    ZcApDocManager(const ZcApDocManager&) = delete;
    ZcApDocManager& operator=(const ZcApDocManager&) = delete;

    void addReactor(ZcApDocManagerReactor* reactor);
    void removeReactor(ZcApDocManagerReactor* reactor);

    ZcApDocument* curDocument() const { return m_current; }
    ZcApDocument* mdiActiveDocument() const { return m_current; }
    int documentCount() const { return int(m_documents.size()); }

    // The module's resources become current for a while; every push is matched by
    // a pop on every path.
    void pushResourceHandle(void* resourceHandle);
    void popResourceHandle();
    // Host side: the handle on top (null when the stack is empty), its depth, and
    // whether every push was popped. Popping an empty stack is counted as a fault.
    void* currentResourceHandle() const;
    int resourceHandleDepth() const { return int(m_resourceHandles.size()); }
    bool isResourceStackBalanced() const { return m_resourceHandles.empty() && m_unmatchedPops == 0; }
    int unmatchedPops() const { return m_unmatchedPops; }
    void resetResourceStack();

    // Queues `text` for the command line of `document`: the host runs it after the
    // current command returns; a trailing blank or newline submits it.
    Zcad::ErrorStatus sendStringToExecute(ZcApDocument* document, const ZTCHAR* text, bool activate = true,
        bool wrapUpInactiveDoc = false, bool echoString = true);
    Zcad::ErrorStatus sendStringToExecute(ZcApDocument* document, const QString& text, bool activate = true,
        bool wrapUpInactiveDoc = false, bool echoString = true);

    // Host side.
    ZcApDocument* createDocument(ZcDbDatabase* database, const QString& fileName, bool makeCurrent = true);
    // Tells the reactors, then destroys the document (not its database).
    void destroyDocument(ZcApDocument* document);
    void setCurDocument(ZcApDocument* document);
    bool hasPendingStrings() const { return !m_pending.empty(); }
    PendingString takePendingString();
    // Every string sent for execution, in order, for a host that shows or checks them.
    const QStringList& sentStrings() const { return m_sent; }
    std::vector<ZcApDocument*> documents() const;

private:
    template <typename Call> void notify(Call call);

    std::vector<std::unique_ptr<ZcApDocument>> m_documents;
    ZcApDocument* m_current = nullptr;
    std::vector<ZcApDocManagerReactor*> m_reactors;
    std::vector<void*> m_resourceHandles;
    int m_unmatchedPops = 0;
    std::deque<PendingString> m_pending;
    QStringList m_sent;
};

// The host's document manager; never null.
ZcApDocManager* zcDocManagerPtr();
