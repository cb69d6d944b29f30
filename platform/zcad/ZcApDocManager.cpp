#include "ZcApDocManager.h"

#include "ZcUtPrintf.h"

#include <algorithm>

ZcApDocManager::ZcApDocManager() = default;
ZcApDocManager::~ZcApDocManager() = default;

template <typename Call> void ZcApDocManager::notify(Call call)
{
    // A reactor may remove itself (or another) while being told; work on a copy and
    // skip the ones gone meanwhile.
    const std::vector<ZcApDocManagerReactor*> reactors = m_reactors;
    for (ZcApDocManagerReactor* reactor : reactors)
        if (std::find(m_reactors.begin(), m_reactors.end(), reactor) != m_reactors.end())
            call(reactor);
}

void ZcApDocManager::addReactor(ZcApDocManagerReactor* reactor)
{
    if (reactor && std::find(m_reactors.begin(), m_reactors.end(), reactor) == m_reactors.end())
        m_reactors.push_back(reactor);
}

void ZcApDocManager::removeReactor(ZcApDocManagerReactor* reactor)
{
    std::erase(m_reactors, reactor);
}

void ZcApDocManager::pushResourceHandle(void* resourceHandle)
{
    m_resourceHandles.push_back(resourceHandle);
}

void ZcApDocManager::popResourceHandle()
{
    if (m_resourceHandles.empty()) {
        ++m_unmatchedPops;
        return;
    }
    m_resourceHandles.pop_back();
}

void* ZcApDocManager::currentResourceHandle() const
{
    return m_resourceHandles.empty() ? nullptr : m_resourceHandles.back();
}

void ZcApDocManager::resetResourceStack()
{
    m_resourceHandles.clear();
    m_unmatchedPops = 0;
}

Zcad::ErrorStatus ZcApDocManager::sendStringToExecute(
    ZcApDocument* document, const ZTCHAR* text, bool activate, bool wrapUpInactiveDoc, bool echoString)
{
    if (!text)
        return Zcad::eInvalidInput;
    return sendStringToExecute(document, QString::fromUtf16(text), activate, wrapUpInactiveDoc, echoString);
}

Zcad::ErrorStatus ZcApDocManager::sendStringToExecute(
    ZcApDocument* document, const QString& text, bool, bool, bool echoString)
{
    if (!document)
        return Zcad::eInvalidInput;
    const bool known = std::any_of(m_documents.begin(), m_documents.end(),
        [document](const auto& doc) { return doc.get() == document; });
    if (!known)
        return Zcad::eInvalidInput;
    m_pending.push_back({ document, text });
    m_sent.append(text);
    if (echoString)
        zcutPrintf(text);
    return Zcad::eOk;
}

ZcApDocManager::PendingString ZcApDocManager::takePendingString()
{
    if (m_pending.empty())
        return { nullptr, QString() };
    PendingString next = m_pending.front();
    m_pending.pop_front();
    return next;
}

ZcApDocument* ZcApDocManager::createDocument(
    ZcDbDatabase* database, const QString& fileName, bool makeCurrent)
{
    m_documents.push_back(std::make_unique<ZcApDocument>(database, fileName));
    ZcApDocument* document = m_documents.back().get();
    notify([document](ZcApDocManagerReactor* reactor) { reactor->documentCreated(document); });
    if (makeCurrent || !m_current)
        setCurDocument(document);
    return document;
}

void ZcApDocManager::destroyDocument(ZcApDocument* document)
{
    const auto it = std::find_if(m_documents.begin(), m_documents.end(),
        [document](const auto& doc) { return doc.get() == document; });
    if (it == m_documents.end())
        return;
    notify([document](ZcApDocManagerReactor* reactor) { reactor->documentToBeDestroyed(document); });
    const QString fileName = document->fileName();
    std::erase_if(m_pending, [document](const PendingString& entry) { return entry.document == document; });
    std::unique_ptr<ZcApDocument> owned = std::move(*it);
    m_documents.erase(it);
    if (m_current == document)
        m_current = nullptr;
    owned.reset();
    notify([&fileName](ZcApDocManagerReactor* reactor) {
        reactor->documentDestroyed(reinterpret_cast<const char16_t*>(fileName.utf16()));
    });
    if (!m_current && !m_documents.empty())
        setCurDocument(m_documents.back().get());
}

void ZcApDocManager::setCurDocument(ZcApDocument* document)
{
    if (document == m_current)
        return;
    if (m_current) {
        ZcApDocument* old = m_current;
        notify([old](ZcApDocManagerReactor* reactor) { reactor->documentToBeDeactivated(old); });
    }
    if (!document) {
        m_current = nullptr;
        return;
    }
    notify([document](ZcApDocManagerReactor* reactor) { reactor->documentToBeActivated(document); });
    m_current = document;
    notify([document](ZcApDocManagerReactor* reactor) { reactor->documentBecameCurrent(document); });
    notify([document](ZcApDocManagerReactor* reactor) { reactor->documentActivated(document); });
}

std::vector<ZcApDocument*> ZcApDocManager::documents() const
{
    std::vector<ZcApDocument*> list;
    for (const auto& document : m_documents)
        list.push_back(document.get());
    return list;
}

ZcApDocManager* zcDocManagerPtr()
{
    // Never destroyed: plug-ins remove their reactors from their own static
    // destructors, which may run after this library's.
    static ZcApDocManager* manager = new ZcApDocManager;
    return manager;
}
