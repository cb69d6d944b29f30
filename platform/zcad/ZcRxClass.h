#pragma once

// The run-time description of a class: its name and its parent class, so that code
// can ask whether an object is of a class or derived from it without RTTI across
// plug-in boundaries.
#include <QString>

class ZcRxClass
{
public:
    ZcRxClass(const QString& name, const ZcRxClass* parent);
    ZcRxClass(const ZcRxClass&) = delete;
    ZcRxClass& operator=(const ZcRxClass&) = delete;

    QString name() const { return m_name; }
    const ZcRxClass* myParent() const { return m_parent; }
    // True for this class itself and for every class it derives from.
    bool isDerivedFrom(const ZcRxClass* other) const;

private:
    QString m_name;
    const ZcRxClass* m_parent;
};
