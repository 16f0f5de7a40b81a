// Stands before Qt's own registration of meta types. Qt neither tells whose functions a type has nor takes
// back a type that was declared as one; a module that comes back at another address would then be called
// at its old one. So the owner is written down here, and the mark that forbids taking back is left out.
#include "host/base/meta_types.h"

#include "host/base/library.h"

#include <QMetaType>

#include <dlfcn.h>
#include <map>
#include <mutex>
#include <set>

namespace korvex {
namespace {

struct Registrations {
    std::mutex mutex;
    std::map<int, const link_map*> owners;
    std::set<int> shared;  ///< registered by another library, too
};

Registrations& registrations() {
    static auto& all = *new Registrations;
    return all;
}

void noteOwner(int id, bool isNew, const link_map* owner) {
    Registrations& all = registrations();
    const std::lock_guard<std::mutex> lock(all.mutex);
    if (isNew) {
        all.owners[id] = owner;
        all.shared.erase(id);
        return;
    }
    const auto known = all.owners.find(id);
    if (known != all.owners.end() && known->second != owner) {
        all.shared.insert(id);
    }
}

}  // namespace

bool unregisterMetaTypes(const link_map* library) {
    Registrations& all = registrations();
    const std::lock_guard<std::mutex> lock(all.mutex);
    bool allGone = true;
    for (auto type = all.owners.begin(); type != all.owners.end();) {
        const bool isOurs = type->second == library;
        const bool stays =
            isOurs && (all.shared.count(type->first) != 0 || !QMetaType::unregisterType(type->first));
        allGone = allGone && !stays;
        type = isOurs && !stays ? all.owners.erase(type) : std::next(type);
    }
    return allGone;
}

}  // namespace korvex

int QMetaType::registerNormalizedType(const ::QByteArray& name, Destructor destructor,
                                      Constructor constructor, int size, TypeFlags flags,
                                      const QMetaObject* metaObject) {
    using Register =
        int (*)(const ::QByteArray&, Destructor, Constructor, int, TypeFlags, const QMetaObject*);
    static const auto registerInQt = reinterpret_cast<Register>(
        dlsym(RTLD_NEXT, "_ZN9QMetaType22registerNormalizedTypeERK10QByteArrayPFvPvEPFS3_S3_PKvEi6QFlagsINS_"
                         "8TypeFlagEEPK11QMetaObject"));
    flags.setFlag(WasDeclaredAsMetaType, false);
    const bool isNew = !isRegistered(type(name));
    const int id = registerInQt(name, destructor, constructor, size, flags, metaObject);
    korvex::noteOwner(id, isNew, korvex::libraryAt(reinterpret_cast<const void*>(constructor)));
    return id;
}
