#include "layer_states/compare/differences_pane.h"

#include "frame/util/format_message.h"
#include "frame/util/resource_text.h"
#include "layer_states/compare/differences_model.h"
#include "manager_ui/cells/cell_delegate.h"
#include "manager_ui/cells/list_ctrl.h"

#include <QHeaderView>
#include <QToolButton>
#include <QVBoxLayout>

namespace {

constexpr int kShownRows = 6;
constexpr int kLeastRows = 2;

/// Whether lists are folded out; kept from one pane to the next.
bool isListUnfolded = false;

int heightOf(const QTableView& list, int rows) {
    const int row = list.verticalHeader()->defaultSectionSize();
    return list.horizontalHeader()->sizeHint().height() + rows * row + 2 * list.frameWidth();
}

}  // namespace

KvDifferencesPane::KvDifferencesPane(QWidget* parent)
    : QWidget(parent), m_line(new QToolButton(this)), m_list(nullptr), m_rows(new KvDifferencesModel) {
    const ModuleResources resources;
    m_list = new CKvListCtrl(m_rows, this);
    m_line->setObjectName("IDC_LAYERMAN_DIFFERS");
    m_line->setAutoRaise(true);
    m_line->setCheckable(true);
    m_line->setToolButtonStyle(Qt::ToolButtonTextBesideIcon);
    m_line->setFocusPolicy(Qt::StrongFocus);
    m_list->setObjectName("IDC_LAYERMAN_DIFFERENCES");
    m_list->setAccessibleName(resourceText(kStrDifferencesName));
    m_list->setItemDelegate(new KvCellDelegate(m_list));
    m_list->setSelectionMode(QAbstractItemView::SingleSelection);
    m_list->setColumnLetters({24, 20, 16, 16}, kDifferenceLayer);
    m_list->setMinimumHeight(heightOf(*m_list, kLeastRows));
    auto* const column = new QVBoxLayout(this);
    column->setContentsMargins(0, 0, 0, 0);
    column->addWidget(m_line);
    column->addWidget(m_list, 1);
    column->addStretch(0);
    m_line->setChecked(isListUnfolded);
    unfold(isListUnfolded);
    showNothing();
    connect(m_line, &QToolButton::toggled, this, [this](bool isChecked) {
        isListUnfolded = isChecked;
        unfold(isChecked);
        const int height = heightOf(*m_list, kShownRows) + layout()->spacing();
        emit heightChanged(isChecked ? height : -height);
    });
    connect(m_list->selectionModel(), &QItemSelectionModel::currentChanged, this,
            [this](const QModelIndex& current) {
                if (current.isValid()) emit layerChosen(m_rows->layerAt(current.row()));
            });
}

void KvDifferencesPane::unfold(bool isUnfolded) {
    m_line->setArrowType(isUnfolded ? Qt::DownArrow : Qt::RightArrow);
    m_list->setVisible(isUnfolded);
    setSizePolicy(QSizePolicy::Preferred, isUnfolded ? QSizePolicy::Expanding : QSizePolicy::Fixed);
    fillList();
}

void KvDifferencesPane::fillList() { m_rows->setDifferences(isListUnfolded ? m_differences : nullptr); }

void KvDifferencesPane::showNothing() {
    const ModuleResources resources;
    m_differences.reset();
    m_line->setText(resourceText(kStrDiffersNoState));
    m_line->setEnabled(isListUnfolded);
    fillList();
}

void KvDifferencesPane::showDifferences(KvStateDifferences differences) {
    const ModuleResources resources;
    m_differences = std::make_shared<KvStateDifferences>(std::move(differences));
    const std::size_t layers = m_differences->layers().size();
    const int text = layers == 0 ? kStrDiffersNone : layers == 1 ? kStrDiffersOne : kStrDiffersMany;
    m_line->setText(formatMessage(resourceText(text), {QString::number(layers)}));
    m_line->setEnabled(layers > 0 || isListUnfolded);
    m_line->setToolTip(resourceText(kStrDiffersTip));
    fillList();
}
