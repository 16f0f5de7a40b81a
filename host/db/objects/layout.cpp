// Layouts, and which of them is current.
#include "host/db/groups/group_cursor.h"
#include "host/db/kernel/database_imp.h"
#include "host/db/kernel/entity_access.h"
#include "host/db/kernel/text_fold.h"
#include "host/db/objects/dictionary_imp.h"
#include "host/db/objects/layout_imp.h"
#include "host/db/tables/symbol_record_imp.h"
#include "sdk/hxdbdict.h"
#include "sdk/hxdbentity.h"

HX_DEFINE_MEMBERS(HxDbLayout, HxDbObject)

namespace korvex {

namespace {

constexpr int kNameCode = 1;
constexpr int kTabOrderCode = 71;
constexpr int kBlockCode = 330;
constexpr wchar_t kModelName[] = L"Model";

}  // namespace

void LayoutImp::clearFields() {
    name.clear();
    tabOrder = 0;
    block = nullptr;
}

void LayoutImp::readField(const ReadContext& context, const GroupCursor& group) {
    if (context.subclass != "AcDbLayout") {
        return;
    }
    switch (group.code()) {
    case kNameCode: name = group.asText(); break;
    case kTabOrderCode: tabOrder = group.asInteger(); break;
    case kBlockCode: block = context.database.imp()->handles.find(group.asHandle()); break;
    default: break;
    }
}

void LayoutImp::writeFields(FieldWriter& out) const {
    out.subclass("AcDbLayout");
    out.text(kNameCode, name);
    out.integer(kTabOrderCode, tabOrder);
    if (block) {
        out.handle(kBlockCode, block->handle);
    }
}

namespace {

HxDbLayout* layoutOf(HxDbStub* stub) {
    return stub && !stub->erased ? HxDbLayout::cast(materialise(*stub)) : nullptr;
}

HxDbLayout* layoutNamed(const HxDbDatabase& database, const std::wstring& name) {
    HxArray<HxDbObjectId> ids;
    hxdbLayoutManager()->layouts(&database, ids);
    for (const HxDbObjectId& id : ids) {
        HxDbLayout* layout = layoutOf(id.stub());
        if (layout && equalNames(fields<LayoutImp>(layout).name, name)) {
            return layout;
        }
    }
    return nullptr;
}

/// Gives a block record another name, under the journal.
Hx::ErrorStatus rename(HxDbObject& block, const std::wstring& name) {
    const Hx::ErrorStatus status = beginChange(&block);
    if (status == Hx::eOk) {
        auto& imp = fields<SymbolRecordImp>(&block);
        imp.name = name;
        imp.noteName(*block.database());
    }
    return status;
}

/// The active paper space is the one of the name "*Paper_Space": two blocks change names, or none does.
Hx::ErrorStatus activate(HxDbDatabase& database, HxDbStub& block) {
    HxDbStub* active = paperSpace(database);
    if (active == &block) {
        return Hx::eOk;
    }
    const Journal::Looking looking(database);
    const HxDbObjectPointer<HxDbObject> coming(HxDbObjectId(&block), HxDb::kForWrite);
    const HxDbObjectPointer<HxDbObject> going(HxDbObjectId(active), HxDb::kForWrite);
    if (!coming || (active && !going)) {
        return coming ? going.openStatus() : coming.openStatus();
    }
    const std::wstring own = recordName(block);
    const std::wstring paper = active ? recordName(*active) : L"*Paper_Space";
    Hx::ErrorStatus status = rename(*coming.object(), L"*Paper_Space|active");
    if (status == Hx::eOk && active) {
        status = rename(*going.object(), own);
    }
    return status == Hx::eOk ? rename(*coming.object(), paper) : status;
}

}  // namespace

}  // namespace korvex

using namespace korvex;

HxDbLayout::HxDbLayout() : HxDbObject(new LayoutImp) {}

CStdStr<wchar_t> HxDbLayout::getLayoutName() const { return fields<LayoutImp>(this).name; }
int HxDbLayout::getTabOrder() const { return static_cast<int>(fields<LayoutImp>(this).tabOrder); }
HxDbObjectId HxDbLayout::getBlockTableRecordId() const { return HxDbObjectId(fields<LayoutImp>(this).block); }

HxDbLayoutManager* hxdbLayoutManager() {
    static HxDbLayoutManager manager;
    return &manager;
}

void HxDbLayoutManager::layouts(const HxDbDatabase* database, HxArray<HxDbObjectId>& ids) const {
    ids.removeAll();
    const auto* dictionary =
        database ? HxDbDictionary::cast(hxdbObjectPointer(database->getLayoutDictionaryId())) : nullptr;
    if (!dictionary) {
        return;
    }
    std::vector<HxDbStub*> found;
    for (const DictionaryImp::Entry& entry : fields<DictionaryImp>(dictionary).entries) {
        if (layoutOf(entry.object)) {
            found.push_back(entry.object);
        }
    }
    const auto place = [](HxDbStub* stub) {
        const auto& layout = fields<LayoutImp>(layoutOf(stub));
        return std::make_pair(equalNames(layout.name, kModelName) ? 0 : 1, layout.tabOrder);
    };
    std::stable_sort(found.begin(), found.end(),
                     [&](HxDbStub* a, HxDbStub* b) { return place(a) < place(b); });
    for (HxDbStub* stub : found) {
        ids.append(HxDbObjectId(stub));
    }
}

HxDbObjectId HxDbLayoutManager::getActiveLayoutBTRId(const HxDbDatabase* database) const {
    if (!database) {
        return {};
    }
    return database->tilemode() ? database->modelSpaceId() : database->paperSpaceId();
}

CStdStr<wchar_t> HxDbLayoutManager::getActiveLayoutName() const {
    const HxDbDatabase* database = hxdbWorkingDatabase();
    if (!database) {
        return {};
    }
    if (database->tilemode()) {
        return kModelName;
    }
    HxArray<HxDbObjectId> ids;
    layouts(database, ids);
    for (const HxDbObjectId& id : ids) {
        const auto& layout = fields<LayoutImp>(layoutOf(id.stub()));
        if (layout.block && layout.block == database->paperSpaceId().stub()) {
            return layout.name;
        }
    }
    return L"Layout1";  // older drawings have one paper space without a name
}

Hx::ErrorStatus HxDbLayoutManager::setCurrentLayout(const wchar_t* name) {
    HxDbDatabase* database = hxdbWorkingDatabase();
    if (!database || !name) {
        return Hx::eNoDatabase;
    }
    if (equalNames(name, kModelName)) {
        return database->setTilemode(true);
    }
    const HxDbLayout* layout = layoutNamed(*database, name);
    if (!layout && !equalNames(name, getActiveLayoutName()) &&
        !(database->getLayoutDictionaryId().isNull() && equalNames(name, L"Layout1"))) {
        return Hx::eKeyNotFound;
    }
    HxDbStub* block = layout ? fields<LayoutImp>(layout).block : nullptr;
    if (block && (block->erased || !block->contents)) {
        return Hx::eKeyNotFound;
    }
    const Hx::ErrorStatus status = block ? activate(*database, *block) : Hx::eOk;
    if (status == Hx::eOk) {
        database->setCvport(1);
        return database->setTilemode(false);
    }
    return status;
}

Hx::ErrorStatus HxDbLayoutManager::setCurrentLayoutId(HxDbObjectId id) {
    const HxDbLayout* layout = layoutOf(id.stub());
    return layout ? setCurrentLayout(layout->getLayoutName().c_str()) : Hx::eKeyNotFound;
}
