#include "layer_states/records/layer_state.h"

CKvLayerStateInfo::CKvLayerStateInfo(HxLyStateEntry values, int index, bool isCurrent)
    : m_layerIndex(index), m_currentLayer(isCurrent ? 1 : 0), m_values(std::move(values)) {}

HxLyStateHeader CKvLayerState::header() const {
    HxLyStateHeader header;
    header.mask = m_mask;
    header.description = m_description;
    header.space = m_space;
    header.currentLayer = m_currentLayerName;
    return header;
}

void CKvLayerState::setHeader(const HxLyStateHeader& header) {
    m_mask = header.mask;
    m_description = header.description;
    m_space = header.space;
    m_currentLayerName = header.currentLayer;
}
