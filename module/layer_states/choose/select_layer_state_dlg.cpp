// Choosing which states of another drawing are imported.
#include "layer_states/choose/select_layer_state_dlg.h"

#include "frame/util/format_message.h"
#include "frame/util/resource_text.h"
#include "layer_states/choose/choose_states_model.h"
#include "manager_ui/cells/list_ctrl.h"

#include <QElapsedTimer>
#include <QKeyEvent>
#include <QLabel>
#include <QPushButton>
#include <QTimer>

#include <numeric>

namespace {

/// Counting stops for the user's events so often.
constexpr int kSliceMilliseconds = 30;

/// Space and a double click change ticks.
class ChooseStatesTable : public CKvListCtrl {
public:
    ChooseStatesTable(KvChooseStatesModel* rows, QWidget* parent)
        : CKvListCtrl(rows, parent), m_states(rows) {
        setColumnLetters({26, 8, 24, 20}, kChooseColDescription);
    }

protected:
    /// All selected rows get what the one with the focus has not.
    bool keyEdits(QKeyEvent* event) override {
        if (event->key() != Qt::Key_Space || event->modifiers() != Qt::NoModifier) return false;
        const int row = currentIndex().row();
        if (row < 0) return true;
        if (!selectionModel()->isRowSelected(row, {})) selectRowNumbers({row});
        m_states->tick(selectedPlaces(), !m_states->isTicked(m_states->placeAt(row)));
        return true;
    }
    void cellDoubleClicked(int row, int column) override {
        const int place = m_states->placeAt(row);
        if (place >= 0 && column != kChooseColName) m_states->tick({place}, !m_states->isTicked(place));
    }

private:
    KvChooseStatesModel* m_states;
};

}  // namespace

CKvSelectLayerStateDlg::CKvSelectLayerStateDlg(QWidget* parent, const KvLayerStateMap& ours,
                                               const KvLayerStateMap& theirs, HxDbDatabase* database)
    : HxUiBaseDialog("IDD_SELLAYERSTATE_DLG", parent), m_model(new KvChooseStatesModel(ours, theirs)),
      m_list(new ChooseStatesTable(m_model, this)), m_needs(database, theirs),
      m_isCounted(static_cast<std::size_t>(m_model->count())) {
    putInPlace(GetDlgItem("IDC_SELSTATE_LIST"), *m_list);
    if (m_model->count() == 1) tickAll(true);
}

std::vector<CKvLayerState*> CKvSelectLayerStateDlg::chosen() const {
    std::vector<CKvLayerState*> states;
    for (int place = 0; place < m_model->count(); ++place) {
        if (m_model->isTicked(place)) states.push_back(m_model->stateAt(place));
    }
    return states;
}

bool CKvSelectLayerStateDlg::OnInitDialog() {
    HxUiBaseDialog::OnInitDialog();
    connect(m_model, SIGNAL(ticked()), SLOT(ticksChanged()));
    if (QWidget* const all = GetDlgItem("IDC_SELSTATE_ALL")) {
        connect(all, SIGNAL(clicked()), SLOT(OnButtonAll()));
    }
    if (QWidget* const none = GetDlgItem("IDC_SELSTATE_NONE")) {
        connect(none, SIGNAL(clicked()), SLOT(OnButtonNone()));
    }
    if (m_model->count() > 0) m_list->setCurrentIndex(m_model->index(0, kChooseColName));
    m_list->setFocus();
    ticksChanged();
    widenFor(*m_list, *this);
    CenterWindow();
    return true;
}

void CKvSelectLayerStateDlg::OnButtonAll() { tickAll(true); }

void CKvSelectLayerStateDlg::OnButtonNone() { tickAll(false); }

void CKvSelectLayerStateDlg::tickAll(bool isTicked) {
    std::vector<int> places(static_cast<std::size_t>(m_model->count()));
    std::iota(places.begin(), places.end(), 0);
    m_model->tick(places, isTicked);
}

void CKvSelectLayerStateDlg::ticksChanged() {
    if (auto* const ok = GetDlgItem<QPushButton>("IDOK")) ok->setEnabled(!chosen().empty());
    countOn();
}

/// A while; the rest when the user's events are through.
void CKvSelectLayerStateDlg::countOn() {
    QElapsedTimer time;
    time.start();
    for (int place = 0; place < m_model->count(); ++place) {
        char& isCounted = m_isCounted[static_cast<std::size_t>(place)];
        const bool isWanted = m_model->isTicked(place);
        if (isWanted == (isCounted != 0)) continue;
        if (time.elapsed() > kSliceMilliseconds) {
            QTimer::singleShot(0, this, SLOT(countOn()));
            break;
        }
        isWanted ? m_needs.want(*m_model->stateAt(place)) : m_needs.unwant(*m_model->stateAt(place));
        isCounted = isWanted;
    }
    showSummary();
}

void CKvSelectLayerStateDlg::showSummary() {
    auto* const label = GetDlgItem<QLabel>("IDC_SELSTATE_SUMMARY");
    if (!label) return;
    int ticked = 0;
    bool isCounted = true;
    for (int place = 0; place < m_model->count(); ++place) {
        ticked += m_model->isTicked(place);
        isCounted =
            isCounted && m_model->isTicked(place) == (m_isCounted[static_cast<std::size_t>(place)] != 0);
    }
    const QStringList count = {QString::number(ticked), QString::number(m_model->count())};
    QStringList lacks;
    for (const int missing : m_needs.missing()) {
        lacks << QString::number(missing);
    }
    label->setText(
        formatMessage(resourceText(kStrChosenCount), count) + '\n' +
        (isCounted ? formatMessage(resourceText(kStrChosenLacks), lacks) : resourceText(kStrChosenCounting)));
}
