// How filters are stored: the groups of their xrecords.
#pragma once

#include "host/db/kernel/stub.h"
#include "sdk/hxlyfilter.h"

namespace korvex {

inline constexpr wchar_t kFilterDictionary[] = L"ACLYDICTIONARY";
inline constexpr wchar_t kOlderFilterDictionary[] = L"ACAD_LAYERFILTERS";

/// What a record says.
struct FilterRecord {
    HxLyLayerFilter::Kind kind = HxLyLayerFilter::kProxy;
    std::wstring name;
    std::wstring expression;
    std::vector<HxDbStub*> layers;
    bool isSelected = false;  ///< its mark, 290
};

/// The entries of kFilterDictionary. A proxy for what is no xrecord or names another kind of filter.
FilterRecord readFilterRecord(HxDbStub& record);
/// The entries of kOlderFilterDictionary: patterns for name, colour, linetype, lineweight and plot style; as
/// a property filter with the expression that says the same. A proxy when it asks for states as well, since
/// what their bits mean is not known.
FilterRecord readOlderFilterRecord(HxDbStub& record);

/// The groups of a property filter or a group; those of `old` (empty for a new record) that say something
/// else stay in their places.
std::string filterGroups(const HxLyLayerFilter& filter, std::string_view old, const GroupFormat& format);
/// The groups with the selected mark in front, or without it.
std::string groupsWithMark(std::string_view old, bool isSelected, const GroupFormat& format);

/// The groups of an xrecord after its duplicates flag; null for other objects.
const std::string* xrecordGroups(HxDbStub& record);

}  // namespace korvex
