// The controls of the layer states manager and when they are enabled.
#include "layer_states/manager/layer_state_man_window.h"

#include "frame/util/resource_text.h"
#include "layer_states/compare/differences_pane.h"
#include "manager_ui/window/manager_controls.h"
#include "manager_ui/window/search_edit.h"

#include <QCheckBox>
#include <QKeyEvent>
#include <QLabel>
#include <QLayout>
#include <QMenu>
#include <QPushButton>
#include <QScreen>
#include <QShortcut>
#include <QToolButton>

#include <algorithm>
#include <utility>

namespace {

struct RestoreBox {
    const char* name;
    HxLyState::Property property;
};
constexpr RestoreBox kRestoreBoxes[] = {
    {"IDC_LAYERMAN_CHECK1", HxLyState::kOn},
    {"IDC_LAYERMAN_CHECK2", HxLyState::kFrozen},
    {"IDC_LAYERMAN_CHECK3", HxLyState::kCurrentViewportFrozen},
    {"IDC_LAYERMAN_CHECK4", HxLyState::kLocked},
    {"IDC_LAYERMAN_CHECK5", HxLyState::kPlot},
    {"IDC_LAYERMAN_CHECK6", HxLyState::kColor},
    {"IDC_LAYERMAN_CHECK7", HxLyState::kLinetype},
    {"IDC_LAYERMAN_CHECK8", HxLyState::kLineweight},
    {"IDC_LAYERMAN_CHECK9", HxLyState::kPlotStyle},
    {"IDC_LAYERMAN_CHECK10", HxLyState::kNewViewportFrozen},
    {"IDC_LAYERMAN_CHECK14", HxLyState::kTransparency},
};

constexpr char kNoXrefs[] = "IDC_LAYERMAN_CHECK11";
constexpr char kSearchClass[] = "CSearchEdit";
constexpr char kDifferencesClass[] = "KvDifferencesPane";
constexpr char kArea[] = "IDC_LAYERMAN_LAYPROP_GROUP";

/// Whether the restore area is folded away; kept from one opening to the next.
bool isContracted = false;

}  // namespace

void registerLayerStateWidgets() {
    hxuiRegisterWidget(kSearchClass, [](QWidget* parent) -> QWidget* { return new CSearchEdit(parent); });
    hxuiRegisterWidget(kDifferencesClass,
                       [](QWidget* parent) -> QWidget* { return new KvDifferencesPane(parent); });
}

void forgetLayerStateWidgets() {
    hxuiRegisterWidget(kSearchClass, nullptr);
    hxuiRegisterWidget(kDifferencesClass, nullptr);
}

KvLayerStateManWindow::KvLayerStateManWindow(CKvLayerStateManDlg& engine, QWidget* parent)
    : HxUiBaseDialog("IDD_LAYERSTATEMAN_DLG", parent), m_engine(engine), m_questions(this),
      m_list(new CKvLayerStateListCtrl(engine, this)) {
    m_engine.setQuestions(&m_questions);
    putInPlace(GetDlgItem("IDC_LAYERMAN_LIST"), *m_list);
}

KvLayerStateManWindow::~KvLayerStateManWindow() { m_engine.setQuestions(nullptr); }

// ---- controls ----

void KvLayerStateManWindow::DoDataExchange(CDataExchange* exchange) {
    DDX_Check(exchange, kNoXrefs, CKvLayerStateManDlg::m_bNoDisplayXrefChecked);
    DDX_Check(exchange, kTurnOffOthers, CKvLayerStateManDlg::m_bCloseNoFindChecked);
    DDX_Check(exchange, kAsOverrides, CKvLayerStateManDlg::m_bViewportReplaceChecked);
}

