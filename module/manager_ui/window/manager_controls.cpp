// The controls of the layer manager and where they stand.
#include "manager_controls.h"

#include "search_edit.h"

#include "frame/util/resource_text.h"
#include "manager_ui/filters/filter_tree_ctrl.h"
#include "manager_ui/grid/layer_list_ctrl.h"

#include "hxconfig.h"

#include <QCheckBox>
#include <QLabel>
#include <QMouseEvent>
#include <QPushButton>
#include <QSplitter>
#include <QToolButton>
#include <QVBoxLayout>

namespace {

constexpr wchar_t kTheme[] = L"COLORTHEME";
constexpr int kTreeWidth = 170;
constexpr int kSpacing = 3;
constexpr int kGroupGap = 8;
constexpr QSize kDialogSize(900, 520);

struct ToolRow {
    KvManagerButton button;
    const char* objectName;
    const char* icon;  ///< "@" is where the marks of dark and disabled icons go
    KvString tip;
};
constexpr ToolRow kTools[] = {
    {kButtonNewPropertyFilter, "IDC_BUTTON_NEW_PROPFILTER", "IDR_TOOLBAR_FILTER_@CREATE_PROPFILTER",
     kStrTipNewPropertyFilter},
    {kButtonNewGroupFilter, "IDC_BUTTON_NEW_GROUPFILTER", "IDR_TOOLBAR_FILTER_@CREATE_GROUPFILTER",
     kStrTipNewGroupFilter},
    {kButtonLayerStates, "IDC_BUTTON_LAYERSTATES", "IDR_TOOLBAR_FILTER_@STATE_LAYER", kStrTipLayerStates},
    {kButtonNew, "IDC_BUTTON_NEW", "IDR_TOOLBAR_LAYER_@CREATE", kStrTipNew},
    {kButtonDelete, "IDC_BUTTON_DELETE", "IDR_TOOLBAR_LAYER_@DEL", kStrTipDelete},
    {kButtonSetCurrent, "IDC_BUTTON_SETCURRENT", "IDR_TOOLBAR_LAYER_@CURRENT", kStrTipSetCurrent},
};

QString iconPath(const ToolRow& tool, const char* mark) {
    return QString(":/KvLayerManager/") + QString(tool.icon).replace('@', mark);
}

/// A label whose click is one on the check box beside it.
class CheckLabel : public QLabel {
public:
    CheckLabel(const QString& text, QCheckBox* box, QWidget* parent) : QLabel(text, parent), m_box(box) {
        setBuddy(box);
    }

protected:
    void mouseReleaseEvent(QMouseEvent* event) override {
        if (event->button() == Qt::LeftButton && rect().contains(event->pos())) m_box->click();
    }

private:
    QCheckBox* m_box;
};

QToolButton* makeButton(QWidget& window, const char* name, const QString& tip) {
    auto* const button = new QToolButton(&window);
    button->setObjectName(name);
    button->setAutoRaise(true);
    button->setToolTip(tip);
    button->setAccessibleName(tip);
    return button;
}

QLabel* makeLine(QWidget& window, const char* name) {
    auto* const line = new QLabel(&window);
    line->setObjectName(name);
    line->setTextFormat(Qt::PlainText);
    line->setTextInteractionFlags(Qt::TextSelectableByMouse);
    line->setMinimumWidth(0);
    line->setSizePolicy(QSizePolicy::Ignored, QSizePolicy::Fixed);
    return line;
}

QLayout* makeToolRow(QWidget& window, ManagerControls& controls) {
    auto* const row = new QHBoxLayout;
    row->setSpacing(1);
    for (const ToolRow& tool : kTools) {
        QToolButton* const button = makeButton(window, tool.objectName, resourceText(tool.tip));
        controls.buttons[tool.button] = button;
        if (tool.button == kButtonLayerStates || tool.button == kButtonNew) row->addSpacing(kGroupGap);
        row->addWidget(button);
    }
    controls.search = new CSearchEdit(&window);
    controls.search->setObjectName("IDC_EDIT_SEARCHLAYER");
    controls.search->setAccessibleName(controls.search->placeholderText());
    controls.search->setMinimumWidth(60);
    controls.search->setMaximumWidth(260);
    row->addSpacing(kGroupGap);
    row->addStretch(0);
    row->addWidget(controls.search, 1);
    return row;
}

QLayout* makeInvertRow(QWidget& pane, ManagerControls& controls) {
    controls.invert = new QCheckBox(&pane);
    controls.invert->setObjectName("IDC_CHECK_INVERTFILTER");
    auto* const label = new CheckLabel(resourceText(kStrInvertFilter), controls.invert, &pane);
    label->setObjectName("IDC_STATIC_INVERTFILTER");
    label->setToolTip(resourceText(kStrInvertFilterTip));
    label->setMinimumWidth(0);
    controls.invert->setToolTip(label->toolTip());
    controls.invert->setAccessibleName(resourceText(kStrInvertFilter).remove('&'));
    auto* const row = new QHBoxLayout;
    row->setSpacing(kSpacing);
    row->addWidget(controls.invert);
    row->addWidget(label, 1);
    return row;
}

QWidget* makeFilterPane(QWidget& window, ManagerControls& controls) {
    auto* const pane = new QWidget(&window);
    pane->setObjectName("IDC_STATIC_FILTERBOX");
    auto* const title = new QLabel(resourceText(kStrFilterTitle), pane);
    title->setObjectName("IDC_STATIC_FILTERTITLE");
    title->setBuddy(controls.tree);
    controls.tree->setAccessibleName(title->text());
    controls.collapse = makeButton(*pane, "IDC_EXPAND_BUTTON1", resourceText(kStrTipCollapse));
    controls.collapse->setArrowType(Qt::LeftArrow);
    auto* const head = new QHBoxLayout;
    head->addWidget(title, 1);
    head->addWidget(controls.collapse);
    auto* const column = new QVBoxLayout(pane);
    column->setContentsMargins(0, 0, 0, 0);
    column->setSpacing(2);
    column->addLayout(head);
    column->addWidget(controls.tree, 1);
    column->addLayout(makeInvertRow(*pane, controls));
    return pane;
}

QLayout* makeBody(QWidget& window, ManagerControls& controls) {
    controls.splitter = new QSplitter(Qt::Horizontal, &window);
    controls.filterPane = makeFilterPane(window, controls);
    controls.splitter->addWidget(controls.filterPane);
    controls.splitter->addWidget(controls.list);
    controls.splitter->setStretchFactor(1, 1);
    controls.splitter->setCollapsible(0, false);
    controls.splitter->setCollapsible(1, false);
    controls.splitter->setSizes({kTreeWidth, 4 * kTreeWidth});
    controls.expand = makeButton(window, "IDC_EXPAND_BUTTON2", resourceText(kStrTipExpand));
    controls.expand->setArrowType(Qt::RightArrow);
    controls.expand->hide();
    auto* const body = new QHBoxLayout;
    body->setSpacing(1);
    body->addWidget(controls.expand, 0, Qt::AlignTop);
    body->addWidget(controls.splitter, 1);
    return body;
}

QLayout* makeDialogButtons(QWidget& window) {
    auto* const ok = new QPushButton(resourceText(kStrButtonOk), &window);
    ok->setObjectName("IDOK");
    ok->setDefault(true);
    auto* const cancel = new QPushButton(resourceText(kStrButtonCancel), &window);
    cancel->setObjectName("IDCANCEL");
    auto* const row = new QHBoxLayout;
    row->addStretch();
    row->addWidget(ok);
    row->addWidget(cancel);
    return row;
}

/// As one reads: tools, search, filters, layers.
void orderTabs(const ManagerControls& controls) {
    QWidget* before = controls.buttons.front();
    const auto then = [&before](QWidget* next) {
        QWidget::setTabOrder(before, next);
        before = next;
    };
    std::for_each(controls.buttons.begin() + 1, controls.buttons.end(), then);
    then(controls.search);
    then(controls.tree);
    then(controls.invert);
    then(controls.list);
}

}  // namespace

