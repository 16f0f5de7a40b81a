// Making and changing a property filter.
#pragma once

#include "manager_ui/filters/filter_table.h"

#include "hxdbid.h"
#include "hxdialog.h"

#include <vector>

class HxLyLayerFilter;
class KvLayerPropManager;
class QLabel;
class QLineEdit;
class QStringListModel;
class QTableWidget;

/// The filter's name and its expression, as a table of conditions and as text, whichever the user prefers,
/// with the layers that it accepts. OK is for a name that the filter can have and an expression that is
/// understood.
class KvPropertyFilterDialog : public HxUiBaseDialog {
    Q_OBJECT
public:
    /// `name` may be that of a filter of the manager: the one that is changed. `around` is the filter that it
    /// is nested in, or will be; null for none.
    KvPropertyFilterDialog(const KvLayerPropManager& manager, const QString& name, const QString& expression,
                           const HxLyLayerFilter* around, QWidget* parent);

    /// After IDOK.
    QString filterName() const { return m_name; }
    QString expression() const { return m_expression; }

protected:
    bool OnInitDialog() override;
    void DoDataExchange(CDataExchange* exchange) override;
    void OnOK() override;

private Q_SLOTS:
    void tableChanged();
    void expressionTyped(const QString& text);
    void removeRow();

private:
    void prepareTable();
    void showTable();
    void addEmptyRow();
    KvFilterTable readTable() const;
    void showMatches();
    QString nameTrouble(const QString& name) const;

    const KvLayerPropManager& m_manager;
    QString m_name, m_expression;
    QString m_nameBefore;
    std::vector<HxDbObjectId> m_layers;  ///< what the filter chooses from
    QString m_trouble;                   ///< of the expression; empty: none
    QLineEdit* m_nameField = nullptr;
    QLineEdit* m_expressionField = nullptr;
    QTableWidget* m_table = nullptr;
    QLabel* m_note = nullptr;
    QLabel* m_count = nullptr;
    QStringListModel* m_matches;
};
