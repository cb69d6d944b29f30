#include "QvKsCodeStyles.h"

#include "CISysCode.h"
#include "CQVSpecTypeInfoGet.h"
#include "CSysCodeData.h"

#include <utility>

namespace {
void AddSubtree(QHash<QString, QvKsCodeStyle>& styles, const CSysCodeData& node, const QString& spec,
    int number, const QString& prefix)
{
    for (const CSysCodeData* child : node.GetChildren()) {
        QvKsCodeStyle style;
        style.spec = spec;
        style.name = child->GetNodeName();
        style.fullName = prefix + style.name;
        style.color = child->GetMfcColor();
        style.lineWidth = child->GetLineWidth();
        style.alpha = child->GetAlpha();
        style.lineStyle = child->GetLineStyle();
        style.lineString = child->GetLineString();
        const QString childPrefix = style.fullName + QLatin1Char('\\');
        styles.insert(QvKsCodeStyles::IndexPathOf(number, child->GetNodeIndex()), std::move(style));
        AddSubtree(styles, *child, spec, number, childPrefix);
    }
}
} // namespace

QvKsCodeStyles& QvKsCodeStyles::Instance()
{
    static QvKsCodeStyles styles;
    return styles;
}

bool QvKsCodeStyles::Reload()
{
    m_styles.clear();
    const QStringList specs = CISysCode::GetAllSpecNames();
    bool any = false;
    for (const QString& spec : specs) {
        CSysCodeData root;
        const int number = SpecNumberOf(spec);
        if (number <= 0 || !CISysCode::GetSpecCodeInfos(root, spec))
            continue;
        AddSubtree(m_styles, root, spec, number, QString());
        any = true;
    }
    return any;
}

const QvKsCodeStyle* QvKsCodeStyles::Find(const QString& indexPath) const
{
    const auto it = m_styles.constFind(indexPath);
    return it == m_styles.constEnd() ? nullptr : &it.value();
}

QString QvKsCodeStyles::IndexPathOf(int specNumber, int nodeIndex)
{
    return QStringLiteral("%1\\%2").arg(specNumber).arg(nodeIndex);
}

int QvKsCodeStyles::SpecNumberOf(const QString& spec)
{
    const int type = CQVSpecTypeInfoGet::GetSpecTypeByName(spec);
    if (type != eSpecNone)
        return type;
    // A specialty of another name: the store numbers it; ask through a code's path.
    CSysCodeData root;
    if (!CISysCode::GetSpecCodeInfos(root, spec) || root.GetChildCount() == 0)
        return 0;
    const QString path = CISysCode::GetIndexPath(spec + QLatin1Char('\\') + root.GetChild(0)->GetNodeName());
    return path.section(QLatin1Char('\\'), 0, 0).toInt();
}
