// Writes an object's fields as groups and merges them into the groups that it had, so that what the class
// does not know stays where it stood and what did not change keeps its spelling.
#pragma once

#include "host/db/groups/group_cursor.h"
#include "host/db/groups/group_writer.h"

#include <string>
#include <vector>

namespace korvex {

/// One merge. The class names its subclasses and fields in their usual order, then merge() gives the new
/// groups. A code that a class writes, or declares absent, belongs to the class within that subclass: old
/// groups of it that find no new value are dropped.
class FieldWriter {
public:
    /// `forFile`: references to what is erased are to be left out.
    explicit FieldWriter(const GroupFormat& format, bool forFile = false)
        : m_format(format), m_scratch(format), m_forFile(forFile) {}
    const GroupFormat& format() const { return m_format; }
    bool isForFile() const { return m_forFile; }

    /// Begins the fields that follow the marker "100 name".
    void subclass(const char* marker);
    /// The same, but the old groups of the subclass give way as a whole to the fields that follow.
    void replaceSubclass(const char* marker);
    void integer(int code, long long value) { m_scratch.integer(code, value), store(code, false); }
    void real(int code, double value) { m_scratch.real(code, value), store(code, false); }
    void text(int code, std::wstring_view value) { m_scratch.text(code, value), store(code, false); }
    void handle(int code, std::uint64_t value) { m_scratch.handle(code, value), store(code, false); }
    /// Values that are the default: kept where there was such a group, not added where there was none.
    void defaultInteger(int code, long long value) { m_scratch.integer(code, value), store(code, true); }
    void defaultText(int code, std::wstring_view value) { m_scratch.text(code, value), store(code, true); }
    void defaultReal(int code, double value) { m_scratch.real(code, value), store(code, true); }
    /// A group copied from elsewhere in the same form.
    void copy(const GroupCursor& group) { m_scratch.copy(group), store(group.code(), false); }
    /// All the groups of a replaced subclass, or the rest of them, in the same form.
    void copyAll(std::string_view groups);
    /// There is no such group.
    void absent(int code);
    /// The old group that the current subclass's field of a code takes the place of begins at `offset` of the
    /// old groups, wherever that is. To be called in the order of the offsets.
    void standsAt(std::size_t offset, int code);

    /// The object's own head and tail.
    struct Frame {
        std::string_view type;
        std::uint64_t handle = 0;               ///< 0: none is written
        int handleCode = 5;                     ///< 105 for dimension styles
        std::uint64_t extensionDictionary = 0;  ///< 0: none
        std::uint64_t owner = 0;                ///< 0: left as it was
        bool subclassMarkers = true;            ///< new objects get "100" markers
        bool keepXData = true;
        std::string_view xdata;  ///< replaces the extended data unless keepXData
    };
    /// `old` is empty for a new object.
    std::string merge(std::string_view old, const Frame& frame);

private:
    struct Item {
        int code;
        std::string groups;  ///< empty: absent
        bool optional;
        bool used = false;
        bool hasPlace = false;
    };
    struct Section {
        std::string marker;
        std::vector<Item> items;
        bool replaces = false;
    };
    /// An old group and the field that takes its place.
    struct Place {
        std::size_t offset;
        int code;
        std::size_t section;
    };
    class Merge;

    /// Makes what the scratch writer holds a field of the current subclass; nothing stands for absent.
    void store(int code, bool optional);

    const GroupFormat& m_format;
    GroupWriter m_scratch;
    bool m_forFile;
    std::vector<Section> m_sections;
    std::vector<Place> m_places;
};

/// True when two groups of the same code hold the same value, however it is spelled.
bool sameValue(const GroupCursor& a, const GroupCursor& b);

/// The start of the extended data (first 1001 group) in an object's groups; their size when there is none.
std::size_t xdataOffset(std::string_view groups, const GroupFormat& format);

}  // namespace korvex
