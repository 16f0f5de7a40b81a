// Layer filters: the tree of filters that a drawing holds, what each of them accepts, storing it.
#pragma once

#include "hxdbsymtb.h"

class HxLyLayerFilterManager;

/// Where and why an expression cannot be understood.
struct HxLyExpressionError {
    int position = -1;  ///< of the character at fault, from 0; the length of the text at its end; -1 for none
    CStdStr<wchar_t> reason;  ///< in English, without a full stop
};

/// A layer filter with the filters nested in it; of this class itself: a property filter, which accepts the
/// layers that its expression is true for.
///
/// A filter owns the filters nested in it: deleting it deletes them and takes it out of its parent. Trees
/// come from HxLyLayerFilterManager::getFilters and live until the caller deletes their root; deletion,
/// generateNested and removeNested apart nothing makes a pointer into them invalid, neither undo nor a change
/// of the drawing. A tree does not follow what happens to the drawing's stored filters: get a new one then.
/// It must be deleted before its database is.
///
/// Expression: conditions NAME=="A-*" joined by AND, OR, NOT and parentheses (NOT before AND before OR; no
/// matter of case). An empty one accepts every layer. Comparisons are ==, !=, <, >, <=, >=; values stand in
/// quotes, which single words may lack. Texts are compared as patterns, without regard to case: # a digit, @
/// a letter, . another character than these, * any run, ? any character, [abc] [a-c] one of these, [~abc]
/// none of these, ~ in front: all but what follows, "," between alternatives, ` before a character: that
/// character.
///
/// | Property | Value |
/// | --- | --- |
/// | NAME, LINETYPE, PLOTSTYLE, DESCRIPTION | text |
/// | COLOR | index, "Red" ..., "r,g,b", colour of a book, "BOOK$COLOUR" |
/// | LINEWEIGHT | "0.25 mm", "0.25", "Default" |
/// | TRANSPARENCY | per cent |
/// | ON, OFF, FROZEN, LOCKED, PLOT or PLOTTABLE, NEWVPFROZEN, USED, XREF | "True" or "False" |
/// | STATUS | "Current", "Used", "Unused" |
/// | VPFROZEN, VPOVERRIDE | "True" or "False": frozen in, with an override in the active viewport |
/// | VPCOLOR, VPLINETYPE, VPLINEWEIGHT, VPTRANSPARENCY, VPPLOTSTYLE | as above, in the active viewport |
///
/// The active viewport is hxdbGetCurVportId's; in model space nothing is frozen in it and nothing overridden.
/// USED and STATUS are as of the last HxDbLayerTable::generateUsageData.
class HXSDK_API HxLyLayerFilter : public HxRxObject {
public:
    HX_DECLARE_MEMBERS(HxLyLayerFilter)

    enum Kind {
        kAll,                ///< the root, "<All": every layer
        kAllUsed,            ///< "<AllUsed": layers in use
        kAllNonXref,         ///< "<AllNonXref": layers of the drawing itself
        kXrefRoot,           ///< "<XrefRoot": layers of external references; nested: one for each reference
        kXref,               ///< nested in it: the layers of the reference whose name it has
        kViewportOverrides,  ///< "<ViewportOverrides": layers with overrides in the active viewport
        kProperty,           ///< a user's
        kGroup,              ///< a user's, HxLyLayerGroup
        kProxy,              ///< stored by a program that the host does not know; accepts no layer
    };

    /// A user's property filter without name, in no tree, with an empty expression.
    HxLyLayerFilter();
    ~HxLyLayerFilter() override;
    HxLyLayerFilter(const HxLyLayerFilter&) = delete;
    HxLyLayerFilter& operator=(const HxLyLayerFilter&) = delete;

    Kind kind() const;
    /// System filters have the names above, which begin with "<" and are not for users' eyes.
    const CStdStr<wchar_t>& name() const;
    /// eRefused when allowRename() is false; eInvalidInput for an empty name, one of more than 255
    /// characters, with control characters or "<" in front; eDuplicateKey when another filter of the tree has
    /// it (case ignored).
    Hx::ErrorStatus setName(const wchar_t* name);

    /// Empty for all but property filters; those of drawings older than R2005 get one that says the same.
    const CStdStr<wchar_t>& filterExpression() const;
    /// Takes the expression, null for an empty one. eInvalidInput when it cannot be understood: it is taken
    /// all the same, the filter accepts nothing then, and `error` (may be null) tells why. eNotApplicable for
    /// another kind than a property filter; nothing is changed.
    Hx::ErrorStatus setFilterExpression(const wchar_t* expression, HxLyExpressionError* error = nullptr);
    /// What is wrong with the expression that it has; position -1 for nothing.
    const HxLyExpressionError& expressionError() const;

