// Loads the icons of the layer grid's cells.
#include "layer_icons.h"

#include "frame/util/resource_text.h"

namespace {

constexpr std::array<const char*, kIconCount> kNames = {"lck",
                                                        "unlck",
                                                        "on",
                                                        "off",
                                                        "frz",
                                                        "thw",
                                                        "plot",
                                                        "unplot",
                                                        "current",
                                                        "used",
                                                        "unused",
                                                        "usedoverride",
                                                        "unusedoverride",
                                                        "vpfrz",
                                                        "vpthw",
                                                        "vpused",
                                                        "vpunused",
                                                        "vpcurrent",
                                                        "vpfrz",
                                                        "vpthw"};

constexpr std::array<KvString, kIconCount> kIconTexts = {kStrStateLocked,
                                                         kStrStateUnlocked,
                                                         kStrStateOn,
                                                         kStrStateOff,
                                                         kStrStateFrozen,
                                                         kStrStateThawed,
                                                         kStrStatePlots,
                                                         kStrStateNoPlot,
                                                         kStrStateCurrent,
                                                         kStrStateUsed,
                                                         kStrStateUnused,
                                                         kStrStateUsedOverride,
                                                         kStrStateUnusedOverride,
                                                         kStrStateVpFrozen,
                                                         kStrStateVpThawed,
                                                         kStrStateUsedOverride,
                                                         kStrStateUnusedOverride,
                                                         kStrStateCurrentOverride,
                                                         kStrStateNewVpFrozen,
                                                         kStrStateNewVpThawed};

}  // namespace

KvLayerIcons loadLayerIcons(bool light) {
    KvLayerIcons icons;
    for (std::size_t i = 0; i < icons.size(); ++i) {
        icons[i] =
            QIcon(QString(":/KvLayerManager/image_layerstate_%1%2").arg(kNames[i], light ? "" : "_dark"));
    }
    return icons;
}

QString iconText(int icon) { return resourceText(kIconTexts[static_cast<std::size_t>(icon)]); }
