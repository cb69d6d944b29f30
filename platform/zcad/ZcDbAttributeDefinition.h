#pragma once

// The definition of an attribute in a block: its tag, prompt and default text.
#include "ZcDbText.h"

class ZcDbAttributeDefinition : public ZcDbText
{
    ZCRX_DECLARE_MEMBERS(ZcDbAttributeDefinition)
public:
    ZcDbAttributeDefinition() = default;
    ZcDbAttributeDefinition(const ZcGePoint3d& position, const QString& defaultText, const QString& tag,
        const QString& prompt, double height = 2.5)
        : ZcDbText(position, defaultText, height)
        , m_tag(tag)
        , m_prompt(prompt)
    { }
    ZCDB_DECLARE_CLONE(ZcDbAttributeDefinition)

    QString tag() const { return m_tag; }
    Zcad::ErrorStatus setTag(const QString& tag);
    QString prompt() const { return m_prompt; }
    void setPrompt(const QString& prompt) { m_prompt = prompt; }
    bool isInvisible() const { return m_flags & 1; }
    void setInvisible(bool invisible) { m_flags = invisible ? (m_flags | 1) : (m_flags & ~1); }
    bool isConstant() const { return m_flags & 2; }
    void setConstant(bool constant) { m_flags = constant ? (m_flags | 2) : (m_flags & ~2); }
    // The DXF attribute flags (1 invisible, 2 constant, 4 verify, 8 preset).
    int flags() const { return m_flags; }
    void setFlags(int flags) { m_flags = flags; }

private:
    QString m_tag;
    QString m_prompt;
    int m_flags = 0;
};
