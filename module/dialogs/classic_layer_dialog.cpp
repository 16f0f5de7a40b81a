#include "classic_layer_dialog.h"

#include "classic_layer_functions.h"
#include "frame/module_state.h"
#include "frame/util/format_message.h"
#include "frame/util/resource_text.h"
#include "frame/util/result_buffers.h"
#include "frame/util/system_variable.h"
#include "layer_states/restore/restore_summary.h"
#include "model/palette_doc_reactor.h"

#include "hxdbentity.h"
#include "hxed.h"
#include "hxtext.h"

#include <algorithm>
#include <numeric>

namespace {

constexpr int kName = 2;
constexpr int kLinetype = 6;
constexpr int kColor = 62;
constexpr int kFlags = 70;
constexpr int kPlot = 290;
constexpr int kLineweight = 370;
constexpr int kFirstMarker = 100;
constexpr int kReferenced = 64;
constexpr wchar_t kReferenceMark = L'|';

int intOf(const resbuf* list, int code, int fallback) {
    int value = fallback;
    GetBufInt(list, code, value);
    return value;
}

CStdStr<wchar_t> textOf(const resbuf* list, int code) {
    wchar_t buffer[kNameBufferSize] = {};
    GetBufString(list, code, buffer, kNameBufferSize);
    return buffer;
}

/// What a layer's own groups are: those behind the first marker.
const resbuf* ownGroups(const resbuf* list) {
    while (list && list->restype != kFirstMarker) {
        list = list->rbnext;
    }
    return list;
}

bool isText(int code) { return code < 10 || code == 100 || code == 430; }

bool isSameNode(const resbuf& a, const resbuf& b) {
    if (a.restype != b.restype) return false;
    if (isText(a.restype)) return hxutEqualNames(a.resval.rstring, b.resval.rstring);
    if (a.restype >= 320 && a.restype < 400 && a.restype != kLineweight) {
        return a.resval.rlname[0] == b.resval.rlname[0] && a.resval.rlname[1] == b.resval.rlname[1];
    }
    return intOf(&a, a.restype, 0) == intOf(&b, b.restype, 0);
}

bool isSameLayer(const resbuf* a, const resbuf* b) {
    for (a = ownGroups(a), b = ownGroups(b); a && b; a = a->rbnext, b = b->rbnext) {
        if (!isSameNode(*a, *b)) return false;
    }
    return !a && !b;
}

bool isInView(const CStdStr<wchar_t>& name, const CStdStr<wchar_t>& part) {
    const CStdStr<wchar_t> folded = hxutFoldName(part.c_str());
    return part.empty() || hxutFoldName(name.c_str()).find(folded) != CStdStr<wchar_t>::npos;
}

}  // namespace

CVrexLayerP::CVrexLayerP(CWnd* parent) : CWnd(parent ? parent->window() : nullptr) {}

CVrexLayerP::~CVrexLayerP() = default;

void CVrexLayerP::InitLayerStateInfo() {
    m_layerStates.ClearLayerResbufMap();
    m_layerStates.RemoveAllVplayerInofMap();
    m_layerStates.FillLayerResbuf();
}

// ---- layer states ----

namespace {

/// Drawings of earlier versions have no dictionaries.
constexpr wchar_t kFirstWithStates[] = L"AC1012";

QString listed(const HxArray<CStdStr<wchar_t>>& names) {
    QStringList all;
    for (const CStdStr<wchar_t>& name : names) {
        all << QString::fromStdWString(name);
    }
    return listedNames(all);
}

}  // namespace

/// False in drawings that have no place for states.
bool CVrexLayerP::prepareStates() {
    m_layerStates.SetIsModelSpace(shortVariable(L"TILEMODE", 1) == 1 ? 1 : 0);
    InitLayerStateInfo();
    m_layerStates.SetCurrentLayerName(textVariable(L"CLAYER", L""));
    const HxDbDatabase* const database = m_layerStates.database();
    return database && std::wstring_view(database->version()) >= kFirstWithStates;
}

void CVrexLayerP::OnButtonSavestate() {
    if (!prepareStates()) {
        MessageBox(ResourceString(kStrStateHasNoPlace).c_str(), nullptr, MB_OK | MB_ICONEXCLAMATION);
        return;
    }
    m_layerStates.LoadHxLayerState(m_layerStates.database());
    m_layerStates.LoadXrefLayerState(m_layerStates.database());
    if (m_layerStates.CmdNew(nullptr, nullptr, window())) writeStates();
}

void CVrexLayerP::OnButtonStateman() {
    if (!prepareStates()) {
        MessageBox(ResourceString(kStrStatesHaveNoPlace).c_str(), nullptr, MB_OK | MB_ICONEXCLAMATION);
    }
    KvLayerPaletteDocReactor* const documents = paletteDocReactor();
    HxApDocument* const document = curDoc();
    if (documents) m_layerStates.setRestoredName(documents->restoredState(document));
    m_layerStates.DoModal(window());
    if (documents) documents->setRestoredState(document, m_layerStates.restoredName());
    const QString summary = restoreSummary(m_layerStates.restored());
    if (!summary.isEmpty()) hxutPrintf(L"\n%ls\n", summary.toStdWString().c_str());
    UpdateLayerStateToLayerList();
    writeStates();
}

void CVrexLayerP::writeStates() {
    if (m_layerStates.BuildLayerStateExtensionDictionary() != 0) return;
    const HxArray<CStdStr<wchar_t>>& failed = m_layerStates.written().failed;
    if (failed.isEmpty()) return;  // there is no place for them, which the user has been told
    const QString text = formatMessage(resourceText(kStrStatesNotWritten), {listed(failed)});
    MessageBox(text.toStdWString().c_str(), nullptr, MB_OK | MB_ICONEXCLAMATION);
}

