#include "CSysCodeData.h"

#include <QHash>
#include <QStringList>

#include <algorithm>

struct CSysCodeData::Index
{
    QHash<QString, CSysCodeData*> byFullName;
    int maxIndex = 0;
};

CSysCodeData::CSysCodeData() = default;

CSysCodeData::~CSysCodeData()
{
    DeleteData();
    DetachFromParent();
}

CSysCodeData::CSysCodeData(const CSysCodeData& other)
{
    CopyFrom(other);
}

CSysCodeData& CSysCodeData::operator=(const CSysCodeData& other)
{
    if (this == &other)
        return *this;
    // Copy first: `other` may live inside the subtree that is about to go.
    CSysCodeData copy(other);
    DeleteData();
    m_name = copy.m_name;
    m_index = copy.m_index;
    CopyAttributesFrom(copy);
    for (CSysCodeData* child : copy.m_children)
        child->m_parent = this;
    m_children = std::move(copy.m_children);
    copy.m_children.clear();
    InvalidateIndex();
    return *this;
}

void CSysCodeData::CopyFrom(const CSysCodeData& other)
{
    m_name = other.m_name;
    m_index = other.m_index;
    CopyAttributesFrom(other);
    m_children.reserve(other.m_children.size());
    for (const CSysCodeData* child : other.m_children) {
        auto* copy = new CSysCodeData(*child);
        copy->m_parent = this;
        m_children.push_back(copy);
    }
}

void CSysCodeData::CopyAttributesFrom(const CSysCodeData& other)
{
    m_color = other.m_color;
    m_lineWidth = other.m_lineWidth;
    m_alpha = other.m_alpha;
    m_lineStyle = other.m_lineStyle;
    m_lineString = other.m_lineString;
    m_horLayingMode = other.m_horLayingMode;
    m_verLayingMode = other.m_verLayingMode;
    m_addedMsg = other.m_addedMsg;
    m_describe = other.m_describe;
}

void CSysCodeData::SetNodeName(const QString& name)
{
    if (name == m_name)
        return;
    m_name = name;
    InvalidateIndex();
}

QString CSysCodeData::GetFullName() const
{
    QStringList levels;
    for (const CSysCodeData* node = this; node->m_parent; node = node->m_parent)
        levels.prepend(node->m_name);
    return levels.join(QLatin1Char('\\'));
}

void CSysCodeData::SetNodeIndex(const int& index)
{
    m_index = index;
    // A lowered index leaves the cached maximum high; numbering then only skips.
    if (const CSysCodeData* top = Top(); top->m_lookup)
        top->m_lookup->maxIndex = std::max(top->m_lookup->maxIndex, index);
}

CSysCodeData* CSysCodeData::GetChild(int i) const
{
    if (i < 0 || i >= GetChildCount())
        return nullptr;
    return m_children[std::size_t(i)];
}

void CSysCodeData::SetParent(CSysCodeData* parent)
{
    if (parent == m_parent)
        return;
    for (const CSysCodeData* p = parent; p; p = p->m_parent) {
        if (p == this)
            return; // a node cannot move under itself
    }
    DetachFromParent();
    if (!parent)
        return;
    m_lookup.reset();
    m_parent = parent;
    parent->m_children.push_back(this);
    parent->InvalidateIndex();
}

void CSysCodeData::DetachFromParent()
{
    if (!m_parent)
        return;
    m_parent->InvalidateIndex();
    auto& siblings = m_parent->m_children;
    siblings.erase(std::remove(siblings.begin(), siblings.end(), this), siblings.end());
    m_parent = nullptr;
}

void CSysCodeData::AddDataToChild(int& counter, CSysCodeData* child, bool bNewIndex)
{
    if (!child || child == this)
        return;
    for (const CSysCodeData* p = this; p; p = p->m_parent) {
        if (p == child)
            return; // would make a cycle
    }
    child->DetachFromParent();
    child->m_lookup.reset();
    if (bNewIndex) {
        counter = std::max(counter, GetMaxNodeIndex());
        child->Renumber(counter);
    }
    child->m_parent = this;
    m_children.push_back(child);
    if (const CSysCodeData* top = Top(); top->m_lookup)
        IndexSubtree(*top->m_lookup, child, child->GetFullName());
}

void CSysCodeData::Renumber(int& counter)
{
    m_index = ++counter;
    for (CSysCodeData* child : m_children)
        child->Renumber(counter);
}

bool CSysCodeData::AddNewSysCodeByFullName(
    int& counter, const CSysCodeData* node, const QString& fullName, bool bNewIndex)
{
    if (!node || fullName.isEmpty())
        return false;
    const qsizetype cut = fullName.lastIndexOf(QLatin1Char('\\'));
    const QString leaf = fullName.mid(cut + 1);
    if (leaf.isEmpty())
        return false;
    CSysCodeData* top = Top();
    CSysCodeData* parent = cut < 0 ? top : top->FindByFullName(fullName.left(cut));
    if (!parent || top->FindByFullName(fullName))
        return false;
    auto* copy = new CSysCodeData(*node);
    copy->m_name = leaf;
    parent->AddDataToChild(counter, copy, bNewIndex);
    return true;
}

bool CSysCodeData::ResetExistNodeMsg(const CSysCodeData* node)
{
    if (!node)
        return false;
    CSysCodeData* existing = FindByFullName(node->GetFullName());
    if (!existing)
        return false;
    existing->CopyAttributesFrom(*node);
    return true;
}

CSysCodeData* CSysCodeData::FindByFullName(const QString& fullName) const
{
    if (fullName.isEmpty())
        return nullptr;
    CSysCodeData* found = EnsureIndex().byFullName.value(fullName, nullptr);
    for (const CSysCodeData* p = found; p; p = p->m_parent) {
        if (p == this)
            return found; // only codes of this subtree count
    }
    return nullptr;
}

void CSysCodeData::DeleteData()
{
    if (m_children.empty())
        return;
    std::vector<CSysCodeData*> children;
    children.swap(m_children);
    for (CSysCodeData* child : children) {
        child->m_parent = nullptr;
        delete child;
    }
    InvalidateIndex();
}

int CSysCodeData::GetMaxNodeIndex() const
{
    return EnsureIndex().maxIndex;
}

CSysCodeData* CSysCodeData::Top() const
{
    const CSysCodeData* node = this;
    while (node->m_parent)
        node = node->m_parent;
    return const_cast<CSysCodeData*>(node);
}

void CSysCodeData::InvalidateIndex() const
{
    Top()->m_lookup.reset();
}

CSysCodeData::Index& CSysCodeData::EnsureIndex() const
{
    const CSysCodeData* top = Top();
    if (!top->m_lookup) {
        top->m_lookup = std::make_unique<Index>();
        for (const CSysCodeData* child : top->m_children)
            IndexSubtree(*top->m_lookup, child, child->m_name);
    }
    return *top->m_lookup;
}

void CSysCodeData::IndexSubtree(Index& index, const CSysCodeData* node, const QString& fullName) const
{
    // The first code of a duplicated full name wins, as a walk in order would find it.
    if (!index.byFullName.contains(fullName))
        index.byFullName.insert(fullName, const_cast<CSysCodeData*>(node));
    index.maxIndex = std::max(index.maxIndex, node->m_index);
    for (const CSysCodeData* child : node->m_children)
        IndexSubtree(index, child, fullName + QLatin1Char('\\') + child->m_name);
}
