// Reads the records of layer states.
#include "host/db/kernel/database_imp.h"
#include "host/db/objects/xrecord_cursor.h"
#include "host/db/states/state_codes.h"
#include "host/db/states/state_names.h"
#include "sdk/hxlystate.h"

#include <optional>

namespace korvex {

namespace {

using namespace state_group;

constexpr std::int64_t kNoColor = -1;

/// 0x00RRGGBB as 0x00BBGGRR.
std::int64_t swapped(std::uint32_t color) {
    return (color & 0xFFU) << 16U | (color & 0xFF00U) | (color >> 16U & 0xFFU);
}

/// By the method in the top byte: none, red in the low byte; true colour, blue in the low byte.
std::int64_t trueColorOf(long long value) {
    const auto word = static_cast<std::uint32_t>(value);
    switch (word >> 24U) {
    case 0: return word;
    case HxCmColor::kTrueColor: return swapped(word);
    default: return kNoColor;
    }
}

std::int64_t otherTrueColorOf(long long value) {
    return value < 0 || value > 0xFFFFFF ? kNoColor : swapped(static_cast<std::uint32_t>(value));
}

std::int32_t alphaOf(long long value) {
    const auto word = static_cast<std::uint32_t>(value);
    return word >> 24U == HxCmTransparency::kByAlpha ? static_cast<std::int32_t>(word & 0xFFU) : 255;
}

std::int32_t intOf(const GroupCursor& group) { return static_cast<std::int32_t>(group.asInteger()); }

void clear(HxLyStateEntry& entry) {
    entry.layer.clear();
    entry.flags = 0;
    entry.colorIndex = HxCmColor::kIndexWhite;
    entry.trueColor = kNoColor;
    entry.colorBook.clear();
    entry.linetype.clear();
    entry.lineweight = -3;
    entry.plotStyle.clear();
    entry.transparency = 255;
}

/// Gathers a state's header from the groups that are shown to it; of a code that is there twice the first
/// counts.
class HeaderReading {
public:
    explicit HeaderReading(HxLyStateHeader& header) : m_header(header) {}

    void see(const GroupCursor& group) {
        switch (group.code()) {
        case kMask:
            if (isNew(Part::mask)) {
                m_header.mask = intOf(group);
            }
            break;
        case kDescription:
            if (isNew(Part::description)) {
                group.asText(m_header.description);
            }
            break;
        case kSpace:
            if (isNew(Part::space)) {
                m_header.space = intOf(group);
            }
            break;
        case kCurrentLayer:
            if (isNew(Part::currentLayer)) {
                group.asText(m_header.currentLayer);
            }
            break;
        default: break;
        }
    }
    bool isComplete() const { return m_seen == 15; }
    bool hasMask() const { return (m_seen & static_cast<unsigned>(Part::mask)) != 0; }

private:
    enum class Part : unsigned { mask = 1, description = 2, space = 4, currentLayer = 8 };
    bool isNew(Part part) {
        const unsigned before = m_seen;
        m_seen |= static_cast<unsigned>(part);
        return m_seen != before;
    }

    HxLyStateHeader& m_header;
    unsigned m_seen = 0;
};

}  // namespace

}  // namespace korvex

using namespace korvex;

class HxLyStateReader::Imp {
public:
    explicit Imp(HxDbStub* record) : status(xrecordStatus(record)) {
        if (status != Hx::eOk) {
            return;
        }
        m_groups = currentBlob(*record);
        m_format = &record->database->imp()->format;
        m_names.emplace(*record->database);
        readHeader();
        rewind();
    }

    bool next(HxLyStateEntry& entry) {
        while (m_isAtEntry) {
            if (readEntry(entry)) {
                return true;
            }
            ++skipped;
        }
        return false;
    }
    void rewind() {
        skipped = 0;
        m_isAtEntry = false;
        if (status == Hx::eOk) {
            m_cursor.emplace(m_groups.groups(), *m_format);
            toNextEntry();
        }
    }

    Hx::ErrorStatus status;
    HxLyStateHeader header;
    int skipped = 0;

private:
    void readHeader() {
        HeaderReading reading(header);
        XrecordCursor cursor(m_groups.groups(), *m_format);
        while (cursor.next() && !(beginsEntry(cursor->code()) && reading.isComplete())) {
            reading.see(*cursor);
        }
        if (!reading.hasMask()) {
            header = {};
            status = Hx::eKeyNotFound;
        }
    }
    void toNextEntry() {
        do {
            m_isAtEntry = m_cursor->next();
        } while (m_isAtEntry && !beginsEntry((*m_cursor)->code()));
    }
    /// From the group that begins it; ends at the next one's. False for a layer that is not there.
    bool readEntry(HxLyStateEntry& entry) {
        const GroupCursor& group = **m_cursor;
        clear(entry);
        if (group.code() == kLayer) {
            group.asText(entry.layer);
        } else if (const std::wstring* name = m_names->layer(group.asHandle())) {
            entry.layer.assign(*name);
        } else {
            toNextEntry();
            return false;
        }
        while ((m_isAtEntry = m_cursor->next()) && !beginsEntry(group.code())) {
            readProperty(entry, group);
        }
        return true;
    }
    void readProperty(HxLyStateEntry& entry, const GroupCursor& group) {
        switch (group.code()) {
        case kFlags: entry.flags = intOf(group); break;
        case kColorIndex: entry.colorIndex = intOf(group); break;
        case kLineweight: entry.lineweight = intOf(group); break;
        case kLinetype: group.asText(entry.linetype); break;
        case kLinetypeHandle: entry.linetype.assign(m_names->linetype(group.asHandle())); break;
        case kPlotStyle:
        case kPlotStyleOlder: group.asText(entry.plotStyle); break;
        case kPlotStyleObject: entry.plotStyle.assign(m_names->plotStyle(group.asHandle())); break;
        case kTrueColor: takeColor(entry, trueColorOf(group.asInteger())); break;
        case kTrueColorOther: takeColor(entry, otherTrueColorOf(group.asInteger())); break;
        case kColorBook: group.asText(entry.colorBook); break;
        case kTransparency: entry.transparency = alphaOf(group.asInteger()); break;
        default: break;
        }
    }
    /// A group that says "none" takes nothing from one that has the colour.
    static void takeColor(HxLyStateEntry& entry, std::int64_t color) {
        entry.trueColor = color == kNoColor ? entry.trueColor : color;
    }

    Blob m_groups;
    const GroupFormat* m_format = nullptr;
    std::optional<StateNames> m_names;
    std::optional<XrecordCursor> m_cursor;
    bool m_isAtEntry = false;
};

HxLyStateReader::HxLyStateReader(HxDbObjectId record) : m_imp(new Imp(record.stub())) {}
HxLyStateReader::~HxLyStateReader() { delete m_imp; }

Hx::ErrorStatus HxLyStateReader::status() const { return m_imp->status; }
const HxLyStateHeader& HxLyStateReader::header() const { return m_imp->header; }
bool HxLyStateReader::next(HxLyStateEntry& entry) { return m_imp->next(entry); }
int HxLyStateReader::skippedEntries() const { return m_imp->skipped; }
void HxLyStateReader::rewind() { m_imp->rewind(); }
