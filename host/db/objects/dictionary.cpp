// Dictionaries.
#include "host/db/groups/group_writer.h"
#include "host/db/kernel/database_imp.h"
#include "host/db/kernel/text_fold.h"
#include "host/db/objects/dictionary_access.h"
#include "host/db/objects/dictionary_imp.h"
#include "sdk/hxdbdict.h"

HX_DEFINE_MEMBERS(HxDbDictionary, HxDbObject)
HX_DEFINE_MEMBERS(HxDbDictionaryWithDefault, HxDbDictionary)

namespace korvex {

namespace {

constexpr int kNameCode = 3;
constexpr int kHardOwnerFlagCode = 280;
constexpr int kHardOwnerCode = 360;
constexpr int kSoftOwnerCode = 350;
constexpr int kDefaultCode = 340;

bool isPointerCode(int code) { return code >= 320 && code <= 369; }

}  // namespace

bool DictionaryImp::Entry::isLive() const { return object && !object->erased; }

void DictionaryImp::clearFields() {
    entries.clear();
    m_head.clear();
    m_hardOwner = false;
}

void DictionaryImp::readField(const ReadContext& context, const GroupCursor& group) {
    const bool hasMarkers = context.database.imp()->traits().hasSubclassMarkers;
    if (hasMarkers && context.subclass != "AcDbDictionary") {
        return;
    }
    if (group.code() == kNameCode) {
        entries.push_back({group.asText()});
    } else if (!entries.empty() && isPointerCode(group.code())) {
        Entry& entry = entries.back();
        entry.code = group.code();
        entry.handle = group.asHandle();
        entry.object = context.database.imp()->handles.find(entry.handle);
    } else if (entries.empty()) {
        m_head.append(group.bytes());
        m_hardOwner = m_hardOwner || (group.code() == kHardOwnerFlagCode && group.asInteger() == 1);
    }
}

void DictionaryImp::writeFields(FieldWriter& out) const {
    out.replaceSubclass("AcDbDictionary");
    GroupCursor head(m_head, out.format());
    bool hasFlags = false;
    while (head.next()) {
        out.copy(head);
        hasFlags = true;
    }
    if (!hasFlags && stub->database->imp()->traits().hasLineWeights) {
        out.integer(kHardOwnerFlagCode, m_hardOwner ? 1 : 0);
        out.integer(281, 1);
    }
    for (const Entry& entry : entries) {
        if (entry.object && entry.object->erased && out.isForFile()) {
            continue;
        }
        out.text(kNameCode, entry.name);
        out.handle(entry.code, entry.object ? entry.object->handle : entry.handle);
    }
}

Hx::ErrorStatus DictionaryImp::mayErase() const {
    return stub == stub->database->imp()->namedObjects ? Hx::eCannotBeErasedByCaller : Hx::eOk;
}

bool DictionaryImp::isStaleForSaving() const {
    return std::any_of(entries.begin(), entries.end(),
                       [](const Entry& entry) { return entry.object && entry.object->erased; });
}

DictionaryImp::Entry* DictionaryImp::find(std::wstring_view name) {
    for (Entry& entry : entries) {
        if (entry.isLive() && equalNames(entry.name, name)) {
            return &entry;
        }
    }
    return nullptr;
}

bool DictionaryImp::isDeadOf(const Entry& entry, std::wstring_view name) {
    return entry.object && entry.object->erased && equalNames(entry.name, name);
}

bool DictionaryImp::hasDead(std::wstring_view name) const {
    return std::any_of(entries.begin(), entries.end(),
                       [name](const Entry& entry) { return isDeadOf(entry, name); });
}

void DictionaryImp::dropDead(std::wstring_view name) {
    entries.erase(std::remove_if(entries.begin(), entries.end(),
                                 [name](const Entry& entry) { return isDeadOf(entry, name); }),
                  entries.end());
}

void DictionaryWithDefaultImp::clearFields() {
    DictionaryImp::clearFields();
    defaultEntry = nullptr;
}

void DictionaryWithDefaultImp::readField(const ReadContext& context, const GroupCursor& group) {
    if (context.subclass == "AcDbDictionaryWithDefault" && group.code() == kDefaultCode) {
        defaultEntry = context.database.imp()->handles.find(group.asHandle());
    } else {
        DictionaryImp::readField(context, group);
    }
}

void DictionaryWithDefaultImp::writeFields(FieldWriter& out) const {
    DictionaryImp::writeFields(out);
    out.subclass("AcDbDictionaryWithDefault");
    if (defaultEntry) {
        out.handle(kDefaultCode, defaultEntry->handle);
    }
}

HxDbStub* dictionaryEntry(HxDbStub* dictionary, std::wstring_view name) {
    const HxDbObject* object = dictionary && !dictionary->erased ? materialise(*dictionary) : nullptr;
    if (!object || !object->isKindOf(HxDbDictionary::desc())) {
        return nullptr;
    }
    const DictionaryImp::Entry* entry = fields<DictionaryImp>(object).find(name);
    return entry ? entry->object : nullptr;
}

bool entryName(HxDbStub& dictionary, const HxDbStub& object, std::wstring& name) {
    const HxDbObject* opened = materialise(dictionary);
    if (!opened || !opened->isKindOf(HxDbDictionary::desc())) {
        return false;
    }
    for (const DictionaryImp::Entry& entry : fields<DictionaryImp>(opened).entries) {
        if (entry.object == &object && entry.isLive()) {
            name = entry.name;
            return true;
        }
    }
    return false;
}

HxDbStub* extensionEntry(HxDbStub& holder, std::wstring_view name) {
    const HxDbObject* object = holder.erased ? nullptr : materialise(holder);
    return object ? dictionaryEntry(object->extensionDictionary().stub(), name) : nullptr;
}

namespace {

/// The extension dictionary of an object, made when it is missing.
Hx::ErrorStatus extensionOf(HxDbStub& holder, WriteAccess::Upgrade whose, HxDbStub*& extension) {
    extension = materialise(holder)->extensionDictionary().stub();
    if (extension) {
        return Hx::eOk;
    }
    const WriteAccess open(holder, false, whose);
    const Hx::ErrorStatus status = open.object() ? open.object()->createExtensionDictionary() : open.status();
    if (status == Hx::eOk) {
        extension = open.object()->extensionDictionary().stub();
    }
    return status;
}

}  // namespace

Hx::ErrorStatus makeExtensionDictionaryEntry(HxDbStub& holder, const wchar_t* name,
                                             WriteAccess::Upgrade whose, HxDbStub*& dictionary) {
    dictionary = extensionEntry(holder, name);
    if (dictionary) {
        return HxDbDictionary::cast(materialise(*dictionary)) ? Hx::eOk : Hx::eWrongClass;
    }
    HxDbStub* extension = nullptr;
    Hx::ErrorStatus status = extensionOf(holder, whose, extension);
    if (status != Hx::eOk) {
        return status;
    }
    const WriteAccess open(*extension, false, whose);
    auto* entries = HxDbDictionary::cast(open.object());
    if (!entries) {
        return open.object() ? Hx::eWrongClass : open.status();
    }
    auto made = std::make_unique<HxDbDictionary>();
    HxDbObjectId id;
    status = entries->setAt(name, made.get(), id);
    if (status == Hx::eOk) {
        made.release()->close();
        dictionary = id.stub();
    }
    return status;
}

namespace {

/// Erases an object that loses its entry, if the dictionary owns it.
Hx::ErrorStatus eraseOwned(const DictionaryImp& dictionary, HxDbStub& stub) {
    if (ownerOf(stub) != dictionary.stub) {
        return Hx::eOk;
    }
    HxDbObject* object = nullptr;
    Hx::ErrorStatus status = hxdbOpenObject(object, HxDbObjectId(&stub), HxDb::kForWrite);
    if (status == Hx::eOk) {
        status = object->erase();
        object->close();
    }
    return status;
}

}  // namespace

}  // namespace korvex