void KvLayerStateManWindow::findControls() {
    m_search = GetDlgItem<CSearchEdit>("IDC_LAYERMAN_SEARCH");
    if (auto* const label = GetDlgItem<QLabel>("IDC_LAYERMAN_LISTLABEL")) label->setBuddy(m_list);
    m_expand = GetDlgItem<QToolButton>("IDC_LAYERMAN_EXPAND");
    m_differences = GetDlgItem<KvDifferencesPane>("IDC_LAYERMAN_COMPARE");
    for (std::size_t i = 0; i < kBoxes; ++i) {
        m_boxes[i] = GetDlgItem<QCheckBox>(kRestoreBoxes[i].name);
    }
}

bool KvLayerStateManWindow::OnInitDialog() {
    CKvLayerStateManDlg::readOptions();
    HxUiBaseDialog::OnInitDialog();
    findControls();
    if (!m_search || !m_expand || !m_differences ||
        !std::all_of(m_boxes.begin(), m_boxes.end(), [](auto* box) { return box != nullptr; })) {
        return true;
    }
    const bool isLight = usesLightIcons(false);
    m_list->rows().setMark(QIcon(isLight ? ":/KvLayerManager/image_layerstate_current"
                                         : ":/KvLayerManager/image_layerstate_current_dark"));
    placePreview();
    connectControls();
    const int hide = isContracted || isTooTall() ? 1 : 0;
    HideRestoreLayerPropArea(hide, hide);
    showStates();
    selectFirst();
    m_list->setFocus();
    return true;
}

/// The state that was restored last, when it is listed.
void KvLayerStateManWindow::selectFirst() {
    const CKvLayerState* const restored = m_engine.states().find(m_engine.restoredName());
    const KvLayerStateListModel& rows = m_list->rows();
    m_list->SetLastSelectItem(rows.rowOf(restored) >= 0 ? restored : rows.stateAt(0));
}

void KvLayerStateManWindow::connectControls() {
    const std::pair<const char*, const char*> buttons[] = {
        {"IDC_LAYERMAN_NEW", SLOT(OnButtonNew())},
        {"IDC_LAYERMAN_SAVE", SLOT(OnButtonSave())},
        {"IDC_LAYERMAN_EDIT", SLOT(OnButtonEdit())},
        {"IDC_LAYERMAN_RENAME", SLOT(OnButtonRename())},
        {"IDC_LAYERMAN_DEL", SLOT(OnButtonDel())},
        {"IDC_LAYERMAN_IMPORT", SLOT(OnButtonImport())},
        {"IDC_LAYERMAN_EXPORT", SLOT(OnButtonExport())},
        {"IDC_LAYERMAN_RESTORE", SLOT(OnButtonRestore())},
        {"IDC_LAYERMAN_CLOSE", SLOT(OnButtonClose())},
        {"IDC_LAYERMAN_HELP", SLOT(OnHelp())},
        {"IDC_LAYERMAN_EXPAND", SLOT(OnButtonExpand())},
        {"IDC_LAYERMAN_SELECTALL", SLOT(OnButtonSelectall())},
        {"IDC_LAYERMAN_CLEARALL", SLOT(OnButtonClearall())},
    };
    for (const auto& [name, slot] : buttons) {
        if (QWidget* const button = GetDlgItem(name)) connect(button, SIGNAL(clicked()), slot);
    }
    connect(GetDlgItem(kNoXrefs), SIGNAL(toggled(bool)), SLOT(OnCheckNoXrefs(bool)));
    connect(GetDlgItem(kTurnOffOthers), SIGNAL(clicked(bool)), SLOT(OnCheckTurnOff(bool)));
    connect(m_list, SIGNAL(selectionMade()), SLOT(onSlotListItemChanged()));
    connect(m_list, &CKvLayerStateListCtrl::nameTyped, this, &KvLayerStateManWindow::OnLvnEndlabeledit);
    connect(m_list, &CKvLayerStateListCtrl::rowChosen, this, &KvLayerStateManWindow::OnButtonRestore);
    m_list->setContextMenuPolicy(Qt::CustomContextMenu);
    connect(m_list, SIGNAL(customContextMenuRequested(QPoint)), SLOT(showMenu(QPoint)));
    m_search->setPlaceholderText(resourceText(kStrStatesSearch));
    m_search->setToolTip(resourceText(kStrStatesSearchTip));
    connect(m_search, &CSearchEdit::searchTextChanged, m_list, &CKvLayerStateListCtrl::setSearch);
    connectDifferences();
    auto* const find = new QShortcut(QKeySequence::Find, this);
    connect(find, &QShortcut::activated, m_search, [this] {
        m_search->setFocus(Qt::ShortcutFocusReason);
        m_search->selectAll();
    });
}

