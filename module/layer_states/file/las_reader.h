// Reading a layer-state file.
#pragma once

#include "layer_states/records/layer_state_map.h"

#include <memory>
#include <string_view>

/// What keeps a file from being read.
struct KvLasFailure {
    enum Kind {
        none,
        cannotRead,  ///< `text` tells why
        tooLarge,
        nullCharacter,  ///< it is no text
        endsEarly,      ///< `line` is the last one
        otherLine,      ///< `text` is what was expected
        noName,         ///< the state's name is empty
    };
    Kind kind = none;
    int line = 0;  ///< from 1; 0 where no line is meant
    CStdStr<wchar_t> text;
};

struct KvDeleteEntries {
    void operator()(KvLayerStateInfoArray* entries) const { deleteEntries(entries); }
};
using KvLayerStateEntries = std::unique_ptr<KvLayerStateInfoArray, KvDeleteEntries>;

/// A state as its file tells it; null without one. Names are not looked up in any drawing.
struct KvLasState {
    std::unique_ptr<CKvLayerState> state;
    KvLayerStateEntries entries;
    explicit operator bool() const { return state != nullptr; }
};

/// Reads the bytes of a file. The state's LAS origin flag is set.
KvLasState readLas(std::string_view bytes, KvLasFailure& failure);
/// Reads a file.
KvLasState readLasFile(const CStdStr<wchar_t>& path, KvLasFailure& failure);
