// Merging new fields into old groups: one walk over the old groups, subclass by subclass.
#include "host/db/kernel/field_writer.h"

#include <map>

namespace korvex {

namespace {

constexpr int kFirstXData = 1000;
constexpr std::string_view kDictionaryBrace = "{ACAD_XDICTIONARY";

std::string_view trimmedRaw(const GroupCursor& group) {
    std::string_view text = group.raw();
    while (!text.empty() && (text.front() == ' ' || text.front() == '\t')) {
        text.remove_prefix(1);
    }
    while (!text.empty() && (text.back() == ' ' || text.back() == '\t')) {
        text.remove_suffix(1);
    }
    return text;
}

}  // namespace

bool sameValue(const GroupCursor& a, const GroupCursor& b) {
    if (a.raw() == b.raw()) {
        return true;
    }
    switch (groupType(a.code())) {
    case GroupType::real: return a.asReal() == b.asReal();
    case GroupType::handle: return a.asHandle() == b.asHandle();
    case GroupType::text: return a.asText() == b.asText();
    case GroupType::binary: return a.asChunk() == b.asChunk();
    default: return a.asInteger() == b.asInteger();
    }
}

std::size_t xdataOffset(std::string_view groups, const GroupFormat& format) {
    GroupCursor cursor(groups, format);
    while (cursor.next()) {
        if (cursor.code() >= kFirstXData) {
            return cursor.offset();
        }
    }
    return groups.size();
}

void FieldWriter::subclass(const char* marker) { m_sections.push_back({marker, {}}); }

void FieldWriter::replaceSubclass(const char* marker) { m_sections.push_back({marker, {}, true}); }

void FieldWriter::store(int code, bool optional) {
    if (m_sections.empty()) {
        m_sections.push_back({});
    }
    m_sections.back().items.push_back({code, m_scratch.take(), optional});
    m_scratch.clear();
}

void FieldWriter::absent(int code) { store(code, true); }

void FieldWriter::copyAll(std::string_view groups) {
    constexpr int kNoCode = -1;
    m_sections.back().items.push_back({kNoCode, std::string(groups), false});
}

void FieldWriter::standsAt(std::size_t offset, int code) {
    m_places.push_back({offset, code, m_sections.empty() ? 0 : m_sections.size() - 1});
}

/// The walk over the old groups.
class FieldWriter::Merge {
public:
    Merge(FieldWriter& fields, std::string_view old, const Frame& frame)
        : m_fields(fields), m_old(old), m_frame(frame), m_out(fields.m_format) {}

    std::string fresh() {
        m_out.text(0, std::wstring(m_frame.type.begin(), m_frame.type.end()));
        if (m_frame.handle != 0) {
            m_out.handle(m_frame.handleCode, m_frame.handle);
        }
        writeDictionary();
        if (m_frame.owner != 0 && m_frame.subclassMarkers) {
            m_out.handle(330, m_frame.owner);
        }
        for (Section& section : m_fields.m_sections) {
            if (m_frame.subclassMarkers && !section.marker.empty()) {
                m_out.text(100, std::wstring(section.marker.begin(), section.marker.end()));
            }
            m_open = 0;
            flush(section, section.items.size(), false);
        }
        m_out.append(m_frame.xdata);
        return m_out.take();
    }

    std::string merged() {
        m_dictionaryIsDue = !hasHandle();
        bindPlaces();
        findMarkers();
        GroupCursor cursor(m_old, m_fields.m_format);
        enter(m_hasMarkers ? nullptr : anySection(), 0);
        while (cursor.next() && cursor.code() < kFirstXData) {
            group(cursor);
        }
        leave();
        for (Section& section : m_fields.m_sections) {
            appendMissing(section);
        }
        const std::size_t tail = xdataOffset(m_old, m_fields.m_format);
        m_out.append(m_frame.keepXData ? m_old.substr(tail) : m_frame.xdata);
        return m_out.take();
    }

private:
    /// Fields that have a place are not written anywhere else.
    void bindPlaces() {
        for (const Place& place : m_fields.m_places) {
            for (Item& item : m_fields.m_sections[place.section].items) {
                item.hasPlace = item.hasPlace || item.code == place.code;
            }
        }
    }
    /// Finds out whether the old groups stand in subclasses that the fields know.
    void findMarkers() {
        GroupCursor cursor(m_old, m_fields.m_format);
        bool hasFirst = false;
        bool hasAny = false;
        while (cursor.next() && cursor.code() < kFirstXData) {
            if (cursor.code() == 100 && !m_fields.m_sections.empty()) {
                const Section* section = sectionOf(trimmedRaw(cursor));
                m_hasMarkers = m_hasMarkers || section;
                hasFirst = hasFirst || section == &m_fields.m_sections.front();
                hasAny = true;
            }
        }
        m_hasMarkers = m_hasMarkers || (hasAny && !m_fields.m_places.empty());
        m_lacksFirst = m_hasMarkers && !hasFirst;
    }
    bool hasHandle() const {
        GroupCursor cursor(m_old, m_fields.m_format);
        while (cursor.next() && cursor.code() != 100 && cursor.code() < kFirstXData) {
            if (cursor.code() == m_frame.handleCode) {
                return true;
            }
        }
        return false;
    }
    Section* sectionOf(std::string_view marker) const {
        for (Section& section : m_fields.m_sections) {
            if (section.marker == marker) {
                return &section;
            }
        }
        return nullptr;
    }
    /// Old groups without markers: all fields as one section, in the first.
    Section* anySection() {
        if (m_fields.m_sections.empty()) {
            return nullptr;
        }
        Section& first = m_fields.m_sections.front();
        for (std::size_t i = 1; i < m_fields.m_sections.size(); ++i) {
            for (Item& item : m_fields.m_sections[i].items) {
                first.items.push_back(std::move(item));
            }
            m_fields.m_sections[i].items.clear();
        }
        return &first;
    }

