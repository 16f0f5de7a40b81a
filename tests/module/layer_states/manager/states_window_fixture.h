// The layer states manager of the built module in a main window.
#pragma once

#include "tests/module/manager_ui/palette_fixture.h"

#include "layer_states/storage/layer_state_storage.h"

namespace korvex::test {

class StatesWindowTest : public PaletteTest {
protected:
    /// What a save of the drawing writes, but for the next handle, which stays used up.
    QByteArray withoutSeed() {
        QByteArray text = bytes();
        const int at = text.indexOf("$HANDSEED");
        text.remove(at, text.indexOf("\n9\n", at) - at);
        return text;
    }
    /// The drawing's states.
    Names states() {
        KvLayerStateMap map;
        loadLayerStates(&database(), map);
        Names names;
        for (std::size_t i = 0; i < map.size(); ++i) {
            names.insert(map.at(i)->GetLayerStateName());
        }
        return names;
    }
};

}  // namespace korvex::test
