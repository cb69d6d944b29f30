#pragma once

// The root of the host's run-time classes. Every class declares itself with
// ZCRX_DECLARE_MEMBERS / ZCRX_DEFINE_MEMBERS and can then be asked isA(), desc()
// and cast().
#include "ZcRxClass.h"

#define ZCRX_DECLARE_MEMBERS(CLASS)                                                                          \
public:                                                                                                      \
    static ZcRxClass* desc();                                                                                \
    static CLASS* cast(const ZcRxObject* object)                                                             \
    {                                                                                                        \
        return object && object->isKindOf(CLASS::desc())                                                     \
            ? static_cast<CLASS*>(const_cast<ZcRxObject*>(object))                                           \
            : nullptr;                                                                                       \
    }                                                                                                        \
    ZcRxClass* isA() const override;

#define ZCRX_DEFINE_MEMBERS(CLASS, PARENT)                                                                   \
    ZcRxClass* CLASS::desc()                                                                                 \
    {                                                                                                        \
        static ZcRxClass cls(QStringLiteral(#CLASS), PARENT::desc());                                        \
        return &cls;                                                                                         \
    }                                                                                                        \
    ZcRxClass* CLASS::isA() const                                                                            \
    {                                                                                                        \
        return CLASS::desc();                                                                                \
    }

class ZcRxObject
{
public:
    virtual ~ZcRxObject() = default;

    static ZcRxClass* desc();
    static ZcRxObject* cast(const ZcRxObject* object) { return const_cast<ZcRxObject*>(object); }
    virtual ZcRxClass* isA() const;
    bool isKindOf(const ZcRxClass* cls) const { return isA()->isDerivedFrom(cls); }
};
