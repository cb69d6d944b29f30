#include "SysCodeImportPreview.h"

#include "CSysCodeData.h"

namespace {
QString ColourText(COLORREF colour)
{
    return QStringLiteral("%1,%2,%3").arg(colour & 0xFF).arg((colour >> 8) & 0xFF).arg((colour >> 16) & 0xFF);
}

QList<SysCodeAttributeChange> CompareAttributes(const CSysCodeData& before, const CSysCodeData& after)
{
    QList<SysCodeAttributeChange> changes;
    const auto compare = [&](const char* attribute, const QString& old, const QString& now) {
        if (old != now)
            changes.append({ QString::fromUtf8(attribute), old, now });
    };
    compare("颜色", ColourText(before.GetMfcColor()), ColourText(after.GetMfcColor()));
    compare("管线信息", before.GetAddedMsg(), after.GetAddedMsg());
    compare("水平敷设方式", before.GetHorLayingMode(), after.GetHorLayingMode());
    compare("垂直敷设方式", before.GetVerLayingMode(), after.GetVerLayingMode());
    compare("线型", before.GetLineStyle(), after.GetLineStyle());
    compare("线型字符", before.GetLineString(), after.GetLineString());
    compare("线宽", QString::number(before.GetLineWidth(), 'g', 10),
        QString::number(after.GetLineWidth(), 'g', 10));
    compare("透明度", QString::number(before.GetAlpha()), QString::number(after.GetAlpha()));
    compare("备注", before.GetDescribe(), after.GetDescribe());
    return changes;
}

void ListSubtree(const CSysCodeData& node, QStringList& names)
{
    names.append(node.GetFullName());
    for (const CSysCodeData* child : node.GetChildren())
        ListSubtree(*child, names);
}

void Visit(const CSysCodeData& target, const CSysCodeData& node, SysCodeImportPreview& preview)
{
    const QString fullName = node.GetFullName();
    if (node.GetNodeName().isEmpty())
        return; // a nameless code has no place to go
    const CSysCodeData* existing = target.FindByFullName(fullName);
    if (!existing) {
        ListSubtree(node, preview.added);
        return;
    }
    QList<SysCodeAttributeChange> changes = CompareAttributes(*existing, node);
    if (changes.isEmpty())
        preview.unchanged.append(fullName);
    else
        preview.changed.append({ fullName, std::move(changes) });
    for (const CSysCodeData* child : node.GetChildren())
        Visit(target, *child, preview);
}
} // namespace

SysCodeImportPreview PreviewSysCodeImport(const CSysCodeData& target, const CSysCodeData& imported)
{
    SysCodeImportPreview preview;
    for (const CSysCodeData* child : imported.GetChildren())
        Visit(target, *child, preview);
    return preview;
}
