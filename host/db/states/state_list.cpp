// Makes the entity lists of layer states' records.
#include "host/db/kernel/database_imp.h"
#include "host/db/kernel/text_fold.h"
#include "host/db/lists/chain.h"
#include "host/db/objects/dictionary_access.h"
#include "host/db/states/state_codes.h"
#include "sdk/hxdbdatabase.h"
#include "sdk/hxlystate.h"
#include "sdk/hxtext.h"

#include <new>
#include <unordered_map>

namespace korvex {

namespace {

using namespace state_group;

constexpr std::int32_t kOpaque = 255;

/// The plot styles of a drawing with named ones, each looked up once.
class PlotStyles {
public:
    explicit PlotStyles(const HxDbDatabase& database)
        : m_styles(database.getPlotStyleNameDictionaryId().stub()),
          m_localNormal(hxdbGetReservedString(kHxReservedNormal, true)),
          m_normal(hxdbGetReservedString(kHxReservedNormal, false)) {}

    /// Null when there is none of that name.
    HxDbStub* find(const std::wstring& name) {
        const auto [known, isNew] = m_known.try_emplace(name);
        if (isNew) {
            known->second = dictionaryEntry(m_styles, equalNames(name, m_localNormal) ? m_normal : name);
        }
        return known->second;
    }

private:
    HxDbStub* m_styles;
    std::wstring m_localNormal;
    std::wstring m_normal;
    std::unordered_map<std::wstring, HxDbStub*> m_known;
};

}  // namespace

}  // namespace korvex

using namespace korvex;

class HxLyStateListBuilder::Imp {
public:
    Imp(const HxDbDatabase& database, HxDbObjectId dictionary, const HxLyStateHeader& header)
        : m_plotStyles(database), m_hasNamedStyles(!database.plotStyleMode()) {
        guarded([&] { addHeader(dictionary, header); });
    }

    bool add(const HxLyStateEntry& entry) {
        HxDbStub* style = nullptr;
        if (m_hasNamedStyles && !entry.plotStyle.empty()) {
            style = m_plotStyles.find(entry.plotStyle);
            if (!style) {
                return false;
            }
        }
        guarded([&] { addEntry(entry, style); });
        return true;
    }

    resbuf* release() {
        Chain list(m_list.release());
        return m_isComplete ? list.release() : nullptr;
    }

private:
    /// A list that memory does not suffice for is none.
    template <class Work>
    void guarded(Work work) {
        try {
            work();
        } catch (const std::bad_alloc&) {
            m_isComplete = false;
        }
    }
    void addHeader(HxDbObjectId dictionary, const HxLyStateHeader& header) {
        text(0, L"XRECORD");
        text(102, L"{ACAD_REACTORS");
        object(330, dictionary);
        text(102, L"}");
        object(330, dictionary);
        text(100, L"AcDbXrecord");
        number(kMask, header.mask);
        text(kDescription, header.description);
        number(kSpace, header.space);
        text(kCurrentLayer, header.currentLayer);
    }

    void addEntry(const HxLyStateEntry& entry, HxDbStub* style) {
        text(kLayer, entry.layer);
        number(kFlags, entry.flags);
        number(kColorIndex, entry.colorIndex);
        number(kLineweight, entry.lineweight);
        text(kLinetype, entry.linetype);
        if (style) {
            object(kPlotStyleObject, HxDbObjectId(style));
        } else if (!entry.plotStyle.empty()) {
            text(kPlotStyle, entry.plotStyle);
        }
        addColor(entry);
        number(kTransparency, packedAlpha(entry.transparency));
    }
    void text(int code, std::wstring_view value) { m_list.add(textNode(code, value)); }
    void object(int code, HxDbObjectId id) {
        zds_name name = {0, 0};
        hxdbGetZdsName(name, id);
        m_list.add(nameNode(code, name));
    }
    void number(int code, std::int64_t value) {
        Chain node = newNode(code);
        if (valueKind(code) == ValueKind::int16) {
            node->resval.rint = static_cast<short>(value);
        } else {
            node->resval.rlong = static_cast<std::int32_t>(value);
        }
        m_list.add(std::move(node));
    }
    void addColor(const HxLyStateEntry& entry) {
        if (entry.trueColor == -1 && entry.colorBook.empty()) {
            return;
        }
        number(kTrueColor, entry.trueColor);
        if (entry.trueColor != -1 && !entry.colorBook.empty()) {
            text(kColorBook, entry.colorBook);
        }
    }
    static std::int32_t packedAlpha(std::int32_t alpha) {
        if (alpha == kOpaque) {
            return 0;
        }
        return static_cast<std::int32_t>(HxCmTransparency(static_cast<std::uint8_t>(alpha)).serializeOut());
    }

    ChainBuilder m_list;
    PlotStyles m_plotStyles;
    bool m_hasNamedStyles;
    bool m_isComplete = true;
};

HxLyStateListBuilder::HxLyStateListBuilder(const HxDbDatabase* database, HxDbObjectId dictionary,
                                           const HxLyStateHeader& header)
    : m_imp(new Imp(*database, dictionary, header)) {}
HxLyStateListBuilder::~HxLyStateListBuilder() { delete m_imp; }

bool HxLyStateListBuilder::add(const HxLyStateEntry& entry) { return m_imp->add(entry); }
resbuf* HxLyStateListBuilder::take() { return m_imp->release(); }
