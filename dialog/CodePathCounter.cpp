#include "CodePathCounter.h"

#include <algorithm>

namespace {
// Index paths are digits and a backslash: lowering them would only copy them.
QString Lowered(const QString& path)
{
    const bool lower = std::none_of(path.cbegin(), path.cend(), [](QChar c) { return c.toLower() != c; });
    return lower ? path : path.toLower();
}
} // namespace

void CodePathCounter::Add(const QString& path)
{
    const auto address = reinterpret_cast<std::uintptr_t>(path.constData());
    Slot& slot = m_recent[(address >> 4) % kSlots];
    if (slot.count && slot.text.constData() == path.constData()) {
        ++*slot.count;
        return;
    }
    int*& count = m_counts[path];
    if (!count) {
        m_storage.push_back(0);
        count = &m_storage.back();
    }
    ++*count;
    slot.text = path;
    slot.count = count;
}

void CodePathCounter::AddTo(QHash<QString, int>& usage) const
{
    usage.reserve(usage.size() + m_counts.size());
    for (auto it = m_counts.cbegin(); it != m_counts.cend(); ++it)
        usage[Lowered(it.key())] += *it.value();
}
