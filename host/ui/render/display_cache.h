// The display lists of all blocks that were drawn, for all drawings that they are in.
#pragma once

#include "host/ui/render/display_block.h"
#include "sdk/hxdbdatabase.h"

namespace korvex {

/// Listens to the drawings: a changed entity is read again when it is next seen, and nothing else is.
class DisplayCache {
public:
    DisplayCache();
    ~DisplayCache();
    DisplayCache(const DisplayCache&) = delete;
    DisplayCache& operator=(const DisplayCache&) = delete;

    /// To be called before a paint: takes over what happened to the blocks since the last one.
    void refresh();
    /// The display list of a block record, with room for all its members. Stays until the next refresh.
    DisplayBlock& of(HxDbStub& block);
    /// To be called after a paint.
    void tidy();
    std::size_t bytes() const;

private:
    class Drawing;
    friend class Drawing;

    std::unordered_map<const HxDbDatabase*, std::unique_ptr<Drawing>> m_drawings;
};

}  // namespace korvex
