// The controls of the layer manager and where they stand.
#pragma once

class CKvUiTreeCtrl;
class KvLayerListCtrl;
class QLabel;
class QSplitter;
class QWidget;

struct ManagerControls {
    QSplitter* splitter = nullptr;  ///< tree and grid
    CKvUiTreeCtrl* tree = nullptr;
    KvLayerListCtrl* list = nullptr;
    QLabel* statistics = nullptr;
    QLabel* currentLayer = nullptr;
};

/// Makes them as children of the window, under their object names. Texts are of the current resource library.
ManagerControls makeManagerControls(QWidget& window);

/// Light icons with "COLORTHEME" 1; without that setting the palette has dark ones, the dialog light ones.
bool usesLightIcons(bool isPalette);
