// Choosing layers of the drawing that a state is to hold, too.
#include "layer_states/edit/select_add_layer_dlg.h"

#include "frame/util/resource_text.h"
#include "manager_ui/cells/list_ctrl.h"
#include "model/opened_or_held.h"

#include "hxdbdatabase.h"
#include "hxdbsymtb.h"

#include <QPushButton>

namespace {

enum Column : int { kName, kDescription };

/// One row a layer.
class KvAddLayersModel : public KvSortedRows {
public:
    explicit KvAddLayersModel(std::vector<CKvLayerInfo> layers)
        : KvSortedRows({resourceText(kStrAddLayerName), resourceText(kStrAddLayerDescription)}, nullptr),
          m_layers(std::move(layers)) {
        reload();
    }

    QVariant data(const QModelIndex& index, int role) const override {
        const int place = placeAt(index.row());
        if (place < 0 || (role != Qt::DisplayRole && role != Qt::ToolTipRole)) return {};
        const QString shown = QString::fromStdWString(text(place, index.column()));
        return role == Qt::ToolTipRole ? tipOf(shown) : shown;
    }

protected:
    int placeCount() const override { return static_cast<int>(m_layers.size()); }
    std::wstring_view nameAt(int place) const override { return text(place, kName); }
    std::vector<std::int64_t> keysOf(int column) const override {
        std::vector<std::wstring_view> texts(m_layers.size());
        for (std::size_t place = 0; place < texts.size(); ++place) {
            texts[place] = text(static_cast<int>(place), column);
        }
        return naturalRanks(texts);
    }

private:
    const CStdStr<wchar_t>& text(int place, int column) const {
        const CKvLayerInfo& layer = m_layers[static_cast<std::size_t>(place)];
        return column == kDescription ? layer.Description : layer.LayerName;
    }

    std::vector<CKvLayerInfo> m_layers;
};

CStdStr<wchar_t> descriptionOf(const HxDbLayerTable& table, const CStdStr<wchar_t>& name) {
    HxDbObjectId id;
    if (table.getAt(name.c_str(), id) != Hx::eOk) return {};
    const OpenedOrHeld<HxDbLayerTableRecord> record(id, HxDb::kForRead);
    return record ? CStdStr<wchar_t>(record->description()) : CStdStr<wchar_t>();
}

std::vector<CKvLayerInfo> layerInfos(const std::vector<CKvLayerStateInfo*>& entries,
                                     const HxDbDatabase* database) {
    std::vector<CKvLayerInfo> infos(entries.size());
    const OpenedOrHeld<HxDbLayerTable> table(database ? database->layerTableId() : HxDbObjectId(),
                                             HxDb::kForRead);
    for (std::size_t i = 0; i < entries.size(); ++i) {
        infos[i].LayerName = entries[i]->GetLayerName();
        if (table) infos[i].Description = descriptionOf(*table.object(), infos[i].LayerName);
    }
    return infos;
}

/// Enter and a double click take what is selected.
class AddLayersTable : public CKvListCtrl {
public:
    AddLayersTable(KvSortedRows* rows, QDialog& dialog) : CKvListCtrl(rows, &dialog), m_dialog(dialog) {
        setColumnLetters({28, 20}, kDescription);
    }

protected:
    void cellDoubleClicked(int row, int /*column*/) override {
        auto* const ok = m_dialog.findChild<QPushButton*>("IDOK");
        if (row >= 0 && ok) ok->click();
    }

private:
    QDialog& m_dialog;
};

}  // namespace

CKvSelectAddLayerDlg::CKvSelectAddLayerDlg(QWidget* parent, std::vector<CKvLayerStateInfo*>& candidates,
                                           const HxDbDatabase* database)
    : HxUiBaseDialog("IDD_SELADDSTATE_DLG", parent), m_candidates(candidates),
      m_list(new AddLayersTable(new KvAddLayersModel(layerInfos(candidates, database)), *this)) {
    putInPlace(GetDlgItem("IDC_SELLAYER_LIST"), *m_list);
}

bool CKvSelectAddLayerDlg::OnInitDialog() {
    HxUiBaseDialog::OnInitDialog();
    connect(m_list->selectionModel(), SIGNAL(selectionChanged(QItemSelection, QItemSelection)),
            SLOT(selectionChanged()));
    selectionChanged();
    m_list->setFocus();
    widenFor(*m_list, *this);
    return true;
}

void CKvSelectAddLayerDlg::selectionChanged() {
    if (auto* const ok = GetDlgItem<QPushButton>("IDOK"))
        ok->setEnabled(m_list->selectionModel()->hasSelection());
}

/// The chosen ones keep the order that they came in.
void CKvSelectAddLayerDlg::OnOK() {
    std::vector<char> isChosen(m_candidates.size());
    for (const int place : m_list->selectedPlaces()) {
        isChosen[static_cast<std::size_t>(place)] = 1;
    }
    std::vector<CKvLayerStateInfo*> chosen;
    for (std::size_t i = 0; i < m_candidates.size(); ++i) {
        if (isChosen[i]) {
            chosen.push_back(m_candidates[i]);
        } else {
            delete m_candidates[i];
        }
    }
    m_candidates = std::move(chosen);
    HxUiBaseDialog::OnOK();
}
