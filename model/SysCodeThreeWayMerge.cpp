#include "SysCodeThreeWayMerge.h"

#include "CSysCodeData.h"

#include <QHash>
#include <QSet>

#include <algorithm>

namespace {

constexpr SysCodeField kFields[] = { SysCodeField::Name, SysCodeField::Parent, SysCodeField::Color,
    SysCodeField::LineWidth, SysCodeField::Alpha, SysCodeField::LineStyle, SysCodeField::LineString,
    SysCodeField::HorLaying, SysCodeField::VerLaying, SysCodeField::AddedMsg, SysCodeField::Describe };

// One code of one side: its node, the key of its parent (0: top level) and its
// place among its siblings.
struct Entry
{
    const CSysCodeData* node = nullptr;
    int parent = 0;
};

// A side's codes by key. Stored codes are keyed by their index; codes of mine the
// base does not know get keys below zero.
struct Side
{
    QHash<int, Entry> byKey;
    QHash<int, std::vector<int>> children; // parent key -> child keys in order
    QHash<const CSysCodeData*, int> keyOf;
};

void index(Side& side, const CSysCodeData& root, const QSet<int>* known, int& nextNew)
{
    std::vector<std::pair<const CSysCodeData*, int>> stack { { &root, 0 } };
    while (!stack.empty()) {
        const auto [node, key] = stack.back();
        stack.pop_back();
        std::vector<int>& order = side.children[key];
        for (const CSysCodeData* child : node->GetChildren()) {
            int childKey = child->GetNodeIndex();
            if (childKey <= 0 || (known && !known->contains(childKey)) || side.byKey.contains(childKey))
                childKey = --nextNew;
            side.byKey.insert(childKey, { child, key });
            side.keyOf.insert(child, childKey);
            order.push_back(childKey);
        }
        for (auto it = node->GetChildren().rbegin(); it != node->GetChildren().rend(); ++it)
            stack.emplace_back(*it, side.keyOf.value(*it));
    }
}

QString fullName(const Side& side, int key)
{
    QStringList levels;
    for (int k = key; k != 0 && side.byKey.contains(k); k = side.byKey.value(k).parent)
        levels.prepend(side.byKey.value(k).node->GetNodeName());
    return levels.join(QLatin1Char('\\'));
}

QString colorText(quint32 color)
{
    return QStringLiteral("%1,%2,%3").arg(color & 0xff).arg((color >> 8) & 0xff).arg((color >> 16) & 0xff);
}

// The attribute as text: equal texts are equal values.
QString fieldText(const CSysCodeData& node, SysCodeField field)
{
    switch (field) {
    case SysCodeField::Name:
        return node.GetNodeName();
    case SysCodeField::Parent:
        return QString();
    case SysCodeField::Color:
        return colorText(quint32(node.GetMfcColor()));
    case SysCodeField::LineWidth:
        return QString::number(node.GetLineWidth(), 'g', 17);
    case SysCodeField::Alpha:
        return QString::number(node.GetAlpha());
    case SysCodeField::LineStyle:
        return node.GetLineStyle();
    case SysCodeField::LineString:
        return node.GetLineString();
    case SysCodeField::HorLaying:
        return node.GetHorLayingMode();
    case SysCodeField::VerLaying:
        return node.GetVerLayingMode();
    case SysCodeField::AddedMsg:
        return node.GetAddedMsg();
    case SysCodeField::Describe:
        return node.GetDescribe();
    }
    return QString();
}

// Whether two codes hold one value of the attribute; the same as comparing their
// texts, without making them.
bool sameField(const CSysCodeData& a, const CSysCodeData& b, SysCodeField field)
{
    switch (field) {
    case SysCodeField::Color:
        return (quint32(a.GetMfcColor()) & 0xffffff) == (quint32(b.GetMfcColor()) & 0xffffff);
    case SysCodeField::LineWidth:
        return a.GetLineWidth() == b.GetLineWidth()
            || QString::number(a.GetLineWidth(), 'g', 17) == QString::number(b.GetLineWidth(), 'g', 17);
    case SysCodeField::Alpha:
        return a.GetAlpha() == b.GetAlpha();
    case SysCodeField::Parent:
        return true;
    default:
        return fieldText(a, field) == fieldText(b, field);
    }
}

void copyField(CSysCodeData& to, const CSysCodeData& from, SysCodeField field)
{
    switch (field) {
    case SysCodeField::Name:
        to.SetNodeName(from.GetNodeName());
        break;
    case SysCodeField::Parent:
        break;
    case SysCodeField::Color:
        to.SetMfcColor(from.GetMfcColor());
        break;
    case SysCodeField::LineWidth:
        to.SetLineWidth(from.GetLineWidth());
        break;
    case SysCodeField::Alpha:
        to.SetAlpha(from.GetAlpha());
        break;
    case SysCodeField::LineStyle:
        to.SetLineStyle(from.GetLineStyle());
        break;
    case SysCodeField::LineString:
        to.SetLineString(from.GetLineString());
        break;
    case SysCodeField::HorLaying:
        to.SetHorLayingMode(from.GetHorLayingMode());
        break;
    case SysCodeField::VerLaying:
        to.SetVerLayingMode(from.GetVerLayingMode());
        break;
    case SysCodeField::AddedMsg:
        to.SetAddedMsg(from.GetAddedMsg());
        break;
    case SysCodeField::Describe:
        to.SetDescribe(from.GetDescribe());
        break;
    }
}

// A kept code while the merge runs: its attributes and where it goes.
struct Result
{
    CSysCodeData values;
    int parent = 0;
};

Result resultOf(const Entry& entry, int key)
{
    Result result;
    result.values.SetNodeName(entry.node->GetNodeName());
    result.values.CopyAttributesFrom(*entry.node);
    result.values.SetNodeIndex(key > 0 ? key : 0);
    result.parent = entry.parent;
    return result;
}

class Merger
{
public:
    Merger(const CSysCodeData& base, const CSysCodeData& theirs, const CSysCodeData& mine,
        const QList<SysCodeMergeChoice>& choices)
        : m_choices(choices)
    {
        int nextNew = 0;
        index(m_base, base, nullptr, nextNew);
        const QSet<int> known(m_base.byKey.keyBegin(), m_base.byKey.keyEnd());
        index(m_theirs, theirs, nullptr, nextNew);
        index(m_mine, mine, &known, nextNew);
        m_receivedTheirs = received(m_theirs);
        m_receivedMine = received(m_mine);
    }

