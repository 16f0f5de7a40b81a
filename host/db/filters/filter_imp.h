// A filter's own side: what kind it is, its place in the tree, the record that it was read from.
#pragma once

#include "host/db/filters/layer_expression.h"

#include <memory>
#include <unordered_set>

namespace korvex {

/// Where a filter is stored.
struct StoredFilter {
    HxDbStub* record;
    HxDbStub* dictionary;  ///< that the record is an entry of
};

}  // namespace korvex

class HxLyLayerFilter::Imp {
public:
    explicit Imp(HxLyLayerFilter::Kind of) : kind(of) {}
    /// Makes a filter of any kind but a group.
    static std::unique_ptr<HxLyLayerFilter> make(HxLyLayerFilter::Kind kind, std::wstring name);

    bool isUsers() const { return kind >= kProperty; }
    HxLyLayerFilter* root();
    /// The drawing of the tree; null for a filter in no tree.
    HxDbDatabase* treeDatabase();
    /// Takes what was read, however odd.
    void setExpression(std::wstring text);
    void setLayers(std::vector<HxDbStub*> ids);
    void append(std::unique_ptr<HxLyLayerFilter> filter);
    /// At a place among the nested ones.
    void insert(std::unique_ptr<HxLyLayerFilter> filter, int place);
    /// The filter's own test, whatever it is nested in.
    bool accepts(const HxDbLayerTableRecord& layer);

    HxLyLayerFilter::Kind kind;
    CStdStr<wchar_t> name;
    CStdStr<wchar_t> expressionText;
    korvex::LayerExpression expression;
    HxLyExpressionError error;
    std::vector<HxDbStub*> layers;  ///< groups: in stored order, erased ones too
    std::unordered_set<const HxDbStub*> layerSet;
    korvex::ActiveViewport viewport;

    HxLyLayerFilter* self = nullptr;
    HxLyLayerFilter* parent = nullptr;
    HxArray<HxLyLayerFilter*> nested;

    HxDbStub* record = nullptr;     ///< what it is stored in; null while it is not
    bool isOlder = false;           ///< that record is of the older kind, which holds no tree
    HxDbStub* olderCopy = nullptr;  ///< a record of the older kind with the same name, for older programs

    HxDbDatabase* database = nullptr;  ///< of roots
    /// Of roots: the records that the tree was read from or stored in.
    std::vector<korvex::StoredFilter> known;
};

namespace korvex {

/// The filters below one, itself included, each before what is nested in it.
void collectFilters(HxLyLayerFilter& filter, std::vector<HxLyLayerFilter*>& all);

/// Whether a user's filter may have the name, apart from other filters.
bool isValidFilterName(std::wstring_view name);

/// The system filters of a new tree, the dynamic ones included.
std::unique_ptr<HxLyLayerFilter> systemFilters(HxDbDatabase& database);

}  // namespace korvex
