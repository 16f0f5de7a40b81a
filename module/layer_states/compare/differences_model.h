// The rows of what differs between a state and the drawing.
#pragma once

#include "layer_states/compare/state_differences.h"
#include "manager_ui/cells/sorted_rows.h"

#include <memory>

enum KvDifferenceColumn : int {
    kDifferenceLayer,
    kDifferenceProperty,
    kDifferenceInState,
    kDifferenceInDrawing,
    kDifferenceColumnCount,
};

/// One row a layer and property, with texts that are made when they are asked for; a layer that the drawing
/// lacks has one row.
class KvDifferencesModel : public KvSortedRows {
    Q_OBJECT
public:
    explicit KvDifferencesModel(QObject* parent = nullptr);

    /// Null: no rows.
    void setDifferences(std::shared_ptr<const KvStateDifferences> differences);
    /// Empty for a row that there is not.
    CStdStr<wchar_t> layerAt(int row) const;

    QVariant data(const QModelIndex& index, int role) const override;
    Qt::ItemFlags flags(const QModelIndex& index) const override;

protected:
    int placeCount() const override { return static_cast<int>(m_rows.size()); }
    std::wstring_view nameAt(int place) const override;
    std::vector<std::uint32_t> placesByName() const override;
    std::vector<std::int64_t> keysOf(int column) const override;

private:
    struct Row {
        std::uint32_t layer;  ///< place among the differing ones
        std::int32_t property;
    };
    QString textOf(int place, int column) const;

    std::shared_ptr<const KvStateDifferences> m_differences;
    std::vector<Row> m_rows;
    bool m_inInches = false;
};
