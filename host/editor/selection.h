// The objects that are selected while no command runs.
#pragma once

#include "sdk/hxdbdatabase.h"
#include "sdk/hxed.h"

#include <cstdint>
#include <functional>
#include <map>
#include <memory>
#include <unordered_map>
#include <vector>

namespace korvex {

/// What is selected in one drawing: top-level objects of its current space, each once. What is erased leaves
/// it by itself, so does what comes onto a layer that is not shown; another space becoming current empties
/// it.
class Selection {
public:
    explicit Selection(HxDbDatabase& database);
    ~Selection();
    Selection(const Selection&) = delete;
    Selection& operator=(const Selection&) = delete;

    /// In the order of selecting.
    const std::vector<HxDbObjectId>& objects();
    bool isEmpty() { return objects().empty(); }
    bool contains(HxDbObjectId object);

    /// Objects that are not selectable are passed over: erased ones, of another space, on layers that are
    /// off or frozen.
    void add(const std::vector<HxDbObjectId>& objects);
    /// All that is selectable.
    void addAll();
    void remove(const std::vector<HxDbObjectId>& objects);
    void clear();

private:
    class Changes;

    void settle();
    void changed();
    void forget(HxDbStub* object);

    HxDbDatabase& m_database;
    HxDbObjectId m_space;
    std::unordered_map<HxDbStub*, std::uint64_t> m_places;  ///< in the order of selecting
    std::uint64_t m_next = 0;
    std::vector<HxDbObjectId> m_objects;  ///< by place; to be made anew when it is not `m_listed`
    bool m_listed = true;
    bool m_visibilityChanged = false;
    std::unique_ptr<Changes> m_changes;
};

/// That of a drawing, made when first asked for; it goes with the drawing.
Selection& selectionOf(HxDbDatabase& database);

/// Calls `changed` whenever another object is, or is no more, selected in whatever drawing. The number is for
/// the removal.
int addSelectionListener(std::function<void(const HxDbDatabase&)> changed);
void removeSelectionListener(int number);

}  // namespace korvex
