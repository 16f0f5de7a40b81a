// Rows of some data in an order of their own.
#pragma once

#include <QAbstractTableModel>

#include <cstdint>
#include <string_view>
#include <vector>

/// A table model that shows its data in the order of a column and leaves the data in theirs. Places are
/// numbers in the data.
class KvSortedRows : public QAbstractTableModel {
    Q_OBJECT
public:
    /// Sorts by the column, or the other way round when it is sorted by it already. Nothing for no column.
    void sectionClicked(int column);
    void sortBy(int column, bool ascending);
    int sortColumn() const { return m_sortColumn; }
    bool isAscending() const { return m_isAscending; }

    /// -1 for a row that there is not.
    int placeAt(int row) const;
    std::vector<int> placesAt(const std::vector<int>& rows) const;
    /// Ascending.
    std::vector<int> rowsOf(const std::vector<int>& places) const;

    int rowCount(const QModelIndex& parent = {}) const override;
    int columnCount(const QModelIndex& parent = {}) const override;
    QVariant headerData(int section, Qt::Orientation orientation, int role) const override;

protected:
    explicit KvSortedRows(std::vector<QString> headers, QObject* parent);

    virtual int placeCount() const = 0;
    /// Decides between rows that are equal in the sorted column, and is the order of column 0.
    virtual std::wstring_view nameAt(int place) const = 0;
    /// Places in the natural order of the names; equal names as they are in the data.
    virtual std::vector<std::uint32_t> placesByName() const;
    /// What the rows are sorted by in another column, by place.
    virtual std::vector<std::int64_t> keysOf(int column) const = 0;

    /// The data are others now: sorted as before.
    void reload();
    /// So many places have come behind the others; they are the last rows until the next sort.
    void showAppended(int count);
    void emitChanged();
    /// A text as a tool tip that shows it as it is, also if it looks like HTML.
    static QString tipOf(const QString& text);
    static std::vector<std::uint32_t> naturalOrder(const std::vector<std::wstring_view>& texts);
    /// Numbers that compare as the texts do in their natural order; the same one for what the host takes for
    /// the same name.
    static std::vector<std::int64_t> naturalRanks(const std::vector<std::wstring_view>& texts);

private:
    std::vector<int> sortedPlaces() const;
    const std::vector<std::uint32_t>& nameOrder() const;

    std::vector<QString> m_headers;
    std::vector<int> m_places;  ///< by row
    int m_sortColumn = 0;
    bool m_isAscending = true;
    mutable std::vector<std::uint32_t> m_nameOrder;  ///< places; empty: not known yet
};
