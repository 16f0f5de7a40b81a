// The dialog in which a colour is chosen.
#pragma once

#include "host/ui/standard/standard_dialog.h"
#include "sdk/hxcm.h"

class QLabel;
class QTabWidget;

namespace korvex {

class ColorBookTab;
class ColorSwatch;
class ColorTab;
class TrueColorTab;

class ColorDialog : public StandardDialog {
    Q_OBJECT
public:
    ColorDialog(const HxCmColor& color, bool allowMetaColors, const HxCmColor& layerColor, QWidget* parent);

    const HxCmColor& color() const { return m_color; }

protected:
    void onOk() override;
    void done(int result) override;

private:
    enum Tab { Index, True, Book };

    void addTab(ColorTab* tab, const char* name, const QString& title);
    QLayout* makeComparison();
    void take(const HxCmColor& color, const ColorTab* from);
    void showNew();
    int fittingTab() const;
    void remember() const;
    void recall();

    HxCmColor m_color;
    HxCmColor m_layerColor;
    bool m_hasColor;  ///< false: the given one is not allowed, and none was chosen yet
    QTabWidget* m_tabs;
    TrueColorTab* m_trueColor;
    ColorBookTab* m_books;
    QLabel* m_fault;
    ColorSwatch* m_old;
    ColorSwatch* m_new;
    QLabel* m_newText;
};

}  // namespace korvex