    SysCodeThreeWayMerge Run();

private:
    SysCodeMergeChoice Decide(SysCodeCollision collision);
    bool Changed(const Side& side, int key, const QSet<int>& receivedBy) const;
    QSet<int> received(const Side& side) const;
    void MergeBoth(int key);
    void MergeDeleted(int key);
    void KeepParents();
    void BreakCycles();
    void SettleNames();
    QHash<int, std::vector<int>> KeptChildren() const;
    bool Unify(int stored, int other, const QString& parentName, QHash<int, std::vector<int>>& kids);
    std::vector<int> OrderedChildren(int parent, const QHash<int, std::vector<int>>& kids) const;
    void Build(CSysCodeData& root);
    void NoteFromTheirs();
    QString ParentText(const Side& side, int key) const;

    Side m_base;
    Side m_theirs;
    Side m_mine;
    QSet<int> m_receivedTheirs;
    QSet<int> m_receivedMine;
    const QList<SysCodeMergeChoice>& m_choices;
    QHash<int, Result> m_kept;
    QSet<int> m_gone; // codes a collision's choice deleted
    std::vector<int> m_keys; // every key met, in a fixed order
    SysCodeThreeWayMerge m_out;
    bool m_undecided = false;
};

SysCodeMergeChoice Merger::Decide(SysCodeCollision collision)
{
    const qsizetype i = m_out.collisions.size();
    m_out.collisions << std::move(collision);
    const SysCodeMergeChoice choice = i < m_choices.size() ? m_choices.at(i) : SysCodeMergeChoice::Undecided;
    if (choice == SysCodeMergeChoice::Undecided)
        m_undecided = true;
    return choice;
}

// Codes that a side put under a parent they were not under in the base.
QSet<int> Merger::received(const Side& side) const
{
    QSet<int> parents;
    for (auto it = side.byKey.cbegin(); it != side.byKey.cend(); ++it) {
        const auto base = m_base.byKey.constFind(it.key());
        if (base == m_base.byKey.cend() || base->parent != it->parent)
            parents.insert(it->parent);
    }
    return parents;
}

bool Merger::Changed(const Side& side, int key, const QSet<int>& receivedBy) const
{
    const Entry& base = m_base.byKey[key];
    const Entry& now = side.byKey[key];
    if (base.parent != now.parent || receivedBy.contains(key))
        return true;
    for (SysCodeField field : kFields) {
        if (!sameField(*base.node, *now.node, field))
            return true;
    }
    return false;
}

QString Merger::ParentText(const Side& side, int key) const
{
    const int parent = side.byKey.value(key).parent;
    return parent == 0 ? QStringLiteral("（顶层）") : fullName(side, parent);
}

void Merger::MergeBoth(int key)
{
    const Entry& b = m_base.byKey[key];
    const Entry& t = m_theirs.byKey[key];
    const Entry& m = m_mine.byKey[key];
    Result result = resultOf(m, key);
    for (SysCodeField field : kFields) {
        const bool parent = field == SysCodeField::Parent;
        const auto same = [&](const Entry& x, const Entry& y) {
            return parent ? x.parent == y.parent : sameField(*x.node, *y.node, field);
        };
        const bool theirsChanged = !same(t, b);
        bool takeTheirs = theirsChanged && same(m, b);
        if (theirsChanged && !same(m, b) && !same(t, m)) {
            SysCodeCollision c;
            c.field = field;
            c.code = fullName(m_theirs, key);
            c.base = parent ? ParentText(m_base, key) : fieldText(*b.node, field);
            c.theirs = parent ? ParentText(m_theirs, key) : fieldText(*t.node, field);
            c.mine = parent ? ParentText(m_mine, key) : fieldText(*m.node, field);
            takeTheirs = Decide(c) == SysCodeMergeChoice::Theirs;
        }
        if (!takeTheirs)
            continue;
        if (parent)
            result.parent = t.parent;
        else
            copyField(result.values, *t.node, field);
    }
    m_kept.insert(key, std::move(result));
}

// A code of the base that one side or both deleted.
void Merger::MergeDeleted(int key)
{
    const bool inTheirs = m_theirs.byKey.contains(key);
    const bool inMine = m_mine.byKey.contains(key);
    if (!inTheirs && !inMine)
        return;
    const Side& keeper = inTheirs ? m_theirs : m_mine;
    if (!Changed(keeper, key, inTheirs ? m_receivedTheirs : m_receivedMine))
        return; // unchanged where it is kept: the delete wins
    SysCodeCollision c;
    c.kind = inTheirs ? SysCodeCollisionKind::DeletedByMe : SysCodeCollisionKind::DeletedByThem;
    c.code = fullName(m_base, key);
    const SysCodeMergeChoice choice = Decide(c);
    const bool keep = inTheirs ? choice == SysCodeMergeChoice::Theirs : choice == SysCodeMergeChoice::Mine;
    if (!keep) {
        m_gone.insert(key);
        return;
    }
    m_kept.insert(key, resultOf(keeper.byKey[key], key));
}

// A kept code whose parent would go keeps its parent, as the side that kept the
// code has it; a new code under a code chosen to go goes too.
void Merger::KeepParents()
{
    for (bool changed = true; changed;) {
        changed = false;
        for (int key : m_keys) {
            const auto it = m_kept.constFind(key);
            if (it == m_kept.cend() || it->parent == 0 || m_kept.contains(it->parent))
                continue;
            const int parent = it->parent;
            if (!m_base.byKey.contains(key) && m_gone.contains(parent)) {
                // A new code under a code chosen to go goes with it.
                m_kept.remove(key);
                m_gone.insert(key);
                changed = true;
                continue;
            }
            const Side& side = m_mine.byKey.contains(parent) ? m_mine : m_theirs;
            const Side& from = side.byKey.contains(parent) ? side : m_base;
            m_kept.insert(parent, resultOf(from.byKey[parent], parent));
            changed = true;
        }
    }
}

// Moves on both sides can make a code its own ancestor: such a code goes back to
// the parent the store has for it.
void Merger::BreakCycles()
{
    for (int key : m_keys) {
        if (!m_kept.contains(key))
            continue;
        QSet<int> seen { key };
        for (int p = m_kept[key].parent; p != 0; p = m_kept[p].parent) {
            if (seen.contains(p)) {
                const int fallback = m_theirs.byKey.value(key, m_base.byKey.value(key)).parent;
                m_kept[key].parent = m_kept.contains(fallback) ? fallback : 0;
                break;
            }
            seen.insert(p);
        }
    }
}

std::vector<int> Merger::OrderedChildren(int parent, const QHash<int, std::vector<int>>& kids) const
{
    const auto under = [&](const Side& side) {
        std::vector<int> keys;
        for (int k : side.children.value(parent)) {
            const auto kept = m_kept.constFind(k);
            if (kept != m_kept.cend() && kept->parent == parent)
                keys.push_back(k);
        }
        return keys;
    };
    const std::vector<int> mine = under(m_mine);
    const std::vector<int> theirs = under(m_theirs);
    // The store's order wins when only the store reordered these siblings.
    const auto reordered = [&](const std::vector<int>& side) {
        std::vector<int> base = under(m_base);
        const QSet<int> inSide(side.begin(), side.end());
        std::erase_if(base, [&](int k) { return !inSide.contains(k); });
        std::vector<int> common = side;
        const QSet<int> inBase(base.begin(), base.end());
        std::erase_if(common, [&](int k) { return !inBase.contains(k); });
        return common != base;
    };
    const bool theirsFirst = reordered(theirs) && !reordered(mine);
    const std::vector<int>& primary = theirsFirst ? theirs : mine;
    const std::vector<int>& secondary = theirsFirst ? mine : theirs;
    // A code only the other side has goes after the code it follows there, or last
    // when it follows every code both have.
    const QSet<int> inPrimary(primary.begin(), primary.end());
    std::size_t lastShared = 0;
    for (std::size_t i = 0; i < secondary.size(); ++i)
        if (inPrimary.contains(secondary[i]))
            lastShared = i + 1;
    QHash<int, std::vector<int>> following; // anchor (0: the front) -> codes after it
    std::vector<int> atEnd;
    int anchor = 0;
    for (std::size_t i = 0; i < secondary.size(); ++i) {
        const int k = secondary[i];
        if (inPrimary.contains(k))
            anchor = k;
        else if (i >= lastShared)
            atEnd.push_back(k);
        else
            following[anchor].push_back(k);
    }
    std::vector<int> order = following.value(0);
    for (int k : primary) {
        order.push_back(k);
        const auto after = following.constFind(k);
        if (after != following.cend())
            order.insert(order.end(), after->begin(), after->end());
    }
    order.insert(order.end(), atEnd.begin(), atEnd.end());
    QSet<int> placed(order.begin(), order.end());
    for (int k : kids.value(parent))
        if (!placed.contains(k))
            order.push_back(k);
    return order;
}

QHash<int, std::vector<int>> Merger::KeptChildren() const
{
    QHash<int, std::vector<int>> kids;
    for (int key : m_keys) {
        const auto it = m_kept.constFind(key);
        if (it != m_kept.cend())
            kids[it->parent].push_back(key);
    }
    return kids;
}

bool Merger::Unify(int stored, int other, const QString& parentName, QHash<int, std::vector<int>>& kids)
{
    SysCodeCollision c;
    c.kind = SysCodeCollisionKind::SameName;
    const QString name = m_kept[stored].values.GetNodeName();
    c.code = parentName.isEmpty() ? name : parentName + QLatin1Char('\\') + name;
    const SysCodeMergeChoice choice = Decide(c);
    if (choice == SysCodeMergeChoice::Undecided)
        return false;
    // One code stays, under the store's index; the other's codes move under it.
    if (choice == SysCodeMergeChoice::Mine)
        m_kept[stored].values.CopyAttributesFrom(m_kept[other].values);
    std::vector<int> moved = kids.take(other);
    for (int k : moved)
        m_kept[k].parent = stored;
    std::vector<int>& under = kids[stored];
    under.insert(under.end(), moved.begin(), moved.end());
    std::erase(kids[m_kept[other].parent], other);
    m_kept.remove(other);
    return true;
}

// Siblings of one name: a new code of mine and a code of the store become one
// (a collision); two stored codes both stay, the one named here taking a free name.
void Merger::SettleNames()
{
    QHash<int, std::vector<int>> kids = KeptChildren();
    std::vector<std::pair<int, QString>> queue { { 0, QString() } };
    for (std::size_t head = 0; head < queue.size(); ++head) {
        const int parent = queue[head].first;
        const QString parentName = queue[head].second;
        const auto nameOf = [&](const QString& name) {
            return parentName.isEmpty() ? name : parentName + QLatin1Char('\\') + name;
        };
        for (bool again = true; again;) {
            again = false;
            QHash<QString, int> byName;
            for (int key : kids.value(parent)) {
                const QString name = m_kept[key].values.GetNodeName();
                const auto other = byName.constFind(name);
                if (other == byName.cend()) {
                    byName.insert(name, key);
                    continue;
                }
                const int a = *other;
                if (a < 0 || key < 0) {
                    if (!Unify(std::max(a, key), std::min(a, key), parentName, kids))
                        continue;
                    again = true;
                    break;
                }
                // Two stored codes: the one whose name came from this dialog yields.
                const auto mine = m_mine.byKey.constFind(key);
                const auto base = m_base.byKey.constFind(key);
                const bool renamedHere = mine != m_mine.byKey.cend() && mine->node->GetNodeName() == name
                    && base != m_base.byKey.cend() && base->node->GetNodeName() != name;
                const int yielding = renamedHere ? key : a;
                QString free = name;
                for (int n = 1; byName.contains(free) || free == name; ++n)
                    free = name + QString::number(n);
                m_kept[yielding].values.SetNodeName(free);
                m_out.fromTheirs
                    << QStringLiteral("%1 与他人的同名编号并存，改名为 %2").arg(nameOf(name), free);
                again = true;
                break;
            }
        }
        for (int key : kids.value(parent))
            queue.emplace_back(key, nameOf(m_kept[key].values.GetNodeName()));
    }
}

void Merger::Build(CSysCodeData& root)
{
    const QHash<int, std::vector<int>> kids = KeptChildren();
    int unused = 0;
    std::vector<std::pair<CSysCodeData*, int>> stack { { &root, 0 } };
    while (!stack.empty()) {
        const auto [node, key] = stack.back();
        stack.pop_back();
        for (int child : OrderedChildren(key, kids)) {
            auto* made = new CSysCodeData(m_kept[child].values);
            made->SetNodeIndex(child > 0 ? child : 0);
            node->AddDataToChild(unused, made, false);
            stack.emplace_back(made, child);
        }
    }
}

void Merger::NoteFromTheirs()
{
    for (int key : m_keys) {
        const bool inBase = m_base.byKey.contains(key);
        const bool inTheirs = m_theirs.byKey.contains(key);
        if (inTheirs && !inBase && m_kept.contains(key)) {
            m_out.fromTheirs << QStringLiteral("新增 %1").arg(fullName(m_theirs, key));
        } else if (inBase && !inTheirs && !m_kept.contains(key) && m_mine.byKey.contains(key)) {
            m_out.fromTheirs << QStringLiteral("删除 %1").arg(fullName(m_base, key));
        } else if (inBase && inTheirs && m_kept.contains(key)) {
            QStringList fields;
            const CSysCodeData& b = *m_base.byKey[key].node;
            const CSysCodeData& t = *m_theirs.byKey[key].node;
            const CSysCodeData& r = m_kept[key].values;
            for (SysCodeField field : kFields) {
                if (field == SysCodeField::Parent) {
                    if (m_base.byKey[key].parent != m_theirs.byKey[key].parent
                        && m_kept[key].parent == m_theirs.byKey[key].parent
                        && m_mine.byKey.value(key).parent != m_theirs.byKey[key].parent)
                        fields << SysCodeFieldTitle(field);
                } else if (!sameField(t, b, field) && sameField(r, t, field)
                    && (!m_mine.byKey.contains(key) || !sameField(*m_mine.byKey[key].node, t, field))) {
                    fields << SysCodeFieldTitle(field);
                }
            }
            if (!fields.isEmpty())
                m_out.fromTheirs << QStringLiteral("%1：%2").arg(
                    fullName(m_theirs, key), fields.join(QStringLiteral("、")));
        }
    }
}

SysCodeThreeWayMerge Merger::Run()
{
    QSet<int> seen;
    // Pre-order over each side's tree, so collisions come in the order of the codes.
    for (const Side* side : { &m_base, &m_theirs, &m_mine }) {
        std::vector<int> todo { 0 };
        while (!todo.empty()) {
            const int parent = todo.back();
            todo.pop_back();
            const std::vector<int> kids = side->children.value(parent);
            for (auto it = kids.rbegin(); it != kids.rend(); ++it)
                todo.push_back(*it);
            if (parent != 0 && !seen.contains(parent)) {
                seen.insert(parent);
                m_keys.push_back(parent);
            }
        }
    }
    for (int key : m_keys) {
        const bool inBase = m_base.byKey.contains(key);
        const bool inTheirs = m_theirs.byKey.contains(key);
        const bool inMine = m_mine.byKey.contains(key);
        if (inBase && inTheirs && inMine) {
            MergeBoth(key);
        } else if (inBase) {
            MergeDeleted(key);
        } else {
            m_kept.insert(key, resultOf(inTheirs ? m_theirs.byKey[key] : m_mine.byKey[key], key));
        }
    }
    KeepParents();
    BreakCycles();
    SettleNames();
    if (m_undecided)
        return std::move(m_out);
    NoteFromTheirs();
    m_out.merged = std::make_unique<CSysCodeData>();
    Build(*m_out.merged);
    for (int key : m_keys) {
        if (key <= 0 || !m_kept.contains(key) || !m_theirs.byKey.contains(key))
            continue;
        const QString before = fullName(m_theirs, key);
        QStringList levels;
        for (int k = key; k != 0; k = m_kept[k].parent)
            levels.prepend(m_kept[k].values.GetNodeName());
        const QString after = levels.join(QLatin1Char('\\'));
        if (before != after)
            m_out.renames.emplace_back(before, after);
    }
    return std::move(m_out);
}

} // namespace

