// The order of two layers by any column of the grid.
#pragma once

#include "hxcm.h"
#include "hxdbsymtb.h"

#include <locale>
#include <memory>
#include <string>
#include <vector>

class HxDbDatabase;
class KvLayerData;
class KvLayerListCtrl;

/// The user's letters: lower case and collation, as the environment's locale has them; "C" where that does
/// not exist. Looking up a facet and comparing single letters are dear: they are done once for each letter.
class KvCollation {
public:
    KvCollation();
    /// For a locale by name; std::runtime_error when there is none.
    explicit KvCollation(const char* locale);
    ~KvCollation();
    KvCollation(const KvCollation&) = delete;
    KvCollation& operator=(const KvCollation&) = delete;

    /// -1, 0 or 1: whole texts in lower case.
    int compareTexts(const std::wstring& a, const std::wstring& b) const;
    /// -1, 0 or 1: digits as numbers, other letters one by one in lower case. When one text ends before
    /// the other and they are equal so far, the one with fewer letters is the smaller.
    int compareNatural(const std::wstring& a, const std::wstring& b) const;

private:
    class Letters;
    void open(const std::locale& locale);
    int compareLetters(wchar_t a, wchar_t b) const;

    std::locale m_locale;
    const std::ctype<wchar_t>* m_ctype = nullptr;
    const std::collate<wchar_t>* m_collate = nullptr;
    std::unique_ptr<Letters> m_letters;
};

/// What a layer is compared by.
struct KvLayerSortKey {
    bool isOpened = false;     ///< its record could be opened
    bool isComparable = true;  ///< false: equal to every other (linetype that is gone, no active viewport)
    int number = 0, second = 0;
    HxCmColor color;
    std::wstring text;
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

private:
    int compare(const KvLayerSortKey& a, const KvLayerSortKey& b) const;
    void readKey(const HxDbLayerTableRecord& layer, KvLayerSortKey& key) const;

    int m_column;
    bool m_ascending;
    HxDbDatabase* m_database;
    HxDbTransactionManager* m_transactions;
    bool m_isLayout;
    HxDbObjectId m_viewport;
    std::shared_ptr<const KvCollation> m_collation;
};

/// The layers in the order of the comparison; every layer is read once.
void sortLayers(std::vector<KvLayerData*>& layers, const MyComp& order);