using namespace korvex;

HxDbDictionary::HxDbDictionary() : HxDbObject(new DictionaryImp) {
    fields<DictionaryImp>(this).makeHardOwner();
}

Hx::ErrorStatus HxDbDictionary::getAt(const wchar_t* name, HxDbObjectId& id) const {
    const DictionaryImp::Entry* entry = name ? fields<DictionaryImp>(this).find(name) : nullptr;
    id = HxDbObjectId(entry ? entry->object : nullptr);
    if (!entry && isKindOf(HxDbDictionaryWithDefault::desc())) {
        id = HxDbObjectId(fields<DictionaryWithDefaultImp>(this).defaultEntry);
    }
    return id.isNull() ? Hx::eKeyNotFound : Hx::eOk;
}

Hx::ErrorStatus HxDbDictionary::getAt(const wchar_t* name, HxDbObject*& object, HxDb::OpenMode mode) const {
    object = nullptr;
    HxDbObjectId id;
    const Hx::ErrorStatus status = getAt(name, id);
    return status == Hx::eOk ? hxdbOpenObject(object, id, mode) : status;
}

bool HxDbDictionary::has(const wchar_t* name) const {
    return name && fields<DictionaryImp>(this).find(name) != nullptr;
}

Hx::ErrorStatus HxDbDictionary::nameAt(HxDbObjectId id, CStdStr<wchar_t>& name) const {
    const auto& entries = fields<DictionaryImp>(this).entries;
    const auto entry = std::find_if(entries.begin(), entries.end(), [&id](const DictionaryImp::Entry& one) {
        return one.object && one.object == id.stub();
    });
    if (entry == entries.end()) {
        return Hx::eKeyNotFound;
    }
    name = entry->name.c_str();
    return Hx::eOk;
}

