// Editing the layers of a saved state.
#include "layer_states/edit/edit_layer_state_dlg.h"

#include "frame/util/format_message.h"
#include "frame/util/resource_text.h"
#include "layer_states/capture/drawing_layers.h"
#include "layer_states/edit/edit_layer_state_list.h"
#include "layer_states/edit/layer_state_infos.h"
#include "layer_states/edit/select_add_layer_dlg.h"
#include "manager_ui/window/manager_controls.h"

#include "hxdbdatabase.h"
#include "hxdbentity.h"

#include <QAbstractButton>
#include <QLabel>

namespace {

constexpr QSize kIconSize(16, 16);

QIcon themedIcon(const char* name) {
    const QString mark = usesLightIcons(true) ? "" : "DARK_";
    return QIcon(QString(":/KvLayerManager/IDR_LSTATE_%1%2").arg(mark, name));
}

}  // namespace

CKvEditLayerStateDlg::CKvEditLayerStateDlg(QWidget* parent, const KvLayerStateInfoArray* entries,
                                           HxDbDatabase* database, const CStdStr<wchar_t>& stateName)
    : HxUiBaseDialog("IDD_EDITLAYERSTATE_DLG", parent), m_database(database), m_stateName(stateName),
      m_list(new CKvEditLayerStateListCtrl(this)), m_add(GetDlgItem<QAbstractButton>("IDC_LAYERSTATE_ADD")),
      m_remove(GetDlgItem<QAbstractButton>("IDC_LAYERSTATE_DEL")),
      m_count(GetDlgItem<QLabel>("IDC_LAYERSTATE_COUNT")) {
    m_list->setDatabase(database);
    putInPlace(GetDlgItem("IDC_LAYERSTATE_LIST"), *m_list);
    m_list->SetLayerStateInfoArray(CloneLayerStateInfoArray(entries));
}

KvLayerStateInfoArray* CKvEditLayerStateDlg::GetCloneLayerStateInfoArray() {
    return m_list->takeLayerStateInfoArray();
}

CStdStr<wchar_t> CKvEditLayerStateDlg::currentLayerName() const {
    const KvLayerStateInfoArray* const entries = m_list->GetLayerStateInfoArray();
    for (int i = 0; entries && i < entries->GetSize(); ++i) {
        if (entries->GetAt(i)->GetCurrentLayer() != 0) return entries->GetAt(i)->GetLayerName();
    }
    return {};
}

bool CKvEditLayerStateDlg::OnInitDialog() {
    const ModuleResources resources;
    HxUiBaseDialog::OnInitDialog();
    setWindowIcon(QIcon(":/KvLayerManager/IDR_TOOLBAR_FILTER_STATE_LAYER"));
    setWindowTitle(resourceText(kStrEditStateTitle) + QString::fromStdWString(m_stateName));
    if (!m_add || !m_remove || !m_count) return true;
    showIcons();
    connect(m_add, SIGNAL(clicked()), SLOT(OnButtonAdd()));
    connect(m_remove, SIGNAL(clicked()), SLOT(OnButtonDel()));
    connect(m_list, SIGNAL(addWanted()), SLOT(OnButtonAdd()));
    connect(m_list, SIGNAL(removeWanted()), SLOT(OnButtonDel()));
    connect(m_list, SIGNAL(edited()), SLOT(showCount()));
    connect(m_list->selectionModel(), SIGNAL(selectionChanged(QItemSelection, QItemSelection)),
            SLOT(showCount()));
    showCount();
    m_list->selectionModel()->setCurrentIndex(m_list->rows().index(0, kStateColName),
                                              QItemSelectionModel::NoUpdate);  // Del does nothing yet
    m_list->setFocus();
    widenFor(*m_list, *this);
    CenterWindow();
    return true;
}

void CKvEditLayerStateDlg::showIcons() {
    m_list->rows().setIcons(loadLayerIcons(usesLightIcons(true)));
    m_add->setIcon(themedIcon("ADD"));
    m_remove->setIcon(themedIcon("DEL"));
    for (QAbstractButton* const button : {m_add, m_remove}) {
        button->setText(QString());
        button->setIconSize(kIconSize);
    }
}

void CKvEditLayerStateDlg::showCount() {
    const std::size_t selected = m_list->selectedRowNumbers().size();
    const QStringList values = {QString::number(m_list->GetItemCount()), QString::number(selected)};
    m_count->setText(formatMessage(resourceText(kStrStateLayersCount), values));
    m_remove->setEnabled(selected > 0);
}

std::vector<CKvLayerStateInfo*> CKvEditLayerStateDlg::GetLayerInfo() const {
    std::vector<CKvLayerStateInfo*> found;
    const bool isLayout = m_database && !m_database->tilemode();
    KvDrawingLayers layers(m_database, isLayout ? hxdbGetCurVportId(m_database) : HxDbObjectId());
    for (std::size_t i = 0; i < layers.size(); ++i) {
        HxLyStateEntry& own = layers.at(i).own;
        if (!m_list->FindLayerIsEqual(own.layer))
            found.push_back(new CKvLayerStateInfo(std::move(own), -1, false));
    }
    return found;
}

void CKvEditLayerStateDlg::OnButtonAdd() {
    const ModuleResources resources;
    std::vector<CKvLayerStateInfo*> candidates = GetLayerInfo();
    if (candidates.empty()) {
        MessageBox(moduleString(kStrNoLayerToAdd).c_str(), nullptr, MB_OK | MB_ICONINFORMATION);
        return;
    }
    CKvSelectAddLayerDlg dialog(this, candidates, m_database);
    if (dialog.DoModal() == IDOK) {
        m_list->append(candidates);
        m_list->setFocus();
    } else {
        for (const CKvLayerStateInfo* const entry : candidates) {
            delete entry;
        }
    }
}

void CKvEditLayerStateDlg::OnButtonDel() { m_list->removeSelected(); }
