// The order of two layers by any column of the grid.
#pragma once

#include "collation.h"

#include "hxcm.h"
#include "hxdbsymtb.h"

#include <memory>
#include <string>
#include <vector>

class HxDbDatabase;
class KvLayerData;
class KvLayerListCtrl;

/// What a layer is compared by.
struct KvLayerSortKey {
    bool isOpened = false;     ///< its record could be opened
    bool isComparable = true;  ///< false: equal to every other (linetype that is gone, no active viewport)
    std::int64_t number = 0;   ///< flags, numbers, colours
    std::wstring text;         ///< counts when the numbers are equal
    std::wstring name;
};

/// The comparison of the grid's rows. Not a strict ordering when records can not be opened: such a layer goes
/// before every other, and the other way round.
class MyComp {
public:
    /// `column` is a KvLayerColumn; the database and its active viewport say what a layout's columns hold.
    /// The grid's transaction (null for a palette) is where records come from.
    MyComp(int column, bool ascending, const KvLayerListCtrl* grid);
    MyComp(int column, bool ascending, HxDbDatabase* database, class HxDbTransactionManager* transactions);

    /// True when a goes before b. Opens both records.
    bool lessthan(KvLayerData* a, KvLayerData* b) const;
    /// -1, 0 or 1.
    static int colorComp(const HxCmColor& x, const HxCmColor& y);

    /// The same in two steps, for sorting: the records are opened once for each layer.
    KvLayerSortKey keyOf(KvLayerData* layer) const;
    bool lessthan(const KvLayerSortKey& a, const KvLayerSortKey& b) const;
    /// The column's part of it, without names: -1, 0 or 1. For all columns but Name.
    int compareValues(const KvLayerSortKey& a, const KvLayerSortKey& b) const;
    /// What goes before what when it compares so.
    bool goesBefore(int order) const { return m_ascending ? order < 0 : order > 0; }
    bool isByName() const;
    HxDbTransactionManager* transactions() const { return m_transactions; }
    const KvCollation& collation() const { return *m_collation; }

private:
    void readKey(const HxDbLayerTableRecord& layer, KvLayerSortKey& key) const;

    int m_column;
    bool m_ascending;
    HxDbDatabase* m_database;
    HxDbTransactionManager* m_transactions;
    bool m_isLayout;
    HxDbObjectId m_viewport;
    std::shared_ptr<const KvCollation> m_collation;
};

/// A number that compares as MyComp::colorComp does with the colours.
std::int64_t colorSortNumber(const HxCmColor& color);

/// The layers in the order of the comparison; every layer is read once.
void sortLayers(std::vector<KvLayerData*>& layers, const MyComp& order);
