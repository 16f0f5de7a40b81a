// Making a layer that is like another one.
#pragma once

class HxDbLayerTableRecord;
class KvLayerListCtrl;

/// Makes a layer with the next free default name and the properties of the selected layer (the one with the
/// focus, if it is selected), with its state in the active viewport as well. Null when none could be made;
/// else its record, which is closed.
HxDbLayerTableRecord* makeLayerLikeSelected(KvLayerListCtrl& list);
