// The controls of the layer manager and where they stand.
#pragma once

#include <array>

class CKvUiTreeCtrl;
class CSearchEdit;
class KvLayerListCtrl;
class QCheckBox;
class QLabel;
class QSplitter;
class QToolButton;
class QWidget;

/// The tool bar's buttons.
enum KvManagerButton : int {
    kButtonNewPropertyFilter,
    kButtonNewGroupFilter,
    kButtonLayerStates,
    kButtonNew,
    kButtonDelete,
    kButtonSetCurrent,
    kManagerButtonCount,
};

struct ManagerControls {
    std::array<QToolButton*, kManagerButtonCount> buttons{};
    CSearchEdit* search = nullptr;
    QCheckBox* invert = nullptr;
    QSplitter* splitter = nullptr;  ///< filter pane and grid
    QWidget* filterPane = nullptr;
    QToolButton* collapse = nullptr;  ///< in the filter pane
    QToolButton* expand = nullptr;    ///< shown while the pane is not
    CKvUiTreeCtrl* tree = nullptr;
    KvLayerListCtrl* list = nullptr;
    QLabel* statistics = nullptr;
    QLabel* currentLayer = nullptr;
};

/// Makes them as children of the window, under their object names; a dialog has OK and Cancel besides. Texts
/// are of the current resource library.
ManagerControls makeManagerControls(QWidget& window, bool isDialog);

/// The tool bar's icons; grey ones while a button is disabled.
void showToolIcons(const ManagerControls& controls, bool light);

/// Light icons with "COLORTHEME" 1; with another value, or none, the palette has dark ones, the dialog light
/// ones.
bool usesLightIcons(bool isPalette);