std::size_t HxDbDictionary::numEntries() const {
    const auto& entries = fields<DictionaryImp>(this).entries;
    return static_cast<std::size_t>(
        std::count_if(entries.begin(), entries.end(), [](const auto& entry) { return entry.isLive(); }));
}

Hx::ErrorStatus HxDbDictionary::setAt(const wchar_t* name, HxDbObject* object, HxDbObjectId& id) {
    auto& dictionary = fields<DictionaryImp>(this);
    HxDbStub* stub = dictionary.stub;
    id = HxDbObjectId();
    if (!stub) {
        return Hx::eNotInDatabase;
    }
    if (!name || !*name || !object) {
        return Hx::eInvalidInput;
    }
    DictionaryImp::Entry* present = dictionary.find(name);
    Hx::ErrorStatus status = beginChange(this);
    if (status == Hx::eOk && present && present->object != object->imp()->stub) {
        status = eraseOwned(dictionary, *present->object);
    }
    if (status != Hx::eOk) {
        return status;
    }
    HxDbStub* added =
        object->imp()->stub ? object->imp()->stub : &addToDatabase(*stub->database, object, stub);
    if (added->owner != stub && beginChange(object) == Hx::eOk) {
        object->imp()->newOwner = added->owner = stub;  // made without an owner, it gets one now
    }
    id = HxDbObjectId(added);
    const int code = dictionary.isHardOwner() ? kHardOwnerCode : kSoftOwnerCode;
    if (present) {
        present->object = added;
    } else {
        dictionary.dropDead(name);
        dictionary.entries.push_back({name, code, added->handle, added});
    }
    return Hx::eOk;
}

