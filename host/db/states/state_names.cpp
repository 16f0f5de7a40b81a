// Finds what handles in a layer state's record stand for.
#include "host/db/states/state_names.h"

#include "host/db/kernel/database_imp.h"
#include "host/db/objects/dictionary_access.h"
#include "host/db/objects/dictionary_imp.h"
#include "host/db/tables/symbol_record_imp.h"
#include "sdk/hxdbdict.h"
#include "sdk/hxdbsymtb.h"

namespace korvex {

namespace {

/// The name of a table's record; null when the stub is null or of none.
const std::wstring* nameInTable(const HxDbDatabase& database, TableKind table, HxDbStub* stub) {
    if (!stub || !stub->owner || stub->owner != database.imp()->table(table)) {
        return nullptr;
    }
    const auto* record = HxDbSymbolTableRecord::cast(materialise(*stub));
    return record ? &fields<SymbolRecordImp>(record).name : nullptr;
}

std::wstring defaultPlotStyle(HxDbStub& styles) {
    const auto* dictionary = HxDbDictionaryWithDefault::cast(materialise(styles));
    const HxDbStub* style = dictionary ? dictionary->defaultId().stub() : nullptr;
    std::wstring name;
    return style && entryName(styles, *style, name) ? name : L"Normal";
}

}  // namespace

/// States name layers in the table's order more often than not.
HxDbStub* StateNames::findLayer(std::uint64_t handle) const {
    const HxDbStub* table = m_database.imp()->table(TableKind::layer);
    const bool hasNext = table && table->contents && m_nextLayer < table->contents->members.size();
    HxDbStub* next = hasNext ? table->contents->members[m_nextLayer] : nullptr;
    return next && next->handle == handle ? next : m_database.imp()->handles.find(handle);
}

const std::wstring* StateNames::layer(std::uint64_t handle) {
    HxDbStub* stub = findLayer(handle);
    const std::wstring* name = nameInTable(m_database, TableKind::layer, stub);
    m_nextLayer = name ? stub->position + 1 : m_nextLayer;
    return name;
}

template <class Find>
const std::wstring& StateNames::lookUp(Known& known, std::uint64_t handle, Find find) {
    if (!known.last || known.lastHandle != handle) {
        const auto [entry, isNew] = known.names.try_emplace(handle);
        if (isNew) {
            entry->second = find();
        }
        known.lastHandle = handle;
        known.last = &entry->second;
    }
    return *known.last;
}

const std::wstring& StateNames::linetype(std::uint64_t handle) {
    return lookUp(m_linetypes, handle, [&] {
        const std::wstring* name =
            nameInTable(m_database, TableKind::linetype, m_database.imp()->handles.find(handle));
        return name ? *name : std::wstring();
    });
}

const std::wstring& StateNames::plotStyle(std::uint64_t handle) {
    return lookUp(m_plotStyles, handle, [&]() -> std::wstring {
        HxDbStub* styles = m_database.getPlotStyleNameDictionaryId().stub();
        const HxDbStub* style = m_database.imp()->handles.find(handle);
        std::wstring name;
        if (!styles) {
            return L"Normal";
        }
        return style && entryName(*styles, *style, name) ? name : defaultPlotStyle(*styles);
    });
}

}  // namespace korvex
