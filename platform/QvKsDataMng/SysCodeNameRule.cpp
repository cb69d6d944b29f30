#include "SysCodeNameRule.h"

#include "CSysCodeData.h"

#include <QSet>

#include <utility>
#include <vector>

namespace SysCodeNameRule {

namespace {
bool IsHidden(char32_t ucs4)
{
    switch (QChar::category(ucs4)) {
    case QChar::Other_Control:
    case QChar::Other_Format:
    case QChar::Other_Surrogate:
    case QChar::Separator_Line:
    case QChar::Separator_Paragraph:
        return true;
    default:
        return false;
    }
}

// The first character no name may hold because it cannot be seen or steers the
// text, as U+XXXX; empty when there is none.
QString HiddenChar(const QString& name)
{
    for (qsizetype i = 0; i < name.size(); ++i) {
        char32_t ucs4 = name[i].unicode();
        if (name[i].isHighSurrogate() && i + 1 < name.size() && name[i + 1].isLowSurrogate()) {
            ucs4 = QChar::surrogateToUcs4(name[i], name[i + 1]);
            ++i;
        }
        if (IsHidden(ucs4))
            return QStringLiteral("U+%1").arg(
                QString::number(uint(ucs4), 16).toUpper().rightJustified(4, u'0'));
    }
    return QString();
}
} // namespace

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
    if (const QString hidden = HiddenChar(trimmed); !hidden.isEmpty())
        return QStringLiteral("the name holds the control or invisible character %1").arg(hidden);
    return QString();
}

namespace {
// Two children of `parent` whose names are one once trimmed, named by the second's
// full name; empty when there are none.
QString SiblingTwice(const CSysCodeData& parent)
{
    QSet<QString> seen;
    for (const CSysCodeData* child : parent.GetChildren()) {
        const QString name = child->GetNodeName().trimmed();
        if (seen.contains(name))
            return QStringLiteral("the code \"%1\" appears twice at one level")
                .arg(child->GetFullName().left(200));
        seen.insert(name);
    }
    return QString();
}
} // namespace

QString TreeProblem(const CSysCodeData& root)
{
    if (const QString twice = SiblingTwice(root); !twice.isEmpty())
        return twice;
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
        if (const QString twice = SiblingTwice(*node); !twice.isEmpty())
            return twice;
        for (auto it = children.rbegin(); it != children.rend(); ++it)
            stack.emplace_back(*it, level + 1);
    }
    return QString();
}

} // namespace SysCodeNameRule
