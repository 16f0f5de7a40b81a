// The database as the SDK shows it: tables, current layer, space, handles, reactors.
#include "sdk/hxdbdatabase.h"

#include "host/db/kernel/database_imp.h"
#include "host/db/kernel/entity_access.h"
#include "host/db/kernel/reactor_list.h"
#include "host/db/objects/dictionary_access.h"
#include "sdk/hxdbdict.h"
#include "sdk/hxdbentity.h"

HX_DEFINE_MEMBERS(HxDbDatabaseReactor, HxRxObject)
HX_DEFINE_MEMBERS(HxDbDatabase, HxRxObject)

using namespace korvex;

namespace {

HxDbDatabase* g_working = nullptr;

}  // namespace

HxDbDatabase::Imp::Imp(HxDbDatabase& database)
    : self(database), journal(database), transactions(&database), filters(&database), layerStates(&database) {
}

HxDbDatabase::Imp::~Imp() {
    for (HxDbStub& stub : stubs) {
        delete stub.object;
    }
}

HxDbStub& HxDbDatabase::Imp::newStub() {
    stubs.emplace_back();
    stubs.back().database = &self;
    return stubs.back();
}

VersionTraits HxDbDatabase::Imp::traits() const {
    VersionTraits traits;
    const bool isNumbered = version.find('.') == std::string::npos;  // the oldest are "AC1.50", "AC2.10" ...
    traits.hasSubclassMarkers = isNumbered && version >= "AC1012";
    traits.hasLineWeights = isNumbered && version >= "AC1015";
    traits.hasTrueColors = isNumbered && version >= "AC1018";
    return traits;
}

HxDbDatabase::~HxDbDatabase() {
    while (m_imp->transactions.numActiveTransactions() > 0) {
        m_imp->transactions.endTransaction();
    }
    notifyAll(m_imp->reactors, [this](HxDbDatabaseReactor& r) { r.goodbye(this); });
    for (HxDbStub& stub : m_imp->stubs) {
        if (stub.object) {
            notifyAll(stub.object->imp()->reactors, [&](HxDbObjectReactor& r) { r.goodbye(stub.object); });
        }
    }
    if (g_working == this) {
        g_working = nullptr;
    }
    delete m_imp;
}

const wchar_t* HxDbDatabase::getFilename() const { return m_imp->path.c_str(); }
const wchar_t* HxDbDatabase::version() const { return m_imp->wideVersion.c_str(); }
const wchar_t* HxDbDatabase::readError() const { return m_imp->error.c_str(); }
bool HxDbDatabase::isModified() const { return m_imp->modified; }

HxDbObjectId HxDbDatabase::layerTableId() const { return HxDbObjectId(m_imp->table(TableKind::layer)); }
HxDbObjectId HxDbDatabase::linetypeTableId() const { return HxDbObjectId(m_imp->table(TableKind::linetype)); }
HxDbObjectId HxDbDatabase::blockTableId() const { return HxDbObjectId(m_imp->table(TableKind::block)); }
HxDbObjectId HxDbDatabase::regAppTableId() const { return HxDbObjectId(m_imp->table(TableKind::appId)); }
HxDbObjectId HxDbDatabase::textStyleTableId() const { return HxDbObjectId(m_imp->table(TableKind::style)); }
HxDbObjectId HxDbDatabase::dimStyleTableId() const { return HxDbObjectId(m_imp->table(TableKind::dimStyle)); }
HxDbObjectId HxDbDatabase::viewportTableId() const { return HxDbObjectId(m_imp->table(TableKind::viewport)); }
HxDbObjectId HxDbDatabase::viewTableId() const { return HxDbObjectId(m_imp->table(TableKind::view)); }
HxDbObjectId HxDbDatabase::UCSTableId() const { return HxDbObjectId(m_imp->table(TableKind::ucs)); }
HxDbObjectId HxDbDatabase::namedObjectsDictionaryId() const { return HxDbObjectId(m_imp->namedObjects); }

Hx::ErrorStatus HxDbDatabase::getLayerTable(HxDbLayerTable*& table, HxDb::OpenMode mode) {
    return hxdbOpenObject(table, layerTableId(), mode);
}
Hx::ErrorStatus HxDbDatabase::getBlockTable(HxDbBlockTable*& table, HxDb::OpenMode mode) {
    return hxdbOpenObject(table, blockTableId(), mode);
}

