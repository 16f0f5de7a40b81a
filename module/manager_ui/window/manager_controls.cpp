// The controls of the layer manager and where they stand.
#include "manager_controls.h"

#include "frame/resource_text.h"
#include "manager_ui/filters/filter_tree_ctrl.h"
#include "manager_ui/grid/layer_list_ctrl.h"

#include "hxconfig.h"

#include <QLabel>
#include <QSplitter>
#include <QVBoxLayout>

namespace {

constexpr wchar_t kTheme[] = L"COLORTHEME";
constexpr int kTreeWidth = 170;

QLabel* makeLine(QWidget& window, const char* name) {
    auto* const line = new QLabel(&window);
    line->setObjectName(name);
    line->setTextFormat(Qt::PlainText);
    line->setTextInteractionFlags(Qt::TextSelectableByMouse);
    line->setMinimumWidth(0);
    line->setSizePolicy(QSizePolicy::Ignored, QSizePolicy::Fixed);
    return line;
}

QWidget* makeFilterPane(QWidget& window, CKvUiTreeCtrl* tree) {
    auto* const pane = new QWidget(&window);
    pane->setObjectName("IDC_STATIC_FILTERBOX");
    auto* const title = new QLabel(resourceText(kStrFilterTitle), pane);
    title->setObjectName("IDC_STATIC_FILTERTITLE");
    title->setBuddy(tree);
    auto* const column = new QVBoxLayout(pane);
    column->setContentsMargins(0, 0, 0, 0);
    column->setSpacing(2);
    column->addWidget(title);
    column->addWidget(tree);
    tree->setAccessibleName(title->text());
    return pane;
}

}  // namespace

ManagerControls makeManagerControls(QWidget& window) {
    ManagerControls controls;
    controls.tree = new CKvUiTreeCtrl(&window);
    controls.list = new KvLayerListCtrl(&window);
    controls.list->setAccessibleName(resourceText(kStrGridName));
    controls.splitter = new QSplitter(Qt::Horizontal, &window);
    controls.splitter->addWidget(makeFilterPane(window, controls.tree));
    controls.splitter->addWidget(controls.list);
    controls.splitter->setStretchFactor(1, 1);
    controls.splitter->setSizes({kTreeWidth, 4 * kTreeWidth});
    controls.statistics = makeLine(window, "IDC_STATIC_LAYER_STATISTIC");
    controls.currentLayer = makeLine(window, "IDC_STATIC_CURRENT_LAYER");
    auto* const column = new QVBoxLayout(&window);
    column->setContentsMargins(4, 4, 4, 4);
    column->setSpacing(3);
    column->addWidget(controls.currentLayer);
    column->addWidget(controls.splitter, 1);
    column->addWidget(controls.statistics);
    return controls;
}

bool usesLightIcons(bool isPalette) {
    VrexVariant theme;
    KorvexConfig* const config = vrexConfig();
    if (config && config->getValue(kHxConfigUser, kTheme, theme) == 0) return theme.asInt32() == 1;
    return !isPalette;
}