ManagerControls makeManagerControls(QWidget& window, bool isDialog) {
    ManagerControls controls;
    controls.tree = new CKvUiTreeCtrl(&window);
    controls.list = new KvLayerListCtrl(&window);
    controls.list->setAccessibleName(resourceText(kStrGridName));
    controls.statistics = makeLine(window, "IDC_STATIC_LAYER_STATISTIC");
    controls.currentLayer = makeLine(window, "IDC_STATIC_CURRENT_LAYER");
    auto* const column = new QVBoxLayout(&window);
    const int margin = isDialog ? 8 : 4;
    column->setContentsMargins(margin, margin, margin, margin);
    column->setSpacing(kSpacing);
    column->addWidget(controls.currentLayer);
    column->addLayout(makeToolRow(window, controls));
    column->addLayout(makeBody(window, controls), 1);
    column->addWidget(controls.statistics);
    if (isDialog) {
        column->addLayout(makeDialogButtons(window));
        window.resize(kDialogSize);
    }
    orderTabs(controls);
    return controls;
}

void showToolIcons(const ManagerControls& controls, bool light) {
    for (const ToolRow& tool : kTools) {
        QIcon icon(iconPath(tool, light ? "" : "DARK_"));
        if (tool.button >= kButtonNew) {
            icon.addFile(iconPath(tool, light ? "DISABLE_" : "DISABLE_DARK_"), QSize(), QIcon::Disabled);
        }
        controls.buttons[tool.button]->setIcon(icon);
    }
}

bool usesLightIcons(bool isPalette) {
    VrexVariant theme;
    KorvexConfig* const config = vrexConfig();
    const bool isRead = config && config->getValue(kHxConfigUser, kTheme, theme) == 0;
    return (isRead && theme.asInt32() == 1) || !isPalette;
}