SysCodeThreeWayMerge MergeSysCodeThreeWay(const CSysCodeData& base, const CSysCodeData& theirs,
    const CSysCodeData& mine, const QList<SysCodeMergeChoice>& choices)
{
    Merger merger(base, theirs, mine, choices);
    SysCodeThreeWayMerge result = merger.Run();
    if (result.merged)
        result.merged->SetNodeIndex(std::max(base.GetNodeIndex(), theirs.GetNodeIndex()));
    return result;
}

QString SysCodeFieldTitle(SysCodeField field)
{
    switch (field) {
    case SysCodeField::Name:
        return QStringLiteral("名称");
    case SysCodeField::Parent:
        return QStringLiteral("上级");
    case SysCodeField::Color:
        return QStringLiteral("颜色");
    case SysCodeField::LineWidth:
        return QStringLiteral("线宽(mm)");
    case SysCodeField::Alpha:
        return QStringLiteral("透明度");
    case SysCodeField::LineStyle:
        return QStringLiteral("线型样式");
    case SysCodeField::LineString:
        return QStringLiteral("线型字符");
    case SysCodeField::HorLaying:
        return QStringLiteral("水平敷设方式");
    case SysCodeField::VerLaying:
        return QStringLiteral("垂直敷设方式");
    case SysCodeField::AddedMsg:
        return QStringLiteral("管线信息");
    case SysCodeField::Describe:
        return QStringLiteral("备注");
    }
    return QString();
}
