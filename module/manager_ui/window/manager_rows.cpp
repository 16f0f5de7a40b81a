// Which layers the manager shows: the current filter, the search, their inversion; and the lines that tell.
#include "frame/util/format_message.h"
#include "layer_prop_manager_dlg.h"
#include "search_edit.h"

#include "frame/util/resource_text.h"
#include "manager_ui/filters/filter_tree_ctrl.h"
#include "manager_ui/grid/layer_list_ctrl.h"
#include "manager_ui/grid/layer_list_model.h"
#include "model/auto_layer_record.h"
#include "model/layer_data.h"
#include "model/layer_prop_manager.h"

#include "hxlyfilter.h"

#include <QCheckBox>
#include <QLabel>
#include <QToolButton>

#include <unordered_set>

namespace {

/// So many rows come or go one by one; beyond, all are laid out anew.
constexpr std::size_t kMostSingleRows = 16;

}  // namespace

// ---- search and inversion ----

void KvLayerPropManagerDlg::OnBnClickedCheckInvertfilter(bool /*checked*/) { UpdateLayerList(true); }

void KvLayerPropManagerDlg::OnEnChangeEditSearch(const QString& text) {
    if (text == m_search) return;
    setSearch(text);
    UpdateLayerList(true);
}

/// A filter of its own, which the drawing never gets. An expression that cannot be understood finds nothing.
void KvLayerPropManagerDlg::setSearch(const QString& text) {
    const ModuleResources resources;
    m_search = text;
    m_found.reset();
    if (text.isEmpty()) return;
    m_found = std::make_unique<HxLyLayerFilter>();
    m_found->setName(m_manager->GetNextFilterName(ResourceString(kStrNewFilterName).c_str()).c_str());
    m_found->setFilterExpression((L"NAME==\"" + text.toStdWString() + L"\"").c_str());
}

/// Inverted: all layers but those that the filter and the search leave.
HxArray<KvLayerData*> KvLayerPropManagerDlg::shownLayers() {
    const HxLyLayerFilter* const filter = m_manager->GetCurrentFilter();
    const bool inverted = m_controls.invert->isChecked();
    if (!m_found) return m_manager->GetFilteredLayers(filter, inverted ? 1 : 0);
    const HxArray<KvLayerData*> found =
        m_manager->GetFilteredLayers(m_manager->GetFilteredLayers(filter, 0), m_found.get(), 0);
    if (!inverted) return found;
    const std::unordered_set<const KvLayerData*> isFound(found.begin(), found.end());
    HxArray<KvLayerData*> others;
    for (KvLayerData* const data : m_manager->GetAllLayersRef()) {
        const bool exists = data->isValid() && !data->layerId().isErased();
        if (exists && isFound.find(data) == isFound.end()) others.append(data);
    }
    return others;
}

/// The same for one layer.
bool KvLayerPropManagerDlg::isShown(HxDbObjectId layer) const {
    KvLayerData* const data = m_manager->FindLayer(layer);
    if (!data || !data->isValid() || layer.isErased()) return false;
    const KvAutoLayerRecordPtr record(m_list->transactions(), data, true);
    const HxLyLayerFilter* const filter = m_manager->GetCurrentFilter();
    if (!record.object()) return false;
    const bool accepted =
        (!filter || filter->filter(record.object())) && (!m_found || m_found->filter(record.object()));
    return accepted != m_controls.invert->isChecked();
}

// ---- rows ----

void KvLayerPropManagerDlg::UpdateLayerList(bool keepSelection) {
    const ModuleResources resources;
    m_made.clear();
    m_list->ShowLayers(shownLayers(), keepSelection);
    rememberFilter();
    updateInfo();
}

void KvLayerPropManagerDlg::refreshRows() {
    m_list->refreshRows();
    updateInfo();
}

void KvLayerPropManagerDlg::updateUsage() {
    if (!m_manager->GetDatabase()) return;
    m_manager->procLayerUsageData();
    m_list->refreshRows();
}

void KvLayerPropManagerDlg::updateInfo() {
    UpdateCurrentLayerInfoField();
    UpdateTotalLayersInfoField(CStdStr<wchar_t>());
    UpdateTBlayerState();
}

/// The filter may accept others than before; rows that stay keep their places, and so do layers made here.
void KvLayerPropManagerDlg::showSameFilter() {
    HxArray<KvLayerData*> layers = shownLayers();
    const std::unordered_set<const KvLayerData*> isShown(layers.begin(), layers.end());
    for (const HxDbObjectId made : m_made) {
        KvLayerData* const data = made.isErased() ? nullptr : m_manager->FindLayer(made);
        if (data && isShown.find(data) == isShown.end()) layers.append(data);
    }
    m_list->updateRows(layers);
    updateInfo();
}

