// Entries of layer states: copies, and their colours as the host's.
#include "layer_states/edit/layer_state_infos.h"

#include "layer_states/restore/layer_values.h"

KvLayerStateInfoArray* CloneLayerStateInfoArray(const KvLayerStateInfoArray* entries) {
    if (!entries) return nullptr;
    auto* const copy = new KvLayerStateInfoArray;
    for (const CKvLayerStateInfo* const entry : *entries) {
        copy->Add(new CKvLayerStateInfo(entry->values(), copy->GetSize(), entry->GetCurrentLayer() != 0));
    }
    return copy;
}

HxCmColor GetKvColorFromLayerState(const CKvLayerStateInfo& entry) { return colorOf(entry.values()); }

void UpdateKvColorToLayerState(CKvLayerStateInfo& entry, const HxCmColor& color) {
    entry.SetColorIndex(color.colorIndex());
    entry.SetRGBColor(color.isByColor() ? color.red() | color.green() << 8 | color.blue() << 16 : -1);
    entry.SetColorBook(color.isFromBook() ? color.getDictionaryKey() : CStdStr<wchar_t>());
}
