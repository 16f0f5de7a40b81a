// What a restore gives which layer; reads the drawing, and changes nothing.
#pragma once

#include "hxlystate.h"
#include "layer_states/capture/same_as_drawing.h"

#include <functional>
#include <optional>
#include <unordered_set>

/// How a state is restored.
struct KvRestoreOptions {
    std::int32_t mask = HxLyState::kAllProperties;
    HxDbObjectId viewport;  ///< where a layout freezes layers; null: its current viewport
    /// Colour, linetype, lineweight, transparency and plot style as overrides of the current viewport, in a
    /// layout that has one.
    bool asViewportOverrides = false;
    bool turnOffOthers = false;  ///< layers that the state does not name
};

/// Of one restore: who is current and what the viewport freezes counts as it is when they are made.
class KvRestoreRules {
public:
    KvRestoreRules(const HxDbDatabase& database, const KvRestoreOptions& options);

    /// Where layers are frozen and thawed; null in model space.
    HxDbObjectId viewport() const { return m_viewport; }
    /// Where the colour and what else viewports can override is set; null: on the layer itself.
    HxDbObjectId overridesIn() const { return m_options.asViewportOverrides ? m_viewport : HxDbObjectId(); }
    /// What is set there, as far as that is a viewport.
    static constexpr std::int32_t kOverridable = HxLyState::kColor | HxLyState::kLinetype |
                                                 HxLyState::kLineweight | HxLyState::kTransparency |
                                                 HxLyState::kPlotStyle;

    /// The properties that the entry's layer is given, but for freezing in the viewport. The drawing's
    /// current layer is not frozen. `isNew`: it was made for the entry. All for one that cannot be read now.
    std::int32_t changesWanted(HxDbObjectId layer, const HxLyStateEntry& entry, bool isNew);
    /// Whether the layer is frozen or thawed in the viewport; none when it stays as it is.
    std::optional<bool> freezingWanted(HxDbObjectId layer, const HxLyStateEntry& entry) const;

    /// The state names this layer.
    void addNamed(const CStdStr<wchar_t>& layer);
    /// Calls `visit` with id and name of each layer that is on and to be turned off, since the state does not
    /// name it. When all that it names were added.
    using Visitor = std::function<void(HxDbObjectId, const CStdStr<wchar_t>&)>;
    void visitOthersToTurnOff(const Visitor& visit) const;

private:
    const HxDbDatabase& m_database;
    KvRestoreOptions m_options;
    KvRestorePlace m_place;
    HxDbObjectId m_viewport;
    HxDbObjectId m_currentLayer;
    std::unordered_set<HxDbObjectId> m_frozenInViewport;
    std::unordered_set<std::wstring> m_named;  ///< folded
    HxLyStateEntry m_now;                      ///< reused for each layer
};
