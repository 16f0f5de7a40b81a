// How the user left the layer dialog.
#include "sdk/hxed.h"

namespace {

struct Flags {
    bool inverted = false;
    bool usesCurrent = false;
};

Flags& flags() {
    static Flags kept;
    return kept;
}

}  // namespace

void hxedSetInvertLayerFilterFlag(bool inverted) { flags().inverted = inverted; }
bool hxedInvertLayerFilterFlag() { return flags().inverted; }
void hxedSetUseCurrentFilterFlag(bool use) { flags().usesCurrent = use; }
bool hxedUseCurrentFilterFlag() { return flags().usesCurrent; }
