// The colours of the two themes.
#pragma once

#include <QColor>
#include <QPalette>

namespace korvex {

struct ThemeColors {
    QColor window, base, alternateBase;
    QColor text, dimText, disabledText;
    QColor button, border;
    QColor highlight, highlightedText;
    QColor link;
    QColor toolTip, toolTipText;
    QColor title, activeTitle, activeTitleText;  ///< of dock panels; `text` on the title
    QColor iconLine, iconAccent, iconDisabled;
};

const ThemeColors& themeColors(bool dark);
QPalette themePalette(const ThemeColors& colors);

}  // namespace korvex
