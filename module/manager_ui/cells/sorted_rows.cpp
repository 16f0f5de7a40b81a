// Rows of some data in an order of their own.
#include "sorted_rows.h"

#include "manager_ui/grid/collation.h"
#include "manager_ui/grid/natural_keys.h"

#include "hxtext.h"

#include <QTextDocument>

#include <algorithm>
#include <numeric>
#include <unordered_map>

namespace {

struct SortItem {
    std::int64_t key;
    int name;  ///< place in the order of names
    int place;

    bool operator<(const SortItem& other) const {
        return key != other.key ? key < other.key : name < other.name;
    }
};

}  // namespace

KvSortedRows::KvSortedRows(std::vector<QString> headers, QObject* parent)
    : QAbstractTableModel(parent), m_headers(std::move(headers)) {}

// ---- order ----

/// Each text is looked at once, however many rows have it.
std::vector<std::int64_t> KvSortedRows::naturalRanks(const std::vector<std::wstring_view>& texts) {
    std::unordered_map<std::wstring_view, std::size_t> numbers;
    std::vector<std::wstring_view> different;
    std::vector<std::size_t> numberOf;
    numberOf.reserve(texts.size());
    for (const std::wstring_view text : texts) {
        const auto [found, isNew] = numbers.emplace(text, different.size());
        if (isNew) different.push_back(text);
        numberOf.push_back(found->second);
    }
    std::vector<std::int64_t> ranks(different.size());
    std::wstring before;
    std::int64_t rank = 0;
    for (const std::uint32_t number : naturalOrder(different)) {
        const std::wstring text(different[number]);
        if (!hxutEqualNames(text.c_str(), before.c_str())) ++rank;
        ranks[number] = rank;
        before = text;
    }
    std::vector<std::int64_t> all(texts.size());
    std::transform(numberOf.begin(), numberOf.end(), all.begin(),
                   [&ranks](std::size_t number) { return ranks[number]; });
    return all;
}

const std::vector<std::uint32_t>& KvSortedRows::nameOrder() const {
    if (m_nameOrder.empty()) m_nameOrder = placesByName();
    return m_nameOrder;
}

std::vector<std::uint32_t> KvSortedRows::placesByName() const {
    std::vector<std::wstring_view> names(static_cast<std::size_t>(placeCount()));
    for (std::size_t place = 0; place < names.size(); ++place) {
        names[place] = nameAt(static_cast<int>(place));
    }
    return naturalOrder(names);
}

std::vector<std::uint32_t> KvSortedRows::naturalOrder(const std::vector<std::wstring_view>& texts) {
    return ::naturalOrder(KvCollation(), texts, true);
}

std::vector<int> KvSortedRows::sortedPlaces() const {
    const std::vector<std::uint32_t>& byName = nameOrder();
    std::vector<int> places(byName.begin(), byName.end());
    if (m_sortColumn != 0) {
        const std::vector<std::int64_t> keys = keysOf(m_sortColumn);
        std::vector<SortItem> items(places.size());
        for (std::size_t i = 0; i < items.size(); ++i) {
            items[i] = {keys[byName[i]], static_cast<int>(i), places[i]};
        }
        std::sort(items.begin(), items.end());
        std::transform(items.begin(), items.end(), places.begin(),
                       [](const SortItem& item) { return item.place; });
    }
    if (!m_isAscending) std::reverse(places.begin(), places.end());
    return places;
}

void KvSortedRows::sectionClicked(int column) { sortBy(column, column != m_sortColumn || !m_isAscending); }

void KvSortedRows::sortBy(int column, bool ascending) {
    if (column < 0 || column >= columnCount()) return;
    m_sortColumn = column;
    m_isAscending = ascending;
    emit layoutAboutToBeChanged();
    const QModelIndexList before = persistentIndexList();
    std::vector<int> places;  // of the indexes
    for (const QModelIndex& at : before) {
        places.push_back(placeAt(at.row()));
    }
    m_places = sortedPlaces();
    std::vector<int> rows(m_places.size());
    for (std::size_t row = 0; row < rows.size(); ++row) {
        rows[static_cast<std::size_t>(m_places[row])] = static_cast<int>(row);
    }
    QModelIndexList after;
    for (int i = 0; i < before.size(); ++i) {
        const int place = places[static_cast<std::size_t>(i)];
        after << createIndex(rows[static_cast<std::size_t>(place)], before[i].column());
    }
    changePersistentIndexList(before, after);
    emit layoutChanged();
}

// ---- rows ----

int KvSortedRows::placeAt(int row) const {
    return row >= 0 && row < rowCount() ? m_places[static_cast<std::size_t>(row)] : -1;
}

std::vector<int> KvSortedRows::placesAt(const std::vector<int>& rows) const {
    std::vector<int> places(rows.size());
    std::transform(rows.begin(), rows.end(), places.begin(), [this](int row) { return placeAt(row); });
    return places;
}

std::vector<int> KvSortedRows::rowsOf(const std::vector<int>& places) const {
    std::vector<char> isWanted(m_places.size());
    for (const int place : places) {
        if (place >= 0 && place < rowCount()) isWanted[static_cast<std::size_t>(place)] = 1;
    }
    std::vector<int> rows;
    for (std::size_t row = 0; row < m_places.size(); ++row) {
        if (isWanted[static_cast<std::size_t>(m_places[row])]) rows.push_back(static_cast<int>(row));
    }
    return rows;
}

void KvSortedRows::reload() {
    beginResetModel();
    m_nameOrder.clear();
    m_places = sortedPlaces();
    endResetModel();
}

void KvSortedRows::showAppended(int count) {
    if (count <= 0) return;
    beginInsertRows({}, rowCount(), rowCount() + count - 1);
    m_nameOrder.clear();
    const std::size_t first = m_places.size();
    m_places.resize(first + static_cast<std::size_t>(count));
    std::iota(m_places.begin() + static_cast<std::ptrdiff_t>(first), m_places.end(), static_cast<int>(first));
    endInsertRows();
}

void KvSortedRows::emitChanged() {
    if (rowCount() > 0) emit dataChanged(createIndex(0, 0), createIndex(rowCount() - 1, columnCount() - 1));
}

QString KvSortedRows::tipOf(const QString& text) {
    return Qt::mightBeRichText(text) ? Qt::convertFromPlainText(text) : text;
}

int KvSortedRows::rowCount(const QModelIndex& parent) const {
    return parent.isValid() ? 0 : static_cast<int>(m_places.size());
}

int KvSortedRows::columnCount(const QModelIndex& parent) const {
    return parent.isValid() ? 0 : static_cast<int>(m_headers.size());
}

QVariant KvSortedRows::headerData(int section, Qt::Orientation orientation, int role) const {
    if (orientation != Qt::Horizontal || section < 0 || section >= columnCount()) return {};
    if (role == Qt::DisplayRole || role == Qt::ToolTipRole)
        return m_headers[static_cast<std::size_t>(section)];
    return {};
}
