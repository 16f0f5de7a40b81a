// The two sets of colours that scenes come in.
#include "host/ui/render/scene_painter.h"

namespace korvex {

SceneStyle SceneStyle::dark() {
    SceneStyle style;
    style.background = QColor(23, 26, 31);
    style.paper = QColor(250, 250, 247);
    style.desk = QColor(74, 78, 84);
    style.ink = Qt::white;
    style.paperInk = Qt::black;
    style.highlight = QColor(80, 170, 255);
    style.activeFrame = QColor(20, 110, 220);
    return style;
}

SceneStyle SceneStyle::light() {
    SceneStyle style = dark();
    style.background = Qt::white;
    style.paper = Qt::white;
    style.desk = QColor(150, 154, 160);
    style.ink = Qt::black;
    style.highlight = QColor(0, 110, 230);
    return style;
}

}  // namespace korvex