    /// Begins a section's old groups at `offset`: counts what codes they hold.
    void enter(Section* section, std::size_t offset) {
        m_section = section;
        m_left.clear();
        m_next.clear();
        m_open = 0;
        if (!section) {
            return;
        }
        GroupCursor cursor(m_old.substr(offset), m_fields.m_format);
        bool first = true;
        while (cursor.next() && cursor.code() < kFirstXData) {
            if (cursor.code() == 100 && m_hasMarkers && !first) {
                break;
            }
            first = false;
            ++m_left[cursor.code()];
        }
    }
    void leave() {
        if (m_section) {
            flush(*m_section, m_section->items.size(), false);
            m_section = nullptr;
        }
    }

    void group(const GroupCursor& cursor) {
        const int code = cursor.code();
        const bool isBeforeHandle = code == 0 || (code == 2 && m_frame.type == "TABLE");
        if (m_dictionaryIsDue && !isBeforeHandle) {
            m_dictionaryIsDue = false;  // where the handle would be
            writeDictionaryIfNew();
        }
        if (code == 102 && !(m_section && m_section->replaces)) {
            brace(cursor);
        } else if (m_inBrace && !(m_headDone && code == 100)) {
            if (!m_dropBrace) {
                m_out.copy(cursor);
            }
        } else if (code == 100 && m_hasMarkers) {
            m_inBrace = false;
            leave();
            if (m_lacksFirst) {
                m_lacksFirst = false;
                appendMissing(m_fields.m_sections.front());
            }
            m_out.copy(cursor);
            m_headDone = true;
            enter(sectionOf(trimmedRaw(cursor)), cursor.offset());
            return;
        } else if (isHead(code)) {
            head(cursor);
        } else if (!takesPlace(cursor)) {
            field(cursor);
        }
    }

    /// Writes the field that has its place at this old group; false when none has.
    bool takesPlace(const GroupCursor& cursor) {
        if (m_place == m_fields.m_places.size() || m_fields.m_places[m_place].offset != cursor.offset()) {
            return false;
        }
        ++m_place;
        for (Section& section : m_fields.m_sections) {
            for (std::size_t i = 0; i < section.items.size(); ++i) {
                Item& item = section.items[i];
                if (item.hasPlace && !item.used && item.code == cursor.code()) {
                    if (&section == m_section) {
                        --m_left[item.code];
                        flush(section, i, true);
                    }
                    replace(cursor, item);
                    return true;
                }
            }
        }
        return false;
    }
    void replace(const GroupCursor& old, Item& item) {
        item.used = true;
        if (item.groups.empty()) {
            return;
        }
        GroupCursor fresh(item.groups, m_fields.m_format);
        fresh.next();
        if (sameValue(old, fresh)) {
            m_out.copy(old);
        } else {
            m_out.append(item.groups);
        }
    }

    bool isHead(int code) const {
        return code == 0 || (!m_headDone && (code == m_frame.handleCode || code == 330) &&
                             !(m_section && owns(*m_section, code)));
    }
    void head(const GroupCursor& cursor) {
        if (cursor.code() == 330 && m_frame.owner != 0) {
            writeDictionary();
            if (cursor.asHandle() == m_frame.owner) {
                m_out.copy(cursor);
            } else {
                m_out.handle(330, m_frame.owner);
            }
            m_headDone = true;
            return;
        }
        m_out.copy(cursor);
        if (cursor.code() == m_frame.handleCode) {
            writeDictionaryIfNew();
        }
    }

