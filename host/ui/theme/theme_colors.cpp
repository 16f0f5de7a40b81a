// The colours of the two themes, and the palette that widgets take them from.
#include "host/ui/theme/theme_colors.h"

namespace korvex {

namespace {

ThemeColors darkColors() {
    ThemeColors c;
    c.window = "#2b2d30";
    c.base = "#1e1f22";
    c.alternateBase = "#25272a";
    c.text = "#dfe1e5";
    c.dimText = "#a3a7ae";
    c.disabledText = "#8a8e95";
    c.button = "#3a3d41";
    c.border = "#54585e";
    c.highlight = "#2e5fb8";
    c.highlightedText = "#ffffff";
    c.link = "#78aeff";
    c.toolTip = "#43464b";
    c.toolTipText = "#f0f1f3";
    c.title = "#34373b";
    c.activeTitle = "#31456b";
    c.activeTitleText = "#ffffff";
    c.iconLine = "#ced1d7";
    c.iconAccent = "#78aeff";
    c.iconDisabled = "#75797f";
    return c;
}

ThemeColors lightColors() {
    ThemeColors c;
    c.window = "#f1f2f4";
    c.base = "#ffffff";
    c.alternateBase = "#f4f6f8";
    c.text = "#1c1d20";
    c.dimText = "#5d626a";
    c.disabledText = "#74797f";
    c.button = "#e9ebee";
    c.border = "#b3b8bf";
    c.highlight = "#2a62c4";
    c.highlightedText = "#ffffff";
    c.link = "#1d57b8";
    c.toolTip = "#fffef2";
    c.toolTipText = "#1c1d20";
    c.title = "#e1e4e8";
    c.activeTitle = "#cbdcf6";
    c.activeTitleText = "#10203c";
    c.iconLine = "#3f4349";
    c.iconAccent = "#1f66c9";
    c.iconDisabled = "#a3a8af";
    return c;
}

}  // namespace

const ThemeColors& themeColors(bool dark) {
    static const ThemeColors kDark = darkColors();
    static const ThemeColors kLight = lightColors();
    return dark ? kDark : kLight;
}

QPalette themePalette(const ThemeColors& colors) {
    QPalette palette(colors.button, colors.window);  // shades for bevels
    palette.setColor(QPalette::Window, colors.window);
    palette.setColor(QPalette::WindowText, colors.text);
    palette.setColor(QPalette::Base, colors.base);
    palette.setColor(QPalette::AlternateBase, colors.alternateBase);
    palette.setColor(QPalette::Text, colors.text);
    palette.setColor(QPalette::Button, colors.button);
    palette.setColor(QPalette::ButtonText, colors.text);
    palette.setColor(QPalette::BrightText, colors.highlightedText);
    palette.setColor(QPalette::PlaceholderText, colors.dimText);
    palette.setColor(QPalette::Highlight, colors.highlight);
    palette.setColor(QPalette::HighlightedText, colors.highlightedText);
    palette.setColor(QPalette::Link, colors.link);
    palette.setColor(QPalette::LinkVisited, colors.link);
    palette.setColor(QPalette::ToolTipBase, colors.toolTip);
    palette.setColor(QPalette::ToolTipText, colors.toolTipText);
    for (const QPalette::ColorRole role : {QPalette::WindowText, QPalette::Text, QPalette::ButtonText}) {
        palette.setColor(QPalette::Disabled, role, colors.disabledText);
    }
    palette.setColor(QPalette::Disabled, QPalette::Highlight, colors.border);
    palette.setColor(QPalette::Disabled, QPalette::HighlightedText, colors.text);
    palette.setColor(QPalette::Disabled, QPalette::Base, colors.window);
    return palette;
}

}  // namespace korvex