/// What the buttons offer, as far as they are enabled.
void KvLayerStateManWindow::showMenu(const QPoint& at) {
    QMenu menu(this);
    for (const char* const name :
         {"IDC_LAYERMAN_RESTORE", "IDC_LAYERMAN_SAVE", "IDC_LAYERMAN_EDIT", "IDC_LAYERMAN_RENAME",
          "IDC_LAYERMAN_DEL", "IDC_LAYERMAN_NEW", "IDC_LAYERMAN_IMPORT", "IDC_LAYERMAN_EXPORT"}) {
        auto* const button = GetDlgItem<QPushButton>(name);
        if (!button) continue;
        if (button->objectName() == "IDC_LAYERMAN_NEW") menu.addSeparator();
        menu.addAction(button->text())->setData(button->objectName());
        menu.actions().last()->setEnabled(button->isEnabled());
    }
    menu.addSeparator();
    const std::vector<CKvLayerState*> selected = m_list->selectedStates();
    QAction* const copies = menu.addAction(resourceText(kStrMenuDuplicateState), this, SLOT(duplicate()));
    copies->setEnabled(selected.size() == 1);
    QAction* const adds = menu.addAction(resourceText(kStrMenuAddMissing), this, SLOT(addMissing()));
    adds->setEnabled(std::any_of(selected.begin(), selected.end(),
                                 [](const CKvLayerState* state) { return !state->isOfReference(); }));
    const QAction* const chosen = menu.exec(m_list->viewport()->mapToGlobal(at));
    const QByteArray name = chosen ? chosen->data().toString().toLatin1() : QByteArray();
    if (auto* const button = GetDlgItem<QPushButton>(name)) button->click();
}

// ---- which are enabled ----

void KvLayerStateManWindow::onSlotListItemChanged() {
    const std::vector<CKvLayerState*> selected = m_list->selectedStates();
    EnableButton(selected.empty() ? 0 : 1, selected.size() > 1 ? 1 : 0);
    enableActions(selected);
}

void KvLayerStateManWindow::EnableButton(int haveSelection, int multiSelection) {
    const bool isSingle = haveSelection != 0 && multiSelection == 0;
    const CKvLayerState* const state = isSingle ? m_list->selectedState() : nullptr;
    for (std::size_t i = 0; i < kBoxes; ++i) {
        const HxLyState::Property property = kRestoreBoxes[i].property;
        const bool hasPlace =
            property != HxLyState::kCurrentViewportFrozen || m_engine.GetIsModelSpace() == 0;
        m_boxes[i]->setEnabled(isSingle && hasPlace);
        if (state) m_boxes[i]->setChecked((state->GetLayerStateMake() & property) != 0);
    }
    for (const char* const name : {kTurnOffOthers, kAsOverrides, "IDC_LAYERMAN_RESTORE",
                                   "IDC_LAYERMAN_SELECTALL", "IDC_LAYERMAN_CLEARALL"}) {
        if (QWidget* const control = GetDlgItem(name)) control->setEnabled(isSingle);
    }
    CKvLayerStateManDlg::readOptions();
    if (auto* const turnOff = GetDlgItem<QCheckBox>(kTurnOffOthers)) {
        turnOff->setChecked(CKvLayerStateManDlg::m_bCloseNoFindChecked != 0);
    }
}

