// The states of earlier versions, which lie in pieces on the layers.
//
// Extended data of application "LMAN" on a layer, for each state: 1000 its name, 1000 its description (may be
// left out), then up to three 1070 (flags, colour index, lineweight), 1071 (true colour, -1 none) and up to
// two 1005 (handles of the linetype and of the plot style).
#pragma once

#include "layer_states/records/layer_state_map.h"

class HxDbDatabase;

/// A state of earlier versions with the name that it had there.
struct KvOlderState {
    CStdStr<wchar_t> oldName;
    std::unique_ptr<CKvLayerState> state;
    std::vector<HxLyStateEntry> entries;
};

/// Adds what one layer's extended data says to the states; `data` begins with the application's name (1001).
void ReadLayerStateFromXDataFormat(const HxDbDatabase& database, const resbuf* data,
                                   const CStdStr<wchar_t>& layerName, std::vector<KvOlderState>& states);
/// All of them. Costs nothing in drawings that never had any.
std::vector<KvOlderState> ReadLayerFromXData(const HxDbDatabase* database);
/// "LMAN_name", made unique among `states` with "(1)", "(2)" and so on.
CStdStr<wchar_t> FindLMANLayerstateName(const CStdStr<wchar_t>& name, const KvLayerStateMap& states);
/// Takes a state, by the name that it had, off every layer. False when a layer could not be changed.
bool DeleteLayerFromXData(HxDbDatabase& database, const CStdStr<wchar_t>& oldName);