    /// The layer passes. It must be open in any mode. What is nested in a user's filter passes only what that
    /// filter accepts too. False for null. A new filter in no tree reads the viewport of the layer's drawing.
    bool filter(const HxDbLayerTableRecord* layer) const;

    bool allowRename() const;
    bool allowDelete() const;
    /// New filters may be nested in it: in the root, property filters and groups. In a group only groups and
    /// property filters that narrow it down make sense; both are allowed.
    bool allowNested() const;
    /// Made from the drawing by generateNested, not stored.
    bool dynamicallyGenerated() const;
    /// It holds the ids of its layers (HxLyLayerGroup).
    bool isIdFilter() const;
    bool isProxy() const;

    /// Null for a root and a filter in no tree.
    HxLyLayerFilter* parent() const;
    /// System filters come first in the root, the others in stored order.
    const HxArray<HxLyLayerFilter*>& getNestedFilters() const;
    /// Appends a user's filter, which this one owns from now on. eInvalidInput for null, a system filter, one
    /// without name, one that has a parent or is an ancestor, a group with layers of another drawing;
    /// eRefused when allowNested() is false; eDuplicateKey when a filter of the tree has the name of it or of
    /// one nested in it. On failure it stays the caller's.
    Hx::ErrorStatus addNested(HxLyLayerFilter* filter);
    /// Takes a filter out, which is the caller's then, with what is nested in it. It may be added elsewhere,
    /// which moves it. eInvalidInput for one that is not nested here; eRefused when its allowDelete() is
    /// false.
    Hx::ErrorStatus removeNested(HxLyLayerFilter* filter);
    /// Brings the dynamic filters up to date with the drawing: in "<XrefRoot" one for each attached external
    /// reference, with its name; in the root "<ViewportOverrides", which is there while a layer has overrides
    /// in the active viewport, and those of "<XrefRoot". Filters that stay keep their addresses, those whose
    /// ground is gone are deleted. eNotApplicable for filters that have no dynamic ones.
    Hx::ErrorStatus generateNested();

    class Imp;
    Imp* imp() const { return m_imp; }  ///< the host's own side; of no use to modules

protected:
    explicit HxLyLayerFilter(Imp* imp);

private:
    Imp* m_imp;
};

/// A filter that accepts the layers that were put into it, kept by id.
class HXSDK_API HxLyLayerGroup : public HxLyLayerFilter {
public:
    HX_DECLARE_MEMBERS(HxLyLayerGroup)
    /// Empty, without name, in no tree.
    HxLyLayerGroup();

    /// eNullObjectId; eWrongClass for anything but a layer; eInvalidInput for one of another drawing than the
    /// group's other layers or its tree; eWasErased; eDuplicateKey when it is in the group already.
    Hx::ErrorStatus addLayerId(HxDbObjectId layer);
    /// eKeyNotFound.
    Hx::ErrorStatus removeLayerId(HxDbObjectId layer);
    /// Those of the layers that are in the group; at once, for many.
    void removeLayerIds(const HxArray<HxDbObjectId>& layers);
    bool containsLayerId(HxDbObjectId layer) const;
    /// In stored order, without layers that are erased now.
    void layerIds(HxArray<HxDbObjectId>& ids) const;
};

/// The filters of one drawing: HxDbDatabase::layerFilterManager.
class HXSDK_API HxLyLayerFilterManager {
public:
    explicit HxLyLayerFilterManager(HxDbDatabase* database) : m_database(database) {}
    HxLyLayerFilterManager(const HxLyLayerFilterManager&) = delete;
    HxLyLayerFilterManager& operator=(const HxLyLayerFilterManager&) = delete;

    /// Makes a new tree from what the drawing holds. `root` is the caller's, to be deleted; `current` is the
    /// filter of the tree that was selected when it was stored last, the root when none was.
    Hx::ErrorStatus getFilters(HxLyLayerFilter*& root, HxLyLayerFilter*& current) const;

    /// Stores the tree of users' filters and which filter is selected; the tree stays the caller's. What did
    /// not change since the tree was read, or was stored last, is not written. Records of filters that were
    /// taken out of the tree are erased; records that others stored meanwhile stay. One undo step, or none
    /// when nothing changed; nothing is changed on failure.
    ///
    /// The layer table and the records must not be open, but may be open for read by the top transaction or
    /// for write. eInvalidInput for null, a root that is none of this drawing, a current filter that is not
    /// in its tree; eNotApplicable for filters in a drawing older than R13, which has no place for them;
    /// statuses of hxdbOpenObject.
    Hx::ErrorStatus setFilters(HxLyLayerFilter* root, const HxLyLayerFilter* current);

private:
    HxDbDatabase* m_database;
};
