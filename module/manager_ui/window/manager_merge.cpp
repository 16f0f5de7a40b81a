// Merging layers into another one.
#include "frame/util/format_message.h"
#include "layer_prop_manager_dlg.h"

#include "dialogs/merge_target_dialog.h"
#include "frame/util/resource_text.h"
#include "frame/util/text_utilities.h"
#include "manager_ui/editing/layer_change.h"
#include "manager_ui/editing/viewport_overrides.h"
#include "manager_ui/grid/layer_list_ctrl.h"
#include "model/auto_layer_record.h"
#include "model/blocking_commands.h"
#include "model/layer_data.h"
#include "model/layer_prop_manager.h"

#include "hxdbdatabase.h"
#include "hxdoc.h"

#include <QStringList>

#include <algorithm>
#include <unordered_set>

namespace {

QString nameOf(KvLayerData* layer) {
    const KvAutoLayerRecordPtr record(layer, true, false, true);
    return record.object() ? QString::fromWCharArray(record->name()) : QString();
}

/// Whether the drawing can do without the layer: it is listed, not layer 0, DEFPOINTS or the current one, and
/// the drawing's own.
bool IsValidLayer(KvLayerData* layer, const HxDbDatabase& database) {
    const KvAutoLayerRecordPtr record(layer, true, false, true);
    if (!record.object() || record->isDependent()) return false;
    const HxDbObjectId id = layer->layerId();
    return id != database.layerZero() && id != database.clayer() &&
           db_compareNames(record->name(), L"DEFPOINTS") != 0;
}

/// Where objects can go: any other layer of the drawing itself, by name.
QStringList targetsFor(const HxArray<KvLayerData*>& all, const std::vector<KvLayerData*>& merged) {
    const std::unordered_set<const KvLayerData*> isMerged(merged.begin(), merged.end());
    QStringList names;
    for (KvLayerData* const layer : all) {
        const KvAutoLayerRecordPtr record(layer, true, false, true);
        if (record.object() && !record->isDependent() && isMerged.find(layer) == isMerged.end()) {
            names << QString::fromWCharArray(record->name());
        }
    }
    names.sort(Qt::CaseInsensitive);
    return names;
}

/// Whether the command that merges would take the list for one of its options or for a point.
bool couldBeOther(const std::wstring& list) {
    const auto begins = [&](const QString& keyword) {
        return keyword.startsWith(QString::fromStdWString(list), Qt::CaseInsensitive);
    };
    return begins(QStringLiteral("Name")) || begins(QStringLiteral("Undo")) ||
           list.find_first_not_of(L"0123456789+-.,eE@") == std::wstring::npos;
}

/// The layers' names as the command takes them, as names and nothing else.
std::wstring mergeList(const std::vector<KvLayerData*>& layers) {
    std::wstring list;
    std::wstring escaped;
    for (KvLayerData* const layer : layers) {
        const std::wstring name = nameOf(layer).toStdWString();
        const wchar_t* const comma = list.empty() ? L"" : L",";
        list += comma + listElement(name);
        escaped += comma;
        for (const wchar_t c : name)
            escaped += {L'`', c};
    }
    return couldBeOther(list) ? escaped : list;
}

}  // namespace

/// The host merges: as a command, which is one undo step, when this event is over.
void KvLayerPropManagerDlg::MergeSelectLayersTo() {
    const ModuleResources resources;
    HxApDocument* const document = curDoc();
    if (!document || !document->isQuiescent() || (m_isPalette && isBlockingCommandRunning())) return;
    HxArray<KvLayerData*> selected;
    HxArray<int> rows;
    m_list->SelectedLayers(selected, rows);
    std::vector<KvLayerData*> merged;
    std::copy_if(selected.begin(), selected.end(), std::back_inserter(merged),
                 [&](KvLayerData* layer) { return IsValidLayer(layer, *m_manager->GetDatabase()); });
    const int count = static_cast<int>(merged.size());
    if (count > 0) {
        KvMergeTargetDialog dialog(targetsFor(m_manager->GetAllLayersRef(), merged), count, this);
        if (dialog.DoModal() != IDOK) return;
        const QString question =
            formatMessage(resourceText(kStrMergeQuestion), {QString::number(count), dialog.target()});
        if (MessageBox(question.toStdWString().c_str(), nullptr, MB_OKCANCEL | MB_ICONWARNING) != IDOK)
            return;
        CStdStr<wchar_t> command;
        command.Format(L"_.-laymrg %ls\n_N %ls\n_Y ", mergeList(merged).c_str(),
                       listElement(dialog.target().toStdWString()).c_str());
        sendToDocument(command.c_str());
    }
    if (count < selected.length()) tellCounts(kStrMergeSummary, selected.length(), selected.length() - count);
}
