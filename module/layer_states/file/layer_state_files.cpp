// Export, import, and what happens to states whose names are taken.
#include "layer_states/file/layer_state_files.h"

#include "hxtext.h"
#include "layer_states/file/find_in_path.h"
#include "layer_states/file/las_writer.h"
#include "layer_states/file/names_in_drawing.h"

namespace {

using Overwrite = LayerStateQuestions::Overwrite;

constexpr const wchar_t* kDrawingEndings[] = {L"dwg", L"dwt", L"dxf"};

/// A copy that belongs to no drawing. Current is the layer that the state names.
KvLayerStateEntries copyOf(const KvLayerStateMap& from, const CKvLayerState& state) {
    KvLayerStateEntries copy(new KvLayerStateInfoArray);
    from.visitEntries(&state, [&](const HxLyStateEntry& entry) {
        const bool isCurrent = hxutEqualNames(entry.layer.c_str(), state.GetCurrentLayerName().c_str());
        copy->Add(new CKvLayerStateInfo(entry, copy->GetSize(), isCurrent));
        return true;
    });
    return copy;
}

void append(LayerStateQuestions::Names& names, const LayerStateQuestions::Names& more) {
    for (const CStdStr<wchar_t>& name : more) {
        if (std::find(names.begin(), names.end(), name) == names.end()) names.push_back(name);
    }
}

}  // namespace

KvStateSource stateSourceOf(const CStdStr<wchar_t>& path) {
    const CStdStr<wchar_t> ending = extensionOf(path);
    if (ending.CompareNoCase(L"las") == 0) return KvStateSource::layerStateFile;
    for (const wchar_t* const drawing : kDrawingEndings) {
        if (ending.CompareNoCase(drawing) == 0) return KvStateSource::drawing;
    }
    return KvStateSource::none;
}

bool KvLayerStateFiles::exportState(const CStdStr<wchar_t>& path, const CKvLayerState* state) {
    if (!state || !m_states.contains(state)) return false;
    const KvLasWritten written = writeLasFile(path, m_states, *state);
    if (!written.brokenName.empty()) {
        m_questions.tellBrokenName(written.brokenName);
    } else if (!written.isWritten) {
        m_questions.tellNotExported(path, written.reason);
    } else if (!written.changedNames.empty()) {
        m_questions.tellChangedNames(written.changedNames);
    }
    return written.isWritten;
}

bool KvLayerStateFiles::mayImport(const CStdStr<wchar_t>& name) {
    const CKvLayerState* const existing = m_states.find(name);
    return !existing || m_questions.mayOverwrite({existing->GetLayerStateName()}) == Overwrite::yes;
}

CKvLayerState* KvLayerStateFiles::importState(const CStdStr<wchar_t>& path, HxDbDatabase* database) {
    KvLasFailure failure;
    KvLasState read = readLasFile(KvFindInPath(path), failure);
    if (!read) {
        m_questions.tellNotImported(path, failure);
        return nullptr;
    }
    if (!mayImport(read.state->GetLayerStateName())) return nullptr;
    const KvUnusableNames unusable = fitToDrawing(database, *read.entries);
    if (!unusable.linetypes.empty()) m_questions.tellMissingLinetypes(unusable.linetypes);
    if (!unusable.plotStyles.empty()) m_questions.tellUnusablePlotStyles(unusable.plotStyles);
    return put(*read.state, std::move(read.entries));
}

std::vector<CKvLayerState*> KvLayerStateFiles::importStates(const std::vector<CKvLayerState*>& chosen,
                                                            const KvLayerStateMap& from,
                                                            HxDbDatabase* database) {
    LayerStateQuestions::Names taken;
    for (const CKvLayerState* const state : chosen) {
        const bool isTaken = from.contains(state) && m_states.find(state->GetLayerStateName());
        if (isTaken) taken.push_back(state->GetLayerStateName());
    }
    const Overwrite answer = taken.empty() ? Overwrite::yes : m_questions.mayOverwrite(taken);
    std::vector<CKvLayerState*> imported;
    if (answer == Overwrite::cancel) return imported;
    LayerStateQuestions::Names plotStyles;
    for (const CKvLayerState* const state : chosen) {
        if (!from.contains(state)) continue;
        if (answer == Overwrite::no && m_states.find(state->GetLayerStateName())) continue;
        KvLayerStateEntries entries = copyOf(from, *state);
        append(plotStyles, fitPlotStylesToDrawing(database, *entries).plotStyles);
        imported.push_back(put(*state, std::move(entries)));
    }
    if (!plotStyles.empty()) m_questions.tellPlotStylesLeftOut(plotStyles);
    return imported;
}

/// Adds a copy of the state, or puts it in the place of the one that has its name. A reference's state has
/// its record in the reference's drawing; it gives way to one of this drawing.
CKvLayerState* KvLayerStateFiles::put(const CKvLayerState& state, KvLayerStateEntries entries) {
    CKvLayerState* existing = m_states.find(state.GetLayerStateName());
    if (existing && existing->isOfReference()) {
        m_states.remove(existing);
        existing = nullptr;
    }
    const int row = existing ? existing->GetLayerStateIndex() : -1;
    CKvLayerState* const target = existing ? existing : new CKvLayerState;
    *target = state;
    target->SetLayerStateIndex(row);
    target->SetSameAsDWG(0);
    if (target->isOfReference()) target->SetSpace(HxLyState::kLayout);  // it will be written
    if (existing) {
        m_states.replaceEntries(target, entries.release());
    } else {
        m_states.add(target, entries.release());
    }
    return target;
}
