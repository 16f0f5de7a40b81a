// Table records: name, flags, rules of naming.
#include "host/db/tables/symbol_record_imp.h"

#include "host/db/kernel/database_imp.h"
#include "host/db/kernel/entity_access.h"
#include "host/db/tables/dependent_names.h"
#include "host/db/tables/record_names.h"
#include "sdk/hxdbsymtb.h"

#include <optional>

HX_DEFINE_MEMBERS(HxDbSymbolTableRecord, HxDbObject)
HX_DEFINE_MEMBERS(HxDbOtherTableRecord, HxDbSymbolTableRecord)

namespace korvex {

void SymbolRecordImp::clearFields() {
    name.clear();
    m_nameRead = false;
    flags = 0;
}

void SymbolRecordImp::readField(const ReadContext&, const GroupCursor& group) {
    if (group.code() == kNameCode && !m_nameRead) {
        name = group.asText();
        m_nameRead = true;
    } else if (group.code() == kFlagsCode) {
        flags = group.asInteger();
    }
}

void SymbolRecordImp::beginFields(FieldWriter& out) const {
    out.subclass("AcDbSymbolTableRecord");
    out.subclass(m_marker);
    out.text(kNameCode, name);
}

void SymbolRecordImp::writeFields(FieldWriter& out) const {
    beginFields(out);
    out.integer(kFlagsCode, flags);
}

bool SymbolRecordImp::isDependent() const {
    return (flags & kDependentFlag) != 0 || name.find(L'|') != std::wstring::npos;
}

Hx::ErrorStatus SymbolRecordImp::mayRename() const { return isDependent() ? Hx::eRefused : Hx::eOk; }

Hx::ErrorStatus SymbolRecordImp::mayUnerase() const {
    return findRecord(*stub->database, m_table, name) ? Hx::eDuplicateRecordName : Hx::eOk;
}

namespace {

/// Names alone do not tell any more which record they are of.
void forgetLayers(HxDbDatabase& database) {
    database.imp()->names.setAmbiguous();
    for (HxDbStub& stub : database.imp()->stubs) {
        stub.layer = nullptr;
    }
}

}  // namespace

void SymbolRecordImp::noteName(HxDbDatabase& database) {
    if (name == m_loggedName) {
        return;
    }
    if (!m_loggedName.empty() && database.imp()->names.isHeld()) {
        database.imp()->names.wait(*stub);
        return;
    }
    if (!m_loggedName.empty()) {
        if (hasErasedNamesake(*stub, m_loggedName) || hasErasedNamesake(*stub, name)) {
            forgetLayers(database);
        }
        database.imp()->names.add(m_table, *stub, m_loggedName, name);
    }
    const bool isKnown = !m_loggedName.empty() || stub->blob.empty();
    m_loggedName = name;
    if (isKnown) {
        indexName(*stub);
    }
}

}  // namespace korvex

using namespace korvex;

Hx::ErrorStatus HxDbSymbolTableRecord::getName(CStdStr<wchar_t>& text) const {
    text = fields<SymbolRecordImp>(this).name;
    return Hx::eOk;
}

const wchar_t* HxDbSymbolTableRecord::name() const { return fields<SymbolRecordImp>(this).name.c_str(); }

Hx::ErrorStatus HxDbSymbolTableRecord::setName(const wchar_t* text) {
    auto& imp = fields<SymbolRecordImp>(this);
    if (!text || !isValidSymbolName(text)) {
        return Hx::eInvalidInput;
    }
    if (imp.name == text) {
        return Hx::eOk;
    }
    Hx::ErrorStatus status = imp.stub ? imp.mayRename() : Hx::eOk;
    if (status != Hx::eOk) {
        return status;
    }
    const HxDbStub* taken = imp.stub ? findRecord(*imp.stub->database, imp.table(), text) : nullptr;
    if (taken && taken != imp.stub) {
        return Hx::eDuplicateRecordName;
    }
    std::optional<DependentNames> dependents;
    if (imp.stub) {
        dependents.emplace(*imp.stub, text);
        status = dependents->status();
    }
    if (status == Hx::eOk) {
        status = beginChange(this);
    }
    if (status == Hx::eOk) {
        imp.name = text;
        if (imp.stub) {
            imp.noteName(*imp.stub->database);
            dependents->rename();
        }
    }
    return status;
}

bool HxDbSymbolTableRecord::isDependent() const { return fields<SymbolRecordImp>(this).isDependent(); }

bool HxDbSymbolTableRecord::isResolved() const {
    const auto& imp = fields<SymbolRecordImp>(this);
    const std::size_t bar = imp.name.find(L'|');
    if (!imp.stub || bar == std::wstring::npos) {
        return false;
    }
    const HxDbStub* block = findRecord(*imp.stub->database, TableKind::block, imp.name.substr(0, bar));
    return block && xrefDatabase(*block);
}

namespace {

struct Marker {
    std::string_view type;
    const char* marker;
};
constexpr Marker kMarkers[] = {
    {"STYLE", "AcDbTextStyleTableRecord"}, {"DIMSTYLE", "AcDbDimStyleTableRecord"},
    {"APPID", "AcDbRegAppTableRecord"},    {"VPORT", "AcDbViewportTableRecord"},
    {"VIEW", "AcDbViewTableRecord"},       {"UCS", "AcDbUCSTableRecord"},
};

const char* markerOf(std::string_view type) {
    for (const Marker& entry : kMarkers) {
        if (entry.type == type) {
            return entry.marker;
        }
    }
    return "AcDbSymbolTableRecord";
}

std::string narrowed(const wchar_t* name) {
    const std::wstring wide(name);
    return {wide.begin(), wide.end()};
}

}  // namespace

HxDbOtherTableRecord::HxDbOtherTableRecord(const wchar_t* type)
    : HxDbSymbolTableRecord(new SymbolRecordImp(narrowed(type), markerOf(narrowed(type)))) {}