void KvLayerPropManagerDlg::UpdateLayerList(const HxArray<HxDbObjectId>& layers) {
    const ModuleResources resources;
    std::vector<HxDbObjectId> changed;
    std::vector<KvLayerData*> gone;
    std::vector<KvLayerData*> come;
    for (const HxDbObjectId layer : layers) {
        const auto* const record = HxDbLayerTableRecord::cast(hxdbObjectPointer(layer));
        const bool isNew = record && !layer.isErased() && m_manager->AddToLayers(record);
        KvLayerData* const data = m_manager->FindLayer(layer);
        if (!data) continue;
        if (layer.isErased() || !data->isValid()) {
            m_erased.insert(layer);
            gone.push_back(data);
        } else if (m_list->FindLayerData(data) >= 0) {
            changed.push_back(layer);
        } else if ((m_erased.erase(layer) > 0 || isNew) && isShown(layer)) {
            come.push_back(data);
        }
    }
    m_list->refreshLayers(changed);
    showEntries(gone, come);
    updateInfo();
}

void KvLayerPropManagerDlg::showEntries(const std::vector<KvLayerData*>& gone,
                                        const std::vector<KvLayerData*>& come) {
    if (gone.size() + come.size() > kMostSingleRows) {
        const std::unordered_set<const KvLayerData*> isGone(gone.begin(), gone.end());
        HxArray<KvLayerData*> all;
        for (KvLayerData* const layer : m_list->rows().layers()) {
            if (isGone.find(layer) == isGone.end()) all.append(layer);
        }
        for (KvLayerData* const layer : come) {
            all.append(layer);
        }
        m_list->updateRows(all);
        return;
    }
    for (KvLayerData* const layer : gone) {
        m_list->RemoveLayerData(layer);
    }
    for (KvLayerData* const layer : come) {
        m_list->placeRow(layer);
    }
}

void KvLayerPropManagerDlg::showLayer(HxDbObjectId layer) {
    const KvLayerData* const data = m_manager->FindLayer(layer);
    if (!data || !data->isValid() || layer.isErased()) return;
    const auto isListed = [&] { return m_list->FindLayerData(data) >= 0; };
    if (!isListed()) m_controls.search->clear();
    if (!isListed()) m_controls.invert->setChecked(false);
    HxLyLayerFilter* const root = m_manager->GetRootFilter();
    if (!isListed() && root) showFilter(*root);
    m_list->SelectLayer(layer);
}

// ---- information lines ----

void KvLayerPropManagerDlg::UpdateTotalLayersInfoField(const CStdStr<wchar_t>& filterName) {
    const ModuleResources resources;
    if (!GetDatabase()) {
        m_controls.statistics->clear();
        return;
    }
    const HxLyLayerFilter* const filter = m_manager->GetCurrentFilter();
    QString name = QString::fromStdWString(filterName);
    if (name.isEmpty() && filter) name = CKvUiTreeCtrl::displayName(*filter);
    const int shown = m_list->rows().rowCount();
    const bool showsAll =
        filter && filter->kind() == HxLyLayerFilter::kAll && !m_found && !m_controls.invert->isChecked();
    const int all = showsAll ? shown : m_manager->validLayerCount();
    m_controls.statistics->setText(
        formatMessage(resourceText(kStrStatistics), {name, QString::number(shown), QString::number(all)}));
}

void KvLayerPropManagerDlg::UpdateCurrentLayerInfoField() {
    const ModuleResources resources;
    if (!GetDatabase()) {
        m_controls.currentLayer->setText(resourceText(kStrNoDrawing));
        return;
    }
    const HxDbObjectPointer<HxDbLayerTableRecord> layer(GetDatabase()->clayer(), HxDb::kForRead);
    m_controls.currentLayer->setText(formatMessage(
        resourceText(kStrCurrentLayerLine), {layer ? QString::fromWCharArray(layer->name()) : QString()}));
}

void KvLayerPropManagerDlg::UpdateTBlayerState() {
    const bool hasRows = m_list->rows().rowCount() > 0;
    m_controls.buttons[kButtonDelete]->setEnabled(hasRows);
    m_controls.buttons[kButtonSetCurrent]->setEnabled(hasRows);
    for (const KvManagerButton button :
         {kButtonNew, kButtonNewPropertyFilter, kButtonNewGroupFilter, kButtonLayerStates}) {
        m_controls.buttons[button]->setEnabled(GetDatabase());
    }
}
