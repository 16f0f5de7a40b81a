// Colours by index: the palette of the 255, names and numbers, ByLayer and ByBlock.
#pragma once

#include "host/ui/standard/color_tab.h"

class QLabel;
class QLineEdit;
class QPushButton;

namespace korvex {

class ColorGrid;

class IndexColorTab : public ColorTab {
    Q_OBJECT
public:
    IndexColorTab(bool allowMetaColors, QWidget* parent);

    void showColor(const HxCmColor& color) override;
    void takeFocus() override;
    QString fault() override;

private:
    ColorGrid* addGrid(const char* name, const QString& title, const std::vector<int>& indexes, int columns,
                       int gapRow = -1);
    QPushButton* addMetaButton(const char* name, const QString& text, int index);
    void choose(int index);
    void mark(const HxCmColor& color);
    void point(int index);
    void readText(const QString& text);

    bool m_allowMetaColors;
    int m_index = -1;  ///< the chosen one; -1 none
    std::vector<ColorGrid*> m_grids;
    QPushButton* m_byLayer;
    QPushButton* m_byBlock;
    QLineEdit* m_text;
    QLabel* m_pointedIndex;
    QLabel* m_pointedRgb;
};

}  // namespace korvex
