// What a click on a cell of the edit dialog's list does.
#include "layer_states/edit/edit_layer_state_list.h"

#include "dialogs/lineweight_dialog.h"
#include "dialogs/plot_style_dialog.h"
#include "dialogs/transparency_dialog.h"
#include "frame/util/format_message.h"
#include "frame/util/resource_text.h"
#include "layer_states/edit/entry_cells.h"
#include "layer_states/edit/layer_state_infos.h"
#include "manager_ui/grid/layer_cells.h"
#include "model/record_of_name.h"

#include "hxdbdatabase.h"
#include "hxdbsymtb.h"
#include "hxstddlg.h"

#include <memory>

namespace {

CStdStr<wchar_t> linetypeName(HxDbObjectId id) {
    const OpenedOrHeld<HxDbLinetypeTableRecord> linetype(id, HxDb::kForRead);
    return linetype ? CStdStr<wchar_t>(linetype->name()) : CStdStr<wchar_t>();
}

}  // namespace

void CKvEditLayerStateListCtrl::OnClickSubItemLayerstateList(int column) {
    const CKvLayerStateInfo* const clicked = m_model->entryAt(currentIndex().row());
    if (!clicked || !isClickedColumn(column)) return;
    const ModuleResources resources;
    switch (column) {
    case kStateColColor: return pickColor(*clicked);
    case kStateColLinetype: return pickLinetype(*clicked);
    case kStateColLineweight: return pickLineweight(*clicked);
    case kStateColTransparency: return pickTransparency(*clicked);
    case kStateColPlotStyle: return pickPlotStyle(*clicked);
    default: return toggle(flagOfColumn(column), *clicked);
    }
}

/// Rows stay where they are until the next sort.
void CKvEditLayerStateListCtrl::change(const Change& change) {
    for (const int row : selectedRowNumbers()) {
        change(*m_model->entryAt(row));
    }
    m_model->entriesChanged();
    emit edited();
}

void CKvEditLayerStateListCtrl::tell(int text, const CStdStr<wchar_t>& layer) {
    const QString message = formatMessage(resourceText(text), {QString::fromStdWString(layer)});
    hxuiMessageBox(this, message.toStdWString().c_str(), nullptr, MB_OK | MB_ICONEXCLAMATION);
}

/// All get what the clicked one is not; the state's current layer stays thawed, which is told.
void CKvEditLayerStateListCtrl::toggle(int flag, const CKvLayerStateInfo& clicked) {
    const bool isWanted = (clicked.GetLayerFlag() & flag) == 0;
    const bool freezes = flag == HxLyState::kLayerFrozen && isWanted;
    const CKvLayerStateInfo* current = nullptr;
    change([&](CKvLayerStateInfo& entry) {
        if (freezes && entry.GetCurrentLayer() != 0) {
            current = &entry;
            return;
        }
        entry.SetLayerFlag(isWanted ? entry.GetLayerFlag() | flag : entry.GetLayerFlag() & ~flag);
    });
    if (current) tell(kStrCurrentNotFrozen, current->GetLayerName());
}

void CKvEditLayerStateListCtrl::SetCurrentLayer() {
    CKvLayerStateInfo* const wanted = m_model->entryAt(currentIndex().row());
    if (!wanted) return;
    const ModuleResources resources;
    if ((wanted->GetLayerFlag() & HxLyState::kLayerFrozen) != 0) {
        return tell(kStrFrozenNotCurrent, wanted->GetLayerName());
    }
    if (wanted->GetLayerName().find(L'|') != std::wstring::npos) {
        return tell(kStrXrefNotCurrent, wanted->GetLayerName());
    }
    for (CKvLayerStateInfo* const entry : *m_entries) {
        entry->SetCurrentLayer(entry == wanted ? 1 : 0);
    }
    m_model->entriesChanged();
    emit edited();
}

// ---- pickers ----

void CKvEditLayerStateListCtrl::pickColor(const CKvLayerStateInfo& clicked) {
    HxCmColor color = GetKvColorFromLayerState(clicked);
    const HxCmColor before = color;
    if (!hxedSetColorDialogTrueColor(color, false, before, this)) return;
    change([&](CKvLayerStateInfo& entry) { UpdateKvColorToLayerState(entry, color); });
}

/// One that the drawing lacks is marked by none.
void CKvEditLayerStateListCtrl::pickLinetype(const CKvLayerStateInfo& clicked) {
    if (!m_database) return;
    HxDbObjectId linetype = linetypeOfName(*m_database, clicked.GetLineType());
    if (!hxuiSelectLinetype(m_database, linetype, false, this)) return;
    const CStdStr<wchar_t> name = linetypeName(linetype);
    if (name.empty()) return;
    change([&](CKvLayerStateInfo& entry) { entry.SetLineType(name); });
}

void CKvEditLayerStateListCtrl::pickLineweight(const CKvLayerStateInfo& clicked) {
    CWnd parent(this);
    CVrexLWListDia dialog(clicked.GetLineWeight(), &parent);
    if (dialog.DoModal() != IDOK) return;
    change([&](CKvLayerStateInfo& entry) { entry.SetLineWeight(dialog.lineweight()); });
}

void CKvEditLayerStateListCtrl::pickTransparency(const CKvLayerStateInfo& clicked) {
    CWnd parent(this);
    CLayerTransDlg dialog(percentOf(clicked), &parent);
    if (dialog.DoModal() != IDOK) return;
    const int alpha = alphaOfPercent(dialog.percent());
    change([&](CKvLayerStateInfo& entry) { entry.SetTransparency(alpha); });
}

/// One that the drawing lacks is offered, too.
void CKvEditLayerStateListCtrl::pickPlotStyle(const CKvLayerStateInfo& clicked) {
    wchar_t* chosen = nullptr;
    if (!kvPlotstyleDialog(clicked.GetPlotStyle().c_str(), true, chosen)) return;
    const std::unique_ptr<wchar_t[]> owner(chosen);
    change([&](CKvLayerStateInfo& entry) { entry.SetPlotStyle(chosen); });
}
