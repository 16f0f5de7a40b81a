// LAYISO and LAYUNISO: shows the layers of some objects alone, and brings the others back.
#include "host/editor/layer_isolation.h"

#include "host/base/dynamic_linker.h"
#include "host/db/kernel/database_imp.h"
#include "host/db/kernel/entity_access.h"
#include "host/editor/commands/host_commands.h"
#include "host/editor/commands/isolate_layers.h"
#include "host/editor/commands/layer_state_support.h"
#include "host/editor/editor.h"
#include "host/editor/layer_names.h"
#include "host/editor/pick/picked_layer.h"
#include "host/editor/selection.h"
#include "host/editor/system_variables.h"
#include "sdk/hxdbsymtb.h"

#include <algorithm>
#include <unordered_set>

namespace korvex {

namespace {

constexpr wchar_t kModelMode[] = L"LAYISOMODE";       ///< 0 off, 1 lock
constexpr wchar_t kLayoutMode[] = L"LAYISOVPFREEZE";  ///< 0 off, 1 freeze in the viewport

// ---- the module's part: it records how layers are, and restores them ----

template <class Function>
Function exported(const char* name) {
    const auto found = reinterpret_cast<Function>(dynamicLinker().functionOf(nullptr, name));
    if (!found) {
        refuse(
            L"The layer manager, which keeps how the layers were, is not loaded or is an older one without "
            L"isolation. Load it with HRX Load, then give the command again. Nothing was changed.");
        editor().input().dropSent();  // the rest of what was sent answers this command
    }
    return found;
}

/// Older records are replaced, so that having one is not enough.
bool recordFits() {
    constexpr int kKept = HxLyState::kOn | HxLyState::kFrozen | HxLyState::kLocked;
    HxArray<HxLyStateDifference> differences;
    layerStates().compareLayerStateToDb(differences, kIsolationState, layerStateViewport());
    return std::none_of(differences.begin(), differences.end(),
                        [](const HxLyStateDifference& one) { return (one.property & kKept) != 0; });
}

/// False, with a message, when there is no record of how the layers are now.
bool record(void (*layIso)()) {
    const bool again = isIsolated(drawing());
    layIso();
    if (!isIsolated(drawing()) || (again && !recordFits())) {
        refuse(L"The layer manager did not record how the layers are, so nothing was isolated.");
        return false;
    }
    if (again) {
        say(L"The drawing was isolated already: LAYUNISO brings back what was before this LAYISO.");
    }
    return true;
}

// ---- which layers stay ----

/// The layers of picks and names, each once.
class Chosen {
public:
    /// False for a layer that the drawing does not have.
    bool add(HxDbObjectId id) {
        if (id.isNull() || id.stub()->database != &drawing()) {
            return false;
        }
        if (m_known.insert(id).second) {
            m_kept.layers.push_back(id);
        }
        return true;
    }
    void addPick(const Answer& pick) {
        const PickedLayers picked = layersOfPick(pick.entity, pick.containers);
        if (!add(picked.own)) {
            refuse(
                L"The layer of this object is not in the drawing: reload the external reference that it is "
                L"in with XREF.");
            return;
        }
        m_kept.around.insert(m_kept.around.end(), picked.around.begin(), picked.around.end());
        say(L"Layer " + quoted(layerName(picked.own)) + L", " + std::to_wstring(m_kept.layers.size()) +
            L" in all");
    }
    /// False when none of the names fits a layer.
    bool addNamed(const std::wstring& names) {
        const LayerSelection selection = selectLayers(drawing(), names);
        for (const std::wstring& name : selection.unmatched) {
            refuse(L"There is no layer that fits " + quoted(name) + L".");
        }
        for (const HxDbObjectId& id : selection.layers) {
            add(id);
        }
        return !selection.layers.empty();
    }
    const IsolatedLayers& kept() const { return m_kept; }

private:
    IsolatedLayers m_kept;
    std::unordered_set<HxDbObjectId> m_known;
};

/// Of references as a whole their own layers count.
bool takePickFirst(Chosen& chosen) {
    Selection& selection = selectionOf(drawing());
    const std::vector<HxDbObjectId> objects = selection.objects();
    for (const HxDbObjectId& id : objects) {
        chosen.add(HxDbObjectId(layerOf(*id.stub())));
    }
    selection.clear();
    return !objects.empty();
}

/// Asks for one setting and keeps it; false when the user gave up.
bool askSetting(const wchar_t* variable, const std::wstring& what, const wchar_t* first,
                const wchar_t* second) {
    const bool now = integerVariable(variable) != 0;
    const std::wstring keywords = std::wstring(first) + L" " + second;
    const Answer answer = askKeyword(
        {L"Other layers " + what + L" [" + first + L"/" + second + L"] <" + (now ? second : first) + L">:",
         keywords.c_str()});
    if (answer.isKeyword) {
        const std::wstring why = setVariable(*findSystemVariable(variable),
                                             VariableValue::ofInteger(answer.isKeywordOf(second) ? 1 : 0));
        if (!why.empty()) {
            refuse(why);
        }
    }
    return !answer.isCancelled();
}

bool askSettings() {
    return askSetting(kModelMode, L"in model space", L"Off", L"Lock") &&
           askSetting(kLayoutMode, L"in a viewport of a layout", L"Off", L"Vpfreeze");
}

/// True when a list of names was given: it ends the choice.
bool askNames(Chosen& chosen) {
    const Answer names = askName({L"Enter name list of layer(s) to keep:"});
    return names.isValue() && chosen.addNamed(names.text);
}

/// False when the user gave up.
bool askObjects(Chosen& chosen) {
    for (;;) {
        const Answer answer = askEntity(
            {L"Select objects on the layers to keep or [Names/Settings]:", L"Names Settings"}, true);
        if (answer.isCancelled() || answer.isNone()) {
            return answer.isNone();
        }
        if (answer.isKeywordOf(L"Names")) {
            if (askNames(chosen)) {
                return true;
            }
        } else if (answer.isKeywordOf(L"Settings")) {
            if (!askSettings()) {
                return false;
            }
        } else if (answer.isValue()) {
            chosen.addPick(answer);
        } else {
            say(L"Nothing is there.");
        }
    }
}

// ---- what becomes of the others ----

OtherLayers wantedForOthers() {
    if (drawing().tilemode()) {
        return integerVariable(kModelMode) != 0 ? OtherLayers::lock : OtherLayers::off;
    }
    if (integerVariable(kLayoutMode) == 0) {
        return OtherLayers::off;
    }
    if (layerStateViewport().isNull()) {
        say(L"No floating viewport is current, so the others are turned off in the whole drawing. MSPACE "
            L"goes "
            L"into a viewport.");
        return OtherLayers::off;
    }
    return OtherLayers::viewportFreeze;
}

std::wstring doneText(OtherLayers others) {
    switch (others) {
    case OtherLayers::lock: return L"locked";
    case OtherLayers::viewportFreeze: return L"frozen in the viewport";
    default: return L"turned off";
    }
}

std::wstring layersText(std::size_t count) {
    return std::to_wstring(count) + (count == 1 ? L" layer" : L" layers");
}

void tell(const IsolatedLayers& kept, OtherLayers others, const IsolationCounts& counts) {
    if (counts.failed > 0) {
        refuse(layersText(counts.failed) + L" could not be changed, the first is " +
               quoted(counts.unchanged) + counts.because + L".");
    }
    if (!counts.stayedCurrent.empty()) {
        say(L"Layer " + quoted(counts.stayedCurrent) +
            L" stays current and as it is, since none of the isolated layers can be current.");
    }
    const std::wstring already = counts.already == 0
                                     ? L""
                                     : L", " + std::to_wstring(counts.already) +
                                           (counts.already == 1 ? L" was so already" : L" were so already");
    say(layersText(kept.layers.size()) + L" isolated; " + std::to_wstring(counts.changed) +
        (counts.changed == 1 ? L" other " : L" others ") + doneText(others) + already +
        L". LAYUNISO brings them back.");
}

/// Makes the layer current that was so before; false when it cannot be.
bool makeCurrent(const std::wstring& name) {
    const HxDbObjectPointer<HxDbLayerTable> table(drawing().layerTableId(), HxDb::kForRead);
    HxDbObjectId id;
    return table && table->getAt(name.c_str(), id) == Hx::eOk &&
           (id == drawing().clayer() || drawing().setClayer(id) == Hx::eOk);
}

/// Of drawings that cannot say where the user was, which is all that the layer manager lacks then. What a
/// viewport froze stays, as it is not known which.
bool restoreWithoutPlace() {
    constexpr std::int32_t kKept =
        HxLyState::kOn | HxLyState::kFrozen | HxLyState::kLocked | HxLyState::kNewViewportFrozen;
    return !isIsolationPlaceKnown(drawing()) &&
           layerStates().restoreLayerState(kIsolationState, {}, 0, &kKept) == Hx::eOk &&
           layerStates().deleteLayerState(kIsolationState) == Hx::eOk;
}

}  // namespace

void isolateLayersCommand() {
    if (!drawing().imp()->traits().hasSubclassMarkers) {
        refuse(L"Layers can not be isolated" + stateRefusal(Hx::eNotApplicable));
        editor().input().dropSent();
        return;
    }
    const auto layIso = exported<void (*)()>("LayIso");
    Chosen chosen;
    if (!layIso || (!takePickFirst(chosen) && !askObjects(chosen))) {
        return;
    }
    const IsolatedLayers& kept = chosen.kept();
    if (kept.layers.empty()) {
        say(L"No layer was chosen, so nothing was isolated.");
        return;
    }
    OtherLayers others = wantedForOthers();
    if (!record(layIso)) {
        return;
    }
    if (others == OtherLayers::viewportFreeze && !isIsolationPlaceKnown(drawing())) {
        say(L"This drawing cannot keep which viewport it was, so the others are turned off in all of it.");
        others = OtherLayers::off;
    }
    tell(kept, others, isolate(drawing(), kept, others, layerStateViewport()));
    hxedRedraw(nullptr, 1);
}

void endIsolationCommand() {
    HxLyStateHeader header;
    if (layerStates().getLayerStateHeader(header, kIsolationState) != Hx::eOk) {
        say(L"The drawing is not isolated.");
        return;
    }
    const auto layUniso = exported<int (*)()>("LayUnisoNew");
    if (!layUniso) {
        return;
    }
    HxArray<CStdStr<wchar_t>> layers;
    layerStates().getLayerStateLayers(layers, kIsolationState);
    // What was frozen before can be frozen only while another layer is current.
    const std::wstring current = layerName(drawing().clayer());
    const bool isDone = makeCurrent(header.currentLayer);
    if (layUniso() == 0 && !restoreWithoutPlace()) {
        makeCurrent(current);
        refuse(
            L"The layers were not brought back: what LAYISO recorded is not complete. -LAYERSTATE Restore " +
            std::wstring(kIsolationState) +
            L" restores what there is, -LAYERSTATE Delete ends the isolation.");
        return;
    }
    if (!isDone && !makeCurrent(header.currentLayer)) {
        say(L"Layer " + quoted(current) + L" stays current: " + quoted(header.currentLayer) +
            L", which was before, is frozen or gone.");
    }
    say(L"Layers are as before LAYISO: " + layersText(static_cast<std::size_t>(layers.length())) + L".");
    hxedRedraw(nullptr, 1);
}

}  // namespace korvex
