// What a restore would do, beside and below the list of the layer states manager.
#include "frame/module_state.h"
#include "layer_states/compare/differences_pane.h"
#include "layer_states/manager/layer_state_man_window.h"
#include "layer_states/preview/restore_preview.h"
#include "model/record_of_name.h"

#include <QCheckBox>
#include <QLayout>
#include <QScreen>

/// Beside the list, which keeps its width as far as the screen allows.
void KvLayerStateManWindow::placePreview() {
    auto* const row = findChild<QHBoxLayout*>("listRow");
    if (!row) return;
    m_preview = new KvRestorePreview(m_engine.states(), m_engine.database(), this);
    row->insertWidget(1, m_preview, 2);
    row->setStretch(0, 5);
    const auto widen = [this](int by) { resizeWithin(width() + by, height()); };
    const bool isTooWide = width() + m_preview->unfoldedWidth() > screen()->availableSize().width();
    if (isTooWide) m_preview->foldForNow();
    if (!m_preview->isFolded()) widen(m_preview->unfoldedWidth());
    connect(m_preview, &KvRestorePreview::widthChanged, this, widen);
}

void KvLayerStateManWindow::connectDifferences() {
    m_showLater.setSingleShot(true);
    connect(&m_showLater, &QTimer::timeout, this, &KvLayerStateManWindow::showWhatWould);
    const auto later = [this] { m_showLater.start(0); };
    for (QCheckBox* const box : m_boxes) {
        connect(box, &QCheckBox::toggled, this, later);
    }
    for (const char* const option : {kTurnOffOthers, kAsOverrides}) {
        connect(GetDlgItem<QCheckBox>(option), &QCheckBox::toggled, this, later);
    }
    connect(m_list, &CKvLayerStateListCtrl::selectionMade, this, later);
    connect(&m_list->rows(), &QAbstractItemModel::dataChanged, this, later);
    connect(m_differences, &KvDifferencesPane::layerChosen, this, &KvLayerStateManWindow::goToLayer);
    connect(m_differences, &KvDifferencesPane::heightChanged, this, [this](int by) {
        if (by > 0 && isTooTall()) HideRestoreLayerPropArea(1, 1);
        resizeWithin(width(), height() + by);
    });
}

void KvLayerStateManWindow::showWhatWould() {
    const std::vector<CKvLayerState*> selected = m_list->selectedStates();
    if (selected.size() == 1) {
        m_differences->showDifferences(m_engine.differencesOf(*selected.front(), tickedMask()));
    } else {
        m_differences->showNothing();
    }
    if (!m_preview) return;
    KvRestoreOptions options;
    options.mask = tickedMask();
    options.asViewportOverrides = GetDlgItem<QCheckBox>(kAsOverrides)->isChecked();
    options.turnOffOthers = GetDlgItem<QCheckBox>(kTurnOffOthers)->isChecked();
    m_preview->setSelection(selected, options);
}

/// As large as the screen allows.
void KvLayerStateManWindow::resizeWithin(int width, int height) {
    layout()->activate();
    resize(QSize(width, height).boundedTo(screen()->availableSize()));
}

/// In the layer dialog that the manager was opened from, else in the palette when it can be seen.
void KvLayerStateManWindow::goToLayer(const CStdStr<wchar_t>& name) {
    const HxDbObjectId layer = layerOfName(*m_engine.database(), name);
    if (layer.isNull()) return;
    auto* shower = dynamic_cast<KvLayerShower*>(parentWidget());
    if (!shower && layerPalette() && layerPalette()->isPaletteVisible()) shower = layerPalette();
    if (shower) shower->showLayer(layer);
}
