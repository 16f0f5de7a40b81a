// Run-time classes, the system registry, services and the dynamic linker.
#pragma once

#include "hxstring.h"
#include "hxtypes.h"

class HxRxObject;

/// Describes a class at run time. Lives for the process.
class HXSDK_API HxRxClass {
public:
    HxRxClass(const wchar_t* name, const HxRxClass* parent) : m_name(name), m_parent(parent) {}
    const wchar_t* name() const { return m_name; }
    /// Null for HxRxObject.
    const HxRxClass* myParent() const { return m_parent; }
    /// True for the class itself and for every class that it derives from.
    bool isDerivedFrom(const HxRxClass* other) const {
        for (const HxRxClass* c = this; c; c = c->m_parent) {
            if (c == other) return true;
        }
        return false;
    }

private:
    const wchar_t* m_name;
    const HxRxClass* m_parent;
};

/// Root of the host's classes.
class HXSDK_API HxRxObject {
public:
    virtual ~HxRxObject();
    static const HxRxClass* desc();
    virtual const HxRxClass* isA() const { return desc(); }
    bool isKindOf(const HxRxClass* wanted) const { return isA()->isDerivedFrom(wanted); }
};

/// Inside a class: its run-time description and the checked cast (null for null or another class).
#define HX_DECLARE_MEMBERS(CLASS)                                                                \
    static const HxRxClass* desc();                                                              \
    const HxRxClass* isA() const override { return desc(); }                                     \
    static CLASS* cast(HxRxObject* object) {                                                     \
        return object && object->isKindOf(desc()) ? static_cast<CLASS*>(object) : nullptr;       \
    }                                                                                            \
    static const CLASS* cast(const HxRxObject* object) {                                         \
        return object && object->isKindOf(desc()) ? static_cast<const CLASS*>(object) : nullptr; \
    }

/// In one source file of the class.
#define HX_DEFINE_MEMBERS(CLASS, PARENT)                                \
    const HxRxClass* CLASS::desc() {                                    \
        static const HxRxClass description(L## #CLASS, PARENT::desc()); \
        return &description;                                            \
    }