Hx::ErrorStatus HxDbDictionary::remove(const wchar_t* name) {
    auto& dictionary = fields<DictionaryImp>(this);
    DictionaryImp::Entry* entry = name ? dictionary.find(name) : nullptr;
    if (!entry) {
        const bool isDead = name && dictionary.hasDead(name);
        const Hx::ErrorStatus status = isDead ? beginChange(this) : Hx::eKeyNotFound;
        if (status == Hx::eOk) {
            dictionary.dropDead(name);
        }
        return status;
    }
    Hx::ErrorStatus status = beginChange(this);
    if (status == Hx::eOk) {
        status = eraseOwned(dictionary, *entry->object);
    }
    if (status == Hx::eOk) {
        dictionary.entries.erase(dictionary.entries.begin() + (entry - dictionary.entries.data()));
    }
    return status;
}

Hx::ErrorStatus HxDbDictionary::setName(const wchar_t* oldName, const wchar_t* newName) {
    auto& dictionary = fields<DictionaryImp>(this);
    DictionaryImp::Entry* entry = oldName ? dictionary.find(oldName) : nullptr;
    if (!entry) {
        return Hx::eKeyNotFound;
    }
    if (!newName || !*newName) {
        return Hx::eInvalidInput;
    }
    const DictionaryImp::Entry* taken = dictionary.find(newName);
    if (taken && taken != entry) {
        return Hx::eDuplicateKey;
    }
    const Hx::ErrorStatus status = beginChange(this);
    if (status == Hx::eOk) {
        entry->name = newName;
    }
    return status;
}

HxDbDictionaryIterator* HxDbDictionary::newIterator() const { return new HxDbDictionaryIterator(objectId()); }

namespace {

const std::vector<DictionaryImp::Entry>& entriesOf(const HxDbObjectId& dictionary) {
    static const std::vector<DictionaryImp::Entry> none;
    return dictionary.isNull() ? none : fields<DictionaryImp>(hxdbObjectPointer(dictionary)).entries;
}

}  // namespace

void HxDbDictionaryIterator::skipErased() {
    const auto& entries = entriesOf(m_dictionary);
    while (m_at < entries.size() && !entries[m_at].isLive()) {
        ++m_at;
    }
    m_object = HxDbObjectId(m_at < entries.size() ? entries[m_at].object : nullptr);
}

/// Entries may have gone since the last step: the one that it stands at, and others before it.
std::size_t HxDbDictionaryIterator::placeNow() const {
    const auto& entries = entriesOf(m_dictionary);
    for (std::size_t back = 0; back <= m_at; ++back) {
        const std::size_t at = m_at - back;
        if (at < entries.size() && entries[at].object && entries[at].object == m_object.stub()) {
            return at;
        }
    }
    return kGone;
}

bool HxDbDictionaryIterator::done() const { return m_object.isNull(); }

bool HxDbDictionaryIterator::next() {
    if (!done()) {
        const std::size_t now = placeNow();
        m_at = now == kGone ? m_at : now + 1;
        skipErased();
    }
    return !done();
}

const wchar_t* HxDbDictionaryIterator::name() const {
    const std::size_t now = done() ? kGone : placeNow();
    return now == kGone ? L"" : entriesOf(m_dictionary)[now].name.c_str();
}

HxDbObjectId HxDbDictionaryIterator::objectId() const { return m_object; }

Hx::ErrorStatus HxDbDictionaryIterator::getObject(HxDbObject*& object, HxDb::OpenMode mode) const {
    object = nullptr;
    return done() ? Hx::eIteratorDone : hxdbOpenObject(object, objectId(), mode);
}

HxDbDictionaryWithDefault::HxDbDictionaryWithDefault() : HxDbDictionary(new DictionaryWithDefaultImp) {}

HxDbObjectId HxDbDictionaryWithDefault::defaultId() const {
    return HxDbObjectId(fields<DictionaryWithDefaultImp>(this).defaultEntry);
}

Hx::ErrorStatus HxDbDictionaryWithDefault::setDefaultId(HxDbObjectId id) {
    const Hx::ErrorStatus status = beginChange(this);
    if (status == Hx::eOk) {
        fields<DictionaryWithDefaultImp>(this).defaultEntry = id.stub();
    }
    return status;
}
