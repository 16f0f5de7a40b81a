// The display list of one block: what its entities look like, read from their groups once.
#pragma once

#include "host/db/geometry/shape.h"
#include "host/ui/render/entity_look.h"
#include "host/ui/render/text_run.h"

#include <deque>
#include <memory>
#include <unordered_map>
#include <vector>

namespace korvex {

enum class DisplayKind : std::uint8_t {
    unread,     ///< not looked at yet, or changed since
    none,       ///< nothing to see
    lines,      ///< runs of points
    arc,        ///< one circular or elliptic arc in a plane of constant z
    area,       ///< runs that bound a filled area, by the odd-even rule
    mask,       ///< runs that bound an area in the colour of the ground
    band,       ///< runs that each bound a filled area (polylines with width)
    dots,       ///< single points
    endless,    ///< rays and construction lines: their shape is made when it is drawn
    text,       ///< `first` is the text's place
    reference,  ///< `first` is the reference's place
    frame,      ///< of a viewport: runs of points
};

/// One entity. 16 bytes; its values are in the block's array of numbers.
struct DisplayItem {
    std::uint32_t look = 0;   ///< place in the block's looks
    std::uint32_t first = 0;  ///< place of its first number
    std::uint32_t count = 0;  ///< of numbers
    DisplayKind kind = DisplayKind::unread;
    std::int8_t detail = kExact;  ///< curves were flattened to a tolerance of 2^detail
    bool isSpatial = false;       ///< three numbers a point; else two, behind one z for all
    bool isTemplate = false;      ///< attribute definition, not drawn where its block is inserted

    static constexpr std::int8_t kExact = -128;
};

/// An INSERT, DIMENSION or table.
struct DisplayReference {
    /// A rectangle of cells.
    struct Array {
        std::shared_ptr<const BlockPlacement> placement;
        HxGePoint3d base;

        HxGeMatrix3d cell(int column, int row) const { return placement->cell(base, column, row); }
    };
    HxDbStub* block = nullptr;  ///< the block record; null when the drawing has none of the name
    HxGeMatrix3d firstCell;
    std::unique_ptr<const Array> array;  ///< null for a single cell
    bool hasAttributes = false;
};

class DisplayBlock {
public:
    /// Keeps up with the block's members.
    void resize(std::size_t members) { m_items.resize(members); }
    /// Reads the entity at a place if it was not yet, or not to this tolerance (drawing units).
    const DisplayItem& item(std::size_t place, HxDbStub& entity, double tolerance) {
        const DisplayItem& item = m_items[place];
        if (item.kind == DisplayKind::unread || !isFine(item, tolerance)) {
            read(place, entity, tolerance);
        }
        return m_items[place];
    }
    const double* numbers(const DisplayItem& item) const { return m_numbers.data() + item.first; }
    const TextRun& text(const DisplayItem& item) const { return m_texts[item.first]; }
    const DisplayReference& reference(const DisplayItem& item) const { return m_references[item.first]; }
    const EntityLook& look(std::uint32_t place) const { return m_looks[place]; }
    std::size_t looks() const { return m_looks.size(); }

    /// The entity at a place changed.
    void forget(std::size_t place);
    /// Blocks came, went or changed: references have to be looked up again.
    void forgetReferences();
    /// Gives back room that grew in reading and that changed entities had.
    void tidy();
    std::size_t bytes() const;

private:
    static bool isFine(const DisplayItem& item, double tolerance);
    void read(std::size_t place, HxDbStub& entity, double tolerance);
    void readShape(DisplayItem& item, HxDbStub& entity, const Shape& shape, double tolerance);
    void readReference(DisplayItem& item, HxDbStub& entity, const Shape& shape);
    bool readText(DisplayItem& item, HxDbStub& entity);
    bool readArc(DisplayItem& item, const Path& path);
    void readPath(DisplayItem& item, const Path& path, double tolerance);
    void store(DisplayItem& item, const std::vector<double>& points);
    std::uint32_t place(const EntityLook& look);
    void drop(DisplayItem& item);

    std::vector<DisplayItem> m_items;
    std::vector<double> m_numbers;
    std::size_t m_unused = 0;  ///< numbers that no item has any more
    std::deque<TextRun> m_texts;
    std::vector<std::uint32_t> m_freeTexts;
    std::deque<DisplayReference> m_references;
    std::vector<std::uint32_t> m_freeReferences;
    std::vector<EntityLook> m_looks;
    std::unordered_map<EntityLook, std::uint32_t, EntityLookHash> m_lookPlaces;
};

}  // namespace korvex
