// The layer states of a drawing, and of the drawings that it references.
#pragma once

#include "layer_states/records/layer_state_map.h"

class HxDbDatabase;

/// The dictionary that holds a drawing's states; null id when there is none (and none is to be made), and
/// without a drawing.
HxDbObjectId layerStatesDictionary(HxDbDatabase* database, bool create);

/// Adds the states of a drawing, in the dictionary's order. Entries stay unread. What is no state's record is
/// passed over. With `reference`, the name of an external reference whose drawing it is, the states are named
/// "reference_state", their layers "reference|layer", and their space is that of a reference.
void loadLayerStates(HxDbDatabase* database, KvLayerStateMap& states, const CStdStr<wchar_t>& reference = {});

/// Visits the external references that are attached to a drawing and whose drawings are loaded.
void visitReferences(HxDbDatabase* database,
                     const std::function<void(HxDbDatabase*, const CStdStr<wchar_t>& name)>& visit);
