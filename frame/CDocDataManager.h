#pragma once

// Keeps one T per document and drops it when the host destroys the document. It
// registers itself with the host's document manager for as long as it lives.
#include "ZcApDocManager.h"
#include "ZcApDocManagerReactor.h"

#include <cstdint>
#include <map>

class ZcApDocument;

template <typename T> class CDocDataManager : public ZcApDocManagerReactor
{
public:
    CDocDataManager()
    {
        if (ZcApDocManager* manager = zcDocManagerPtr())
            manager->addReactor(this);
    }
    ~CDocDataManager() override
    {
        if (ZcApDocManager* manager = zcDocManagerPtr())
            manager->removeReactor(this);
        m_dataMap.clear();
    }
    CDocDataManager(const CDocDataManager&) = delete;
    CDocDataManager& operator=(const CDocDataManager&) = delete;

    void documentToBeDestroyed(ZcApDocument* document) override { m_dataMap.erase(key(document)); }

    // The document's data, made on first use.
    T& docData(ZcApDocument* document) { return m_dataMap[key(document)]; }
    bool hasDocData(ZcApDocument* document) const { return m_dataMap.count(key(document)) > 0; }
    std::size_t docCount() const { return m_dataMap.size(); }

private:
    static std::uintptr_t key(ZcApDocument* document) { return reinterpret_cast<std::uintptr_t>(document); }

    std::map<std::uintptr_t, T> m_dataMap;
};
