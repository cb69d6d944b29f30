#pragma once

// An attribute of a block reference: a tagged text, visible or not.
#include "ZcDbText.h"

class ZcDbAttributeDefinition;

class ZcDbAttribute : public ZcDbText
{
    ZCRX_DECLARE_MEMBERS(ZcDbAttribute)
public:
    ZcDbAttribute() = default;
    ZcDbAttribute(const ZcGePoint3d& position, const QString& text, const QString& tag, double height = 2.5)
        : ZcDbText(position, text, height)
        , m_tag(tag)
    { }
    ZCDB_DECLARE_CLONE(ZcDbAttribute)

    QString tag() const { return m_tag; }
    Zcad::ErrorStatus setTag(const QString& tag);
    bool isInvisible() const { return m_flags & 1; }
    void setInvisible(bool invisible) { m_flags = invisible ? (m_flags | 1) : (m_flags & ~1); }
    bool isConstant() const { return m_flags & 2; }
    int flags() const { return m_flags; }
    void setFlags(int flags) { m_flags = flags; }

    // Takes tag, flags, text and placement from a definition moved by `blockTransform`.
    Zcad::ErrorStatus setAttributeFromBlock(
        const ZcDbAttributeDefinition* definition, const ZcGeMatrix3d& blockTransform);

private:
    QString m_tag;
    int m_flags = 0;
};