    /// A "102 {...}" run: the extension dictionary's is replaced or dropped, others stay.
    void brace(const GroupCursor& cursor) {
        const std::string_view name = trimmedRaw(cursor);
        const bool opens = !name.empty() && name.front() == '{';
        if (opens && name == kDictionaryBrace && !m_headDone) {
            m_inBrace = true;
            m_dropBrace = true;
            writeDictionary();
            return;
        }
        if (!m_dropBrace) {
            m_out.copy(cursor);
        }
        m_inBrace = opens;
        m_dropBrace = m_dropBrace && opens;
    }
    void writeDictionaryIfNew() {
        GroupCursor cursor(m_old, m_fields.m_format);
        while (cursor.next() && cursor.code() != 100) {
            if (cursor.code() == 102 && trimmedRaw(cursor) == kDictionaryBrace) {
                return;
            }
        }
        writeDictionary();
    }
    void writeDictionary() {
        if (m_frame.extensionDictionary == 0 || m_dictionaryWritten || !m_frame.subclassMarkers) {
            return;
        }
        m_dictionaryWritten = true;
        m_out.rawText(102, kDictionaryBrace);
        m_out.handle(360, m_frame.extensionDictionary);
        m_out.rawText(102, "}");
    }

    static bool owns(const Section& section, int code) {
        for (const Item& item : section.items) {
            if (item.code == code) {
                return true;
            }
        }
        return false;
    }

    void field(const GroupCursor& cursor) {
        if (m_section && m_section->replaces) {
            flush(*m_section, m_section->items.size(), false);
            return;
        }
        if (!m_section || !owns(*m_section, cursor.code())) {
            m_out.copy(cursor);
            return;
        }
        --m_left[cursor.code()];
        std::vector<Item>& items = m_section->items;
        std::size_t& next = m_next[cursor.code()];  // those of the code before it are taken or have no groups
        for (std::size_t i = next; i < items.size(); ++i) {
            Item& item = items[i];
            if (item.code != cursor.code() || item.used || item.hasPlace || item.groups.empty()) {
                continue;
            }
            next = i + 1;
            flush(*m_section, i, true);
            replace(cursor, item);
            return;
        }
        next = items.size();
    }

    /// Writes the new fields before `end` that have no old group to stand in for.
    void flush(Section& section, std::size_t end, bool moreOldGroups) {
        std::vector<Item>& items = section.items;
        const auto isDone = [](const Item& item) {
            return item.used || item.hasPlace || item.optional || item.groups.empty();
        };
        while (m_open < items.size() && isDone(items[m_open])) {
            ++m_open;
        }
        for (std::size_t i = m_open; i < end; ++i) {
            Item& item = items[i];
            if (isDone(item)) {
                continue;
            }
            const auto left = m_left.find(item.code);
            if (moreOldGroups && left != m_left.end() && left->second > 0) {
                continue;
            }
            item.used = true;
            m_out.append(item.groups);
        }
    }

    /// A subclass that the old groups lack altogether: its fields with their marker, when there are any to
    /// write.
    void appendMissing(Section& section) {
        bool wanted = false;
        m_open = 0;
        for (const Item& item : section.items) {
            wanted = wanted || !(item.used || item.hasPlace || item.optional || item.groups.empty());
        }
        if (wanted) {
            m_out.text(100, std::wstring(section.marker.begin(), section.marker.end()));
            flush(section, section.items.size(), false);
        }
    }

    FieldWriter& m_fields;
    std::string_view m_old;
    const Frame& m_frame;
    GroupWriter m_out;
    Section* m_section = nullptr;
    std::map<int, int> m_left;          ///< old groups of the section that are still to come
    std::map<int, std::size_t> m_next;  ///< where the items of a code go on
    std::size_t m_open = 0;             ///< all items of the section before it are done
    std::size_t m_place = 0;            ///< the next field with a place
    bool m_hasMarkers = false;
    bool m_lacksFirst = false;  ///< other subclasses but not the first
    bool m_headDone = false;
    bool m_inBrace = false;
    bool m_dropBrace = false;
    bool m_dictionaryWritten = false;
    bool m_dictionaryIsDue = false;  ///< there is no handle that it could follow
};

std::string FieldWriter::merge(std::string_view old, const Frame& frame) {
    Merge merge(*this, old, frame);
    return old.empty() ? merge.fresh() : merge.merged();
}

}  // namespace korvex
