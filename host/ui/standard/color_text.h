// Colours as texts and as what is seen on the screen.
#pragma once

#include "sdk/hxcm.h"

#include <QColor>
#include <QString>

#include <optional>

namespace korvex {

/// "30", "red", and with `allowMetaColors` "ByLayer" and "ByBlock"; case and blanks at the ends do not count.
std::optional<HxCmColor> readIndexColor(const QString& text, bool allowMetaColors);
/// "255,128,0", blanks around the numbers allowed.
std::optional<QColor> readRgb(const QString& text);
/// "FF8000" or "#FF8000".
std::optional<QColor> readHex(const QString& text);

/// "255,128,0"
QString rgbText(const QColor& color);
/// What the user reads: "Red", "Color 42", "255,128,0", "Cherry Mist (Tidewater Hues)".
QString describeColor(const HxCmColor& color);

/// The colour of an index from 1 to 255.
QColor indexColor(int index);
/// What is seen; ByLayer looks like `layerColor`, ByBlock like index 7.
QColor seenColor(const HxCmColor& color, const HxCmColor& layerColor);

}  // namespace korvex