int CVrexLayerP::UpdateLayerStateToLayerList() {
    prepare_xreflayer_64();
    int written = 0;
    m_layerStates.GetLayerResbufMap().visitRead([&](const CStdStr<wchar_t>& name, resbuf* edited) {
        zds_name layer = {0, 0};
        if (hxdbTblObjName(L"LAYER", name.c_str(), layer) != RTNORM) {
            written += hxdbEntMakeX(edited, layer) == RTNORM ? 1 : 0;
            return;
        }
        const ListPtr now(hxdbEntGet(layer));
        if (!isSameLayer(edited, now.get())) written += hxdbEntMod(edited) == RTNORM ? 1 : 0;
    });
    if (written > 0) m_layerStates.layersChanged();
    return written;
}

void CVrexLayerP::prepare_xreflayer_64() {
    m_layerStates.GetLayerResbufMap().visitRead([](const CStdStr<wchar_t>& name, resbuf* list) {
        if (name.find(kReferenceMark) == CStdStr<wchar_t>::npos) return;
        zds_name layer = {0, 0};
        resbuf* flags = nullptr;
        if (kv_Associate(list, kFlags, &flags) != 0 ||
            hxdbTblObjName(L"LAYER", name.c_str(), layer) != RTNORM) {
            return;
        }
        const ListPtr now(hxdbEntGet(layer));
        const int mark = intOf(now.get(), kFlags, 0) & kReferenced;
        flags->resval.rint = static_cast<short>((flags->resval.rint & ~kReferenced) | mark);
    });
}

CVrexLayerP::Row CVrexLayerP::rowOf(const resbuf* layer) {
    Row row;
    const int color = intOf(layer, kColor, 7);
    const int flags = intOf(layer, kFlags, 0);
    row.texts[kNameColumn] = textOf(layer, kName);
    row.texts[kColorColumn] = std::to_wstring(std::abs(color));
    row.texts[kLinetypeColumn] = textOf(layer, kLinetype);
    row.texts[kLineweightColumn] = std::to_wstring(intOf(layer, kLineweight, HxDb::kLnWtByLwDefault));
    row.images[kOnColumn] = color < 0 ? 0 : 1;
    row.images[kFrozenColumn] = flags & 1;
    row.images[kLockedColumn] = (flags & 4) / 4;
    row.images[kPlotColumn] = intOf(layer, kPlot, 1);
    return row;
}

void CVrexLayerP::FillLayerList() {
    m_rows.clear();
    KvLayerLists& lists = m_layerStates.GetLayerResbufMap();
    std::vector<CStdStr<wchar_t>> names;
    lists.visitNames([&](const CStdStr<wchar_t>& name) {
        if (isInView(name, m_filter) == (m_checks[kInvertFilter] == 0)) names.push_back(name);
    });
    for (const CStdStr<wchar_t>& name : names) {
        m_rows.push_back(rowOf(lists.find(name)));
    }
    std::vector<long> order(m_rows.size());
    std::iota(order.begin(), order.end(), 0L);
    const auto self = reinterpret_cast<std::intptr_t>(this);
    std::stable_sort(order.begin(), order.end(),
                     [self](long a, long b) { return ListSortProc(a, b, self) < 0; });
    std::vector<Row> sorted;
    for (const long row : order) {
        sorted.push_back(m_rows[static_cast<std::size_t>(row)]);
    }
    m_rows = std::move(sorted);
}

int CVrexLayerP::FindLayerNameToRow(const CStdStr<wchar_t>& name) const {
    const auto found = std::find_if(m_rows.begin(), m_rows.end(), [&](const Row& row) {
        return hxutEqualNames(row.texts[kNameColumn].c_str(), name.c_str());
    });
    return found == m_rows.end() ? -1 : static_cast<int>(found - m_rows.begin());
}

void CVrexLayerP::sortBy(int column) {
    m_isDescending = column == m_sortColumn && !m_isDescending;
    m_sortColumn = column;
    FillLayerList();
}

const CStdStr<wchar_t>& CVrexLayerP::text(int row, int column) const {
    return m_rows.at(static_cast<std::size_t>(row)).texts.at(static_cast<std::size_t>(column));
}

int CVrexLayerP::ListSortProc(long row1, long row2, long list) {
    const auto* const dialog = reinterpret_cast<const CVrexLayerP*>(static_cast<std::intptr_t>(list));
    const auto column = static_cast<std::size_t>(dialog->m_sortColumn);
    const Row& a = dialog->m_rows.at(static_cast<std::size_t>(row1));
    const Row& b = dialog->m_rows.at(static_cast<std::size_t>(row2));
    const bool isByText = column == kNameColumn || (column >= kColorColumn && column <= kLineweightColumn);
    const int order = isByText
                          ? strcmpSort(a.texts[column].c_str(), b.texts[column].c_str())
                          : (a.images[column] > b.images[column]) - (a.images[column] < b.images[column]);
    return dialog->m_isDescending ? -order : order;
}

void CVrexLayerP::setFilter(const CStdStr<wchar_t>& part, bool isInverted) {
    m_filter = part;
    m_checks[kInvertFilter] = isInverted ? 1 : 0;
    OnCheckInvertFilter();
}

void CVrexLayerP::OnKillfocusEditName() {
    m_name.Trim();
    m_selectedRow = FindLayerNameToRow(m_name);
}

int CVrexLayerP::IsLayerVpLayerFrozen(const CStdStr<wchar_t>& name) const {
    return CKvLayerStateManDlg::IsLayerNameVpLayerFrozen(m_layerStates.database(), name);
}

void CVrexLayerP::OnButtonCancel() { m_layerStates.ClearLayerResbufMap(); }
