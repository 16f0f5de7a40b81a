// Giving the layers of a drawing what a state says of them.
#pragma once

#include "layer_states/restore/layer_values.h"
#include "layer_states/restore/restore_rules.h"

/// What a restore did.
struct KvRestoreResult {
    int layers = 0;                     ///< that the state names
    int changed = 0;                    ///< of them, those made included
    int made = 0;                       ///< that the drawing lacked
    HxArray<CStdStr<wchar_t>> refused;  ///< layers that could not be given everything
};

/// One restore. Each layer that differs is opened for change once; layers and linetypes that the drawing
/// lacks are made. A property that the drawing's version cannot hold is left out.
class KvLayerRestore {
public:
    KvLayerRestore(HxDbDatabase& database, const KvRestoreOptions& options);

    /// Applies one entry to its layer. The drawing's current layer is not frozen.
    void RestoreLayerFromLayerState(const HxLyStateEntry& entry);
    /// Freezes and thaws in the current viewport what the entries wanted; when they are all through.
    void ProcessVpLayerFreezeLayer();
    void TurnoffLayerOfNotFoundInLayerState();

    const KvRestoreResult& result() const { return m_result; }

private:
    /// A layer that the drawing lacks, to be given its values; null id when the drawing does not take it, and
    /// for one of an external reference.
    HxDbObjectId RestoreNewLayer(const HxLyStateEntry& entry) const;
    HxDbObjectId CreateNewLayer(const CStdStr<wchar_t>& name) const;
    bool change(HxDbObjectId id, const HxLyStateEntry& entry, std::int32_t wanted);

    HxDbDatabase& m_database;
    KvRestoreRules m_rules;
    KvLayerStateValues m_values;
    HxArray<HxDbObjectId> m_toFreeze;
    HxArray<HxDbObjectId> m_toThaw;
    KvRestoreResult m_result;
};
