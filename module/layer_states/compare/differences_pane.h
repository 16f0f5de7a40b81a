// The line that tells how many layers differ from a state, and its fold-out list.
#pragma once

#include "layer_states/compare/state_differences.h"

#include <QWidget>

#include <memory>

class KvDifferencesModel;
class CKvListCtrl;
class QToolButton;

/// What differs is told by a button that folds the list out; whether it is folded out is kept from one pane
/// to the next. Rows are made for a list that is folded out only.
class KvDifferencesPane : public QWidget {
    Q_OBJECT
public:
    explicit KvDifferencesPane(QWidget* parent = nullptr);

    void showDifferences(KvStateDifferences differences);
    /// There is no single state to compare with.
    void showNothing();

Q_SIGNALS:
    /// The user has gone to a row of this layer.
    void layerChosen(const CStdStr<wchar_t>& layer);
    /// The list was folded out or in, and wants so much more height.
    void heightChanged(int by);

private:
    void unfold(bool isUnfolded);
    void fillList();

    std::shared_ptr<const KvStateDifferences> m_differences;  ///< null: no single state
    QToolButton* m_line;
    CKvListCtrl* m_list;
    KvDifferencesModel* m_rows;
};
