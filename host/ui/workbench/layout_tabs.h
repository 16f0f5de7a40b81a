// The tabs below the drawing: model space and the layouts.
#pragma once

#include <QTabBar>

namespace korvex {

class Dialogue;

/// Shows the layouts of the active drawing in their order; a click runs MODEL or LAYOUT.
class LayoutTabs : public QTabBar {
    Q_OBJECT
public:
    explicit LayoutTabs(Dialogue& dialogue, QWidget* parent = nullptr);

    void refresh();
    /// Goes to the next (1) or previous (-1) tab.
    void step(int by);

private:
    void go(int index);

    Dialogue& m_dialogue;
    bool m_isRefreshing = false;
};

}  // namespace korvex
