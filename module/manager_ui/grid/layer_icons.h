// The icons of the layer grid's cells.
#pragma once

#include <QIcon>

#include <array>

/// Places in the grid's icon list; cells refer to icons by them.
enum KvLayerIcon : int {
    kIconLocked,
    kIconUnlocked,
    kIconOn,
    kIconOff,
    kIconFrozen,
    kIconThawed,
    kIconPlot,
    kIconNoPlot,
    kIconCurrent,
    kIconUsed,
    kIconUnused,
    kIconUsedOverride,
    kIconUnusedOverride,
    kIconVpFrozen,
    kIconVpThawed,
    kIconVpUsed,
    kIconVpUnused,
    kIconVpCurrent,
    kIconNewVpFrozen,
    kIconNewVpThawed,
    kIconCount,
};

using KvLayerIcons = std::array<QIcon, kIconCount>;

/// The set for the light or the dark theme.
KvLayerIcons loadLayerIcons(bool light);

/// What an icon (KvLayerIcon) says to those who can not see it.
QString iconText(int icon);
