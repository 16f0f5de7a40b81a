// What filters look at beside the layer itself: the active viewport of a drawing.
#pragma once

#include "sdk/hxdbid.h"

#include <cstdint>
#include <vector>

namespace korvex {

/// Found out when it is asked for and kept until something in the drawing changes, so that asking for each
/// of many layers costs nothing.
class ActiveViewport {
public:
    /// To be called before the rest is asked; null for a layer in no drawing.
    void update(const HxDbDatabase* database);
    /// Null in model space.
    HxDbObjectId id() const { return m_id; }
    bool freezes(const HxDbStub* layer) const;
    /// The drawing's plot styles have names.
    bool hasNamedPlotStyles() const { return m_namedPlotStyles; }

private:
    const HxDbDatabase* m_database = nullptr;
    std::uint64_t m_changes = 0;
    HxDbObjectId m_id;
    std::vector<HxDbStub*> m_frozen;  ///< sorted by address
    bool m_namedPlotStyles = false;
};

}  // namespace korvex
