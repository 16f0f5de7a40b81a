// Setting what a state's entry says on a layer's record.
#pragma once

#include "hxdbdatabase.h"
#include "hxlystate.h"

#include <string>
#include <unordered_map>

class HxDbLayerTableRecord;

/// Sets values on layers of one drawing; linetypes and plot styles are looked up once for each name.
class KvLayerStateValues {
public:
    /// With a viewport, what a viewport can override (colour, linetype, lineweight, transparency, plot style)
    /// is set there.
    explicit KvLayerStateValues(HxDbDatabase& database, HxDbObjectId viewport = {})
        : m_database(database), m_viewport(viewport) {}

    /// Sets the `wanted` properties (HxLyState::Property) of an entry on a layer that is open for write. What
    /// the drawing's version cannot hold is left out. False when the layer refused something else.
    bool apply(HxDbLayerTableRecord& layer, const HxLyStateEntry& entry, std::int32_t wanted);

    /// A linetype for a layer: of that name, or of the layer's external reference; null id when there is
    /// none.
    HxDbObjectId findLinetypeFor(const HxLyStateEntry& entry) { return linetypeKnownFor(entry); }
    /// The same, or one that is made: a solid line. "Continuous" for a name that no linetype can have.
    HxDbObjectId linetypeFor(const HxLyStateEntry& entry);
    /// A plot style of a drawing with named ones, null id when there is none of that name.
    HxDbObjectId GetPlotStyleObjId(const CStdStr<wchar_t>& name);

private:
    /// What findLinetypeFor gives, where it is kept.
    HxDbObjectId& linetypeKnownFor(const HxLyStateEntry& entry);
    bool SetCurrentVpLayerColor(HxDbLayerTableRecord& layer, const HxCmColor& color);
    bool SetCurrentVpLayerLinetype(HxDbLayerTableRecord& layer, HxDbObjectId linetype);
    bool SetCurrentVpLayerLineweight(HxDbLayerTableRecord& layer, HxDb::LineWeight weight);
    bool SetCurrentVpLayerTransparency(HxDbLayerTableRecord& layer, const HxCmTransparency& transparency);
    bool SetCurrentVpLayerPlotstyle(HxDbLayerTableRecord& layer, HxDbObjectId style);
    bool applyFlags(HxDbLayerTableRecord& layer, const HxLyStateEntry& entry, std::int32_t wanted);
    HxDbObjectId CreateNewLineType(const CStdStr<wchar_t>& name) const;

    HxDbDatabase& m_database;
    HxDbObjectId m_viewport;
    std::unordered_map<std::wstring, HxDbObjectId> m_linetypes;
    std::unordered_map<std::wstring, HxDbObjectId> m_plotStyles;
};

/// Whether an entry's colour is one that layers can have.
bool hasColor(const HxLyStateEntry& entry);
/// The colour of an entry.
HxCmColor colorOf(const HxLyStateEntry& entry);
