#include "layer_states/save/save_layer_state_dlg.h"

#include "frame/util/resource_text.h"

#include <QComboBox>
#include <QLineEdit>
#include <QPushButton>

namespace {

constexpr int kLongestName = 255;

CStdStr<wchar_t> trimmed(const QString& text) {
    CStdStr<wchar_t> wide(text.toStdWString().c_str());
    wide.Trim();
    return wide;
}

}  // namespace

CKvSaveLayerStateDlg::CKvSaveLayerStateDlg(QWidget* parent, KvLayerStateMap& states, HxDbDatabase* database,
                                           const CStdStr<wchar_t>& currentLayerName)
    : HxUiBaseDialog("IDD_LAYERSTATESAVE_DLG", parent), m_states(states), m_database(database),
      m_currentLayerName(currentLayerName) {}

void CKvSaveLayerStateDlg::DoDataExchange(CDataExchange* exchange) {
    DDX_Control(exchange, "IDC_LAYERSTATESAVE_COMBO", m_combo);
    DDX_Control(exchange, "IDC_LAYERSTATESAVE_EDIT", m_description);
}

bool CKvSaveLayerStateDlg::OnInitDialog() {
    HxUiBaseDialog::OnInitDialog();
    if (!m_combo || !m_description) return true;
    m_combo->lineEdit()->setMaxLength(kLongestName);
    m_combo->setCompleter(nullptr);  // it would put what is there in the place of what is typed
    FillLayerStateCombo();
    m_combo->setCurrentIndex(-1);
    m_combo->setFocus();
    bindSingals();
    enableOk();
    return true;
}

void CKvSaveLayerStateDlg::bindSingals() {
    connect(m_combo, SIGNAL(currentIndexChanged(int)), SLOT(OnComboSelchange()));
    connect(m_combo, &QComboBox::editTextChanged, this, &CKvSaveLayerStateDlg::enableOk);
    if (QWidget* const help = GetDlgItem("IDC_LAYERMAN_HELP")) {
        connect(help, SIGNAL(clicked()), SLOT(OnHelp()), Qt::UniqueConnection);
    }
}

/// Those that can be saved over.
void CKvSaveLayerStateDlg::FillLayerStateCombo() {
    for (std::size_t i = 0; i < m_states.size(); ++i) {
        const CKvLayerState& state = *m_states.at(i);
        if (!state.isHidden() && !state.isOfReference()) {
            m_combo->addItem(QString::fromStdWString(state.GetLayerStateName()));
        }
    }
}

void CKvSaveLayerStateDlg::enableOk() {
    if (auto* const ok = GetDlgItem<QPushButton>("IDOK")) {
        ok->setEnabled(!trimmed(m_combo->currentText()).empty());
    }
}

void CKvSaveLayerStateDlg::OnComboSelchange() {
    const CKvLayerState* const state = FindExistLayerState(trimmed(m_combo->currentText()));
    if (state) m_description->setText(QString::fromStdWString(state->GetDescription()));
}

bool CKvSaveLayerStateDlg::refuse(const CStdStr<wchar_t>& text) {
    MessageBox(text.c_str(), nullptr, MB_OK | MB_ICONEXCLAMATION);
    if (m_combo) m_combo->setFocus();
    return false;
}

bool CKvSaveLayerStateDlg::CheckInvalidCharacters(const CStdStr<wchar_t>& name) {
    switch (saveRefusal(m_states, name)) {
    case KvSaveRefusal::badName: return refuse(badStateNameText());
    case KvSaveRefusal::fixedState: {
        CStdStr<wchar_t> text;
        text.Format(moduleString(kStrSaveStateRefused).c_str(), name.c_str());
        return refuse(text);
    }
    case KvSaveRefusal::none: break;
    }
    return true;
}

CKvLayerState* CKvSaveLayerStateDlg::CreateLayerState(const CStdStr<wchar_t>& name,
                                                      const CStdStr<wchar_t>& description) {
    return createLayerState(m_database, m_states, {name, description, m_currentLayerName, m_space});
}

bool CKvSaveLayerStateDlg::OverwriteLayerState(CKvLayerState* state, const CStdStr<wchar_t>& name,
                                               const CStdStr<wchar_t>& description, bool headerOnly) {
    const KvStateToSave saved{name, description, m_currentLayerName, m_space};
    return overwriteLayerState(m_database, m_states, state, saved, headerOnly);
}

int CKvSaveLayerStateDlg::DoNewState(const wchar_t* name, const wchar_t* description, int) {
    m_name = name;
    m_name.Trim();
    if (!CheckInvalidCharacters(m_name)) return 0;
    CKvLayerState* const existing = FindExistLayerState(m_name);
    m_isCreate = existing ? 0 : 1;
    const bool isSaved = existing ? OverwriteLayerState(existing, m_name, description, false)
                                  : CreateLayerState(m_name, description) != nullptr;
    return isSaved ? 1 : 0;
}

void CKvSaveLayerStateDlg::OnOK() {
    if (!m_combo || !m_description) return;
    const CStdStr<wchar_t> name = trimmed(m_combo->currentText());
    if (!CheckInvalidCharacters(name)) return;
    if (LayerStateIsExist(name)) {
        CStdStr<wchar_t> question;
        question.Format(moduleString(kStrOverwriteState).c_str(), name.c_str());
        if (MessageBox(question.c_str(), nullptr, MB_OKCANCEL | MB_ICONQUESTION) != IDOK) return;
    }
    if (DoNewState(name.c_str(), trimmed(m_description->text()).c_str(), 0) != 0) HxUiBaseDialog::OnOK();
}