HxDbObjectId HxDbDatabase::layerZero() const {
    return HxDbObjectId(findRecord(*this, TableKind::layer, L"0"));
}
HxDbObjectId HxDbDatabase::continuousLinetype() const {
    return HxDbObjectId(findRecord(*this, TableKind::linetype, L"Continuous"));
}
HxDbObjectId HxDbDatabase::modelSpaceId() const { return HxDbObjectId(modelSpace(*this)); }
HxDbObjectId HxDbDatabase::paperSpaceId() const { return HxDbObjectId(paperSpace(*this)); }

HxDbObjectId HxDbDatabase::getLayoutDictionaryId() const {
    return HxDbObjectId(dictionaryEntry(m_imp->namedObjects, L"ACAD_LAYOUT"));
}
HxDbObjectId HxDbDatabase::getPlotStyleNameDictionaryId() const {
    return HxDbObjectId(dictionaryEntry(m_imp->namedObjects, L"ACAD_PLOTSTYLENAME"));
}

Hx::ErrorStatus HxDbDatabase::getPlotStyleNameDictionary(HxDbDictionaryWithDefault*& dictionary,
                                                         HxDb::OpenMode mode) {
    return hxdbOpenObject(dictionary, getPlotStyleNameDictionaryId(), mode);
}

HxDbObjectId HxDbDatabase::clayer() const {
    HxDbStub*& current = m_imp->currentLayer;
    if (!current || current->erased) {
        current = findRecord(*this, TableKind::layer, headerText(*this, L"$CLAYER", L"0"));
        if (!current) {
            current = findRecord(*this, TableKind::layer, L"0");
        }
    }
    return HxDbObjectId(current);
}

Hx::ErrorStatus HxDbDatabase::setClayer(HxDbObjectId layer) {
    if (layer.isNull()) {
        return Hx::eNullObjectId;
    }
    if (layer.isErased()) {
        return Hx::eWasErased;
    }
    const auto* record =
        layer.database() == this ? HxDbLayerTableRecord::cast(hxdbObjectPointer(layer)) : nullptr;
    if (!record) {
        return Hx::eWrongClass;
    }
    if (record->isDependent() || record->isFrozen()) {
        return Hx::eRefused;
    }
    HeaderGroup group;
    group.code = 8;
    group.text = record->name();
    setHeaderValue(*this, L"$CLAYER", {group});
    return Hx::eOk;
}

bool HxDbDatabase::tilemode() const { return headerInteger(*this, L"$TILEMODE", 1) != 0; }

Hx::ErrorStatus HxDbDatabase::setTilemode(bool toModelSpace) {
    if (!toModelSpace && !paperSpace(*this)) {
        return Hx::eNotApplicable;
    }
    HeaderGroup group;
    group.code = 70;
    group.integer = toModelSpace ? 1 : 0;
    const Journal::Looking looking(*this);
    setHeaderValue(*this, L"$TILEMODE", {group});
    return Hx::eOk;
}

std::int16_t HxDbDatabase::cvport() const { return m_imp->cvport; }

Hx::ErrorStatus HxDbDatabase::setCvport(std::int16_t number) {
    if (number < 1) {
        return Hx::eInvalidInput;
    }
    m_imp->cvport = number;
    ++m_imp->changes;
    return Hx::eOk;
}

bool HxDbDatabase::plotStyleMode() const { return headerInteger(*this, L"$PSTYLEMODE", 1) != 0; }

Hx::ErrorStatus HxDbDatabase::getHxDbObjectId(HxDbObjectId& id, bool, const HxDbHandle& handle) const {
    id = HxDbObjectId(m_imp->handles.find(handle.value()));
    return id.isNull() ? Hx::eUnknownHandle : Hx::eOk;
}

HxDbTransactionManager* HxDbDatabase::transactionManager() const { return &m_imp->transactions; }
HxLyLayerFilterManager* HxDbDatabase::layerFilterManager() const { return &m_imp->filters; }
HxDbLayerStateManager* HxDbDatabase::getLayerStateManager() const { return &m_imp->layerStates; }

void HxDbDatabase::addReactor(HxDbDatabaseReactor* reactor) const { addOnce(m_imp->reactors, reactor); }
void HxDbDatabase::removeReactor(HxDbDatabaseReactor* reactor) const { removeFrom(m_imp->reactors, reactor); }

bool HxDbDatabase::hasReactor(const HxDbDatabaseReactor* reactor) const {
    return std::find(m_imp->reactors.begin(), m_imp->reactors.end(), reactor) != m_imp->reactors.end();
}
HxDbDatabase* hxdbWorkingDatabase() { return g_working; }
void hxdbSetWorkingDatabase(HxDbDatabase* database) { g_working = database; }
