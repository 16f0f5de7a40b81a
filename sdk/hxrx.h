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

/// Objects under names, which compare without regard to case. The dictionary does not own them.
class HXSDK_API HxRxDictionary : public HxRxObject {
public:
    HX_DECLARE_MEMBERS(HxRxDictionary)
    HxRxDictionary();
    ~HxRxDictionary() override;
    HxRxDictionary(const HxRxDictionary&) = delete;
    HxRxDictionary& operator=(const HxRxDictionary&) = delete;

    /// Null when there is no entry of that name, or the name is null or empty.
    HxRxObject* at(const wchar_t* name) const;
    /// Adds or replaces; returns the object that stood there before (null for none), which is the caller's
    /// now. A null or empty name or a null object changes nothing and returns null.
    HxRxObject* atPut(const wchar_t* name, HxRxObject* object);
    /// Takes the entry out and returns its object, which is the caller's now; null when there is none.
    HxRxObject* remove(const wchar_t* name);
    bool has(const wchar_t* name) const;
    int numEntries() const;

private:
    struct Entries;
    Entries* m_entries;
};

/// The host's objects under their well-known names; never null, lives for the process. Holds from the start:
/// "DynamicLinker" (HxRxDynamicLinker) and "ServiceDictionary" (HxRxServiceDictionary); the editor adds
/// "VREX_REGISTERED_COMMANDS" (HxEdCommandStack, hxcmd.h).
HXSDK_API HxRxDictionary* hxrxSysRegistry();

/// Stands for something that a module offers, so that others can ask whether it is there.
class HXSDK_API HxRxService : public HxRxObject {
public:
    HX_DECLARE_MEMBERS(HxRxService)
};

/// The registered services (HxRxService) under their names. Who removes an entry deletes the service.
class HXSDK_API HxRxServiceDictionary : public HxRxDictionary {
public:
    HX_DECLARE_MEMBERS(HxRxServiceDictionary)
};

HXSDK_API bool hxrxServiceIsRegistered(const wchar_t* name);
/// Registers a new service and returns it; the one that is there when the name is taken; null for an empty
/// name.
HXSDK_API HxRxService* hxrxRegisterService(const wchar_t* name);

/// Loads and unloads modules (hxmodule.h). In the system registry as "DynamicLinker". Modules are named by
/// their file name without folder, compared without regard to case.
class HXSDK_API HxRxDynamicLinker : public HxRxObject {
public:
    HX_DECLARE_MEMBERS(HxRxDynamicLinker)
    /// Loads a module and initialises it. A bare file name is looked for in the host's search folders: those
    /// of the environment variable KORVEX_MODULE_PATH (parted by ":"), the program's, and "module" beside it.
    /// eFileNotFound, eDuplicateKey (loaded already), eFileAccessErr (no library that can be loaded),
    /// eNotApplicable (no module, or one for another API version), eRefused (the module's own initialisation
    /// failed). After a failure nothing of the module is left; `error` (may be null) says which file, what is
    /// wrong and what to do.
    virtual Hx::ErrorStatus loadModule(const wchar_t* path, CStdStr<wchar_t>* error = nullptr) = 0;
    /// Sends the module its unload message and takes it out of memory. eKeyNotFound, eRefused (locked, or the
    /// module refuses), eInvalidContext (called while the module is being loaded or unloaded).
    virtual Hx::ErrorStatus unloadModule(const wchar_t* name, CStdStr<wchar_t>* error = nullptr) = 0;
    virtual bool isModuleLoaded(const wchar_t* name) const = 0;
    /// Modules in the order of loading.
    virtual int moduleCount() const = 0;
    /// Empty for a position that does not exist.
    virtual CStdStr<wchar_t> moduleName(int at) const = 0;
    virtual CStdStr<wchar_t> modulePath(int at) const = 0;
    /// An exported function of a loaded module, of the first that has it for a null module; null when there
    /// is none. Valid until the module is unloaded.
    virtual void* functionOf(const wchar_t* module, const char* function) const = 0;

    /// What a module calls with the packet of its initialisation message. The first, before everything else,
    /// puts it under the linker's care. Then: it can serve several open documents; it may be unloaded, which
    /// a module that never says so may not; and the opposite. eInvalidInput for anything but the packet of a
    /// module, eInvalidContext when prepareApp was not called before.
    virtual Hx::ErrorStatus prepareApp(void* packet) = 0;
    virtual Hx::ErrorStatus registerAppMDIAware(void* packet) = 0;
    virtual Hx::ErrorStatus unlockApplication(void* packet) = 0;
    virtual Hx::ErrorStatus lockApplication(void* packet) = 0;
    /// False also for a module that is not loaded.
    virtual bool isAppMDIAware(const wchar_t* module) const = 0;
    virtual bool isApplicationLocked(const wchar_t* module) const = 0;
};
