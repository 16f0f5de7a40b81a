// The bracket of a layer manager's changes, and its filters.
#include "layer_prop_manager.h"

#include "filter_selection.h"
#include "visible_palette.h"

#include "hxdoc.h"

#include <algorithm>

KvLayerPropManager::KvLayerPropManager(HxDbDatabase* database, bool paletteMode)
    : m_isPalette(paletteMode), m_database(database) {}

KvLayerPropManager::~KvLayerPropManager() {
    if (ownsTopTransaction()) curDoc()->transactionManager()->abortTransaction();
    ClearLayers();
}

void KvLayerPropManager::Initialize() {
    LoadSettings();
    HxApDocument* const document = curDoc();
    if (m_isPalette || m_transaction || !document) return;
    m_transaction = document->transactionManager()->startTransaction();
}

HxDbDatabase* KvLayerPropManager::GetDatabase() {
    m_database = curDocDatabase();
    return m_database;
}

bool KvLayerPropManager::ownsTopTransaction() const {
    HxApDocument* const document = curDoc();
    return m_transaction && document && document->transactionManager()->topTransaction() == m_transaction;
}

/// With it goes what it held open.
void KvLayerPropManager::forgetTransaction() {
    m_transaction = nullptr;
    m_layerTable = nullptr;
    m_viewport = nullptr;
}

Hx::ErrorStatus KvLayerPropManager::Commit(bool reopen) {
    if (!GetDatabase()) return Hx::eNoDatabase;
    if (!m_transaction) return Hx::eNoActiveTransactions;
    if (!ownsTopTransaction()) return Hx::eNotTopTransaction;
    kvUpdateLayerForLayerManager(m_layers, m_database);
    forgetDeletedFilters();
    const Hx::ErrorStatus stored =
        m_root ? m_database->layerFilterManager()->setFilters(m_root.get(), m_current) : Hx::eOk;
    m_database->transactionManager()->endTransaction();
    forgetTransaction();
    KvLayerPaletteMarks* const palette = visiblePalette();
    if (palette && !m_isPalette) palette->SetDirtyNeedRefreshFilter();
    if (reopen) {
        Initialize();
        ReloadFilters();
        ReloadLayers();
    }
    return stored;
}

void KvLayerPropManager::Cancel() {
    if (ownsTopTransaction()) {
        curDoc()->transactionManager()->abortTransaction();
        forgetTransaction();
    }
    if (!m_isPalette) ReloadFilters();
}

void KvLayerPropManager::ReloadFilters() {
    m_root.reset();
    m_current = nullptr;
    m_previous = nullptr;
    m_listed = GetDatabase();
    if (!m_listed || !m_database->layerFilterManager()) return;
    HxLyLayerFilter* root = nullptr;
    HxLyLayerFilter* current = nullptr;
    if (m_database->layerFilterManager()->getFilters(root, current) != Hx::eOk) return;
    m_root.reset(root);
    m_current = current ? current : root;
}

void KvLayerPropManager::SetCurrentFilter(HxLyLayerFilter* filter) {
    if (!filter || filter == m_current) return;
    m_previous = m_current;
    m_current = filter;
}

namespace {

bool isInTree(const HxLyLayerFilter* root, const HxLyLayerFilter* filter) {
    if (!root || root == filter) return root != nullptr;
    const HxArray<HxLyLayerFilter*>& nested = root->getNestedFilters();
    return std::any_of(nested.begin(), nested.end(),
                       [filter](const HxLyLayerFilter* child) { return isInTree(child, filter); });
}

HxLyLayerFilter* FindFilterWorker(const HxLyLayerFilter& parent, const wchar_t* name) {
    for (HxLyLayerFilter* const filter : parent.getNestedFilters()) {
        if (filter->name().CompareNoCase(name) == 0) return filter;
        if (HxLyLayerFilter* const nested = FindFilterWorker(*filter, name)) return nested;
    }
    return nullptr;
}

}  // namespace

/// Whoever deletes filters of the tree need not know which of them are remembered here.
void KvLayerPropManager::forgetDeletedFilters() {
    if (!isInTree(m_root.get(), m_current)) m_current = m_root.get();
    if (!isInTree(m_root.get(), m_previous)) m_previous = nullptr;
}

HxLyLayerFilter* KvLayerPropManager::FindFilter(const wchar_t* name) const {
    return m_root && name ? FindFilterWorker(*m_root, name) : nullptr;
}

CStdStr<wchar_t> KvLayerPropManager::GetNextFilterName(const wchar_t* prefix) const {
    CStdStr<wchar_t> name;
    int number = 0;
    do {
        name.Format(L"%ls%d", prefix ? prefix : L"", ++number);
    } while (FindFilter(name.c_str()));
    return name;
}

Hx::ErrorStatus KvLayerPropManager::SaveLayerFilters(bool modify) {
    if (!GetDatabase()) return Hx::eNoDatabase;
    forgetDeletedFilters();
    if (modify) return ModifyFilters(m_database, m_root.get(), m_current, m_previous);
    const Hx::ErrorStatus status = m_database->layerFilterManager()->setFilters(m_root.get(), m_current);
    m_previous = nullptr;
    return status;
}

Hx::ErrorStatus KvLayerPropManager::ModifyFilters(HxDbDatabase* database, HxLyLayerFilter* root,
                                                  HxLyLayerFilter* current, HxLyLayerFilter* previous) {
    if (!root || !current || !previous) return Hx::eInvalidInput;
    if (!database) return Hx::eNoDatabase;
    if (current == previous) return Hx::eOk;
    bool hasRecords = false;
    const Hx::ErrorStatus status = storeFilterSelection(*database, *current, *previous, hasRecords);
    if (status != Hx::eOk || hasRecords) return status;
    return database->layerFilterManager()->setFilters(root, current);
}
