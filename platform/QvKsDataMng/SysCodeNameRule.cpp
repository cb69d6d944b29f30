#include "SysCodeNameRule.h"

#include "CSysCodeData.h"

#include <utility>
#include <vector>

namespace SysCodeNameRule {

QString NameProblem(const QString& name)
{
    const QString trimmed = name.trimmed();
    if (trimmed.isEmpty())
        return QStringLiteral("the name is empty");
    if (trimmed.size() > kMaxNameLength)
        return QStringLiteral("the name is longer than %1 characters").arg(kMaxNameLength);
    for (const QChar forbidden : { u'\'', u'&', u'\\', u'/' }) {
        if (trimmed.contains(forbidden))
            return QStringLiteral("the name contains \"%1\"").arg(forbidden);
    }
    if (trimmed.compare(QLatin1String("SYS"), Qt::CaseInsensitive) == 0)
        return QStringLiteral("\"SYS\" is reserved");
    return QString();
}

QString TreeProblem(const CSysCodeData& root)
{
    // Depth-first with an explicit stack: a tree handed in may be arbitrarily deep.
    std::vector<std::pair<const CSysCodeData*, int>> stack;
    for (auto it = root.GetChildren().rbegin(); it != root.GetChildren().rend(); ++it)
        stack.emplace_back(*it, 1);
    while (!stack.empty()) {
        const auto [node, level] = stack.back();
        stack.pop_back();
        const QString problem = NameProblem(node->GetNodeName());
        if (!problem.isEmpty())
            return QStringLiteral("the code \"%1\" has an illegal name: %2")
                .arg(node->GetFullName().left(200), problem);
        if (level > kMaxLevel)
            return QStringLiteral("the code \"%1\" lies deeper than %2 levels")
                .arg(node->GetFullName().left(200))
                .arg(kMaxLevel);
        const auto& children = node->GetChildren();
        for (auto it = children.rbegin(); it != children.rend(); ++it)
            stack.emplace_back(*it, level + 1);
    }
    return QString();
}

} // namespace SysCodeNameRule
