// The options of LAYFRZ, kept from run to run.
#pragma once

#include <cstdint>

class KorvexConfig;

/// Read at the making, written at once when they are set. In the configuration service as "FRZ_BlockNesting"
/// and "FRZ_Vpfreeze" of the section "UserInterfaceSettings\LayerTools"; what is missing there is added.
/// Without the service both are 1 and nothing is kept.
class FreezeOptions {
public:
    /// Whose layer is frozen when the object lies in blocks.
    enum Nesting : std::int32_t {
        kOutermost = 0,  ///< the outermost reference
        kInnermost = 1,  ///< the innermost reference; in an external reference the object itself
        kObject = 2,     ///< the object itself
    };
    /// Where a layer is frozen when a floating viewport is current.
    enum Viewport : std::uint32_t { kEverywhere = 0, kCurrentViewport = 1 };

    FreezeOptions();
    /// May be a number that is no Nesting: a setting from elsewhere. It counts as kOutermost.
    std::int32_t nesting() const { return m_nesting; }
    void setNesting(Nesting nesting);
    /// The same; what is not kCurrentViewport counts as kEverywhere.
    std::uint32_t viewport() const { return m_viewport; }
    void setViewport(Viewport viewport);

private:
    KorvexConfig* m_config;
    std::int32_t m_nesting = kInnermost;
    std::uint32_t m_viewport = kCurrentViewport;
};