/// States of references stay as they are.
void KvLayerStateManWindow::enableActions(const std::vector<CKvLayerState*>& selected) {
    const bool isSingle = selected.size() == 1;
    const bool isOfReference = std::any_of(selected.begin(), selected.end(),
                                           [](const CKvLayerState* state) { return state->isOfReference(); });
    const bool hasOwn = std::any_of(selected.begin(), selected.end(),
                                    [](const CKvLayerState* state) { return !state->isOfReference(); });
    const auto enable = [&](const char* name, bool isEnabled, int tip) {
        QWidget* const button = GetDlgItem(name);
        if (!button) return;
        button->setEnabled(isEnabled);
        const int text = !isEnabled && isOfReference ? static_cast<int>(kStrStatesOfReference) : tip;
        button->setToolTip(text == 0 ? QString() : resourceText(text));
    };
    const bool canChange = isSingle && !isOfReference;
    enable("IDC_LAYERMAN_SAVE", canChange, 0);
    enable("IDC_LAYERMAN_EDIT", canChange, 0);
    enable("IDC_LAYERMAN_RENAME", canChange, kStrTipStatesRename);
    enable("IDC_LAYERMAN_DEL", hasOwn, kStrTipStatesDelete);
    if (QWidget* const button = GetDlgItem("IDC_LAYERMAN_EXPORT")) button->setEnabled(isSingle);
}

void KvLayerStateManWindow::tickAll(bool isTicked) {
    for (QCheckBox* const box : m_boxes) {
        box->setChecked(isTicked);
    }
}

std::int32_t KvLayerStateManWindow::tickedMask() const {
    std::int32_t mask = 0;
    for (std::size_t i = 0; i < kBoxes; ++i) {
        if (m_boxes[i]->isChecked()) mask |= kRestoreBoxes[i].property;
    }
    return mask;
}

// ---- the restore area ----

void KvLayerStateManWindow::OnButtonExpand() {
    isContracted = GetDlgItem(kArea)->isVisible();
    HideRestoreLayerPropArea(isContracted ? 1 : 0, 1);
}

bool KvLayerStateManWindow::isTooTall() const {
    return layout()->totalMinimumSize().height() > screen()->availableSize().height();
}

/// `resize`: the window becomes that much smaller or larger.
void KvLayerStateManWindow::HideRestoreLayerPropArea(int hide, int resize) {
    QWidget* const area = GetDlgItem(kArea);
    if (!area) return;
    const int step = (area->isVisible() ? area->height() : area->sizeHint().height()) + layout()->spacing();
    const int wanted = height() + (hide != 0 ? -step : step);
    area->setVisible(hide == 0);
    const QString icon = hide != 0 ? "IDB_LSTATE_EXPAND" : "IDB_LSTATE_CONTRACT";
    m_expand->setIcon(QIcon(":/KvLayerManager/" + icon + (usesLightIcons(false) ? "" : "_dark")));
    const QString tip = resourceText(hide != 0 ? kStrShowRestoreArea : kStrHideRestoreArea);
    m_expand->setToolTip(tip);
    m_expand->setAccessibleName(tip);
    if (resize != 0) resizeWithin(width(), wanted);
}

// ---- keys ----

bool KvLayerStateManWindow::PreTranslateMessage(QObject* receiver, QEvent* event) {
    if (event->type() != QEvent::KeyPress) return false;
    const auto* const key = static_cast<QKeyEvent*>(event);
    if (receiver == m_search &&
        (key->key() == Qt::Key_Return || key->key() == Qt::Key_Enter || key->key() == Qt::Key_Down)) {
        m_list->setFocus();  // what was found, not a restore of it
        return true;
    }
    return receiver == m_list && isListKey(key->key(), key->modifiers());
}

bool KvLayerStateManWindow::isListKey(int key, Qt::KeyboardModifiers modifiers) {
    if (modifiers != Qt::NoModifier || m_list->isEditing()) return false;
    switch (key) {
    case Qt::Key_Delete: OnButtonDel(); return true;
    case Qt::Key_F2: OnButtonRename(); return true;
    case Qt::Key_Insert: OnButtonNew(); return true;
    default: return false;
    }
}
