// Loads the icons of the layer grid's cells.
#include "layer_icons.h"

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
                                                        "vpcurrent"};

}  // namespace

KvLayerIcons loadLayerIcons(bool light) {
    KvLayerIcons icons;
    for (std::size_t i = 0; i < icons.size(); ++i) {
        icons[i] =
            QIcon(QString(":/KvLayerManager/image_layerstate_%1%2").arg(kNames[i], light ? "" : "_dark"));
    }
    return icons;
}
