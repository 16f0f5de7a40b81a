// Subclass by subclass: values of the list are paired with the groups of the same code, first with first.
#include "host/db/lists/list_merge.h"

#include "host/db/entities/entity_cursor.h"
#include "host/db/kernel/database_imp.h"
#include "host/db/kernel/field_writer.h"
#include "host/db/lists/node_codec.h"

#include <algorithm>
#include <cstdlib>
#include <map>

namespace korvex {

namespace {

constexpr std::size_t kNone = static_cast<std::size_t>(-1);
constexpr const wchar_t* kGeneralMarker = L"AcDbEntity";
constexpr const wchar_t* kXrecordMarker = L"AcDbXrecord";
constexpr int kColorIndex = 62;
constexpr int kTrueColor = 420;
constexpr int kBookColor = 430;

/// A value of the object as it stands in its groups.
struct Old {
    Chain node;
    std::string_view bytes;
    int coordinates = 0;
    bool fixed = false;  ///< head of the object
};

struct Section {
    std::wstring marker;
    std::string_view markerBytes;
    std::vector<Old> values;
    std::vector<int> shared;  ///< codes of the groups that count for what all entities share

    bool holds(int code) const { return std::find(shared.begin(), shared.end(), code) != shared.end(); }
    bool has(int code) const {
        return std::any_of(values.begin(), values.end(),
                           [code](const Old& old) { return !old.fixed && old.node->restype == code; });
    }
};

/// Tells what belongs to the head, group by group.
class HeadWatch {
public:
    explicit HeadWatch(int handleCode) : m_handleCode(handleCode) {}
    bool isHead(const resbuf& node) {
        if (node.restype == 102) {
            m_inBrace = textOf(node).rfind(L'{', 0) == 0;
            return true;
        }
        if (m_inBrace || node.restype == 0 || node.restype == m_handleCode) {
            return true;
        }
        const bool owner = node.restype == 330 && !m_hasOwner;
        m_hasOwner = m_hasOwner || owner;
        return owner;
    }

private:
    int m_handleCode;
    bool m_inBrace = false;
    bool m_hasOwner = false;
};

std::vector<Section> sectionsOf(std::string_view groups, const HxDbDatabase& database, int handleCode) {
    std::vector<Section> sections(1);
    HeadWatch head(handleCode);
    EntityCursor shared(groups, database.imp()->format);
    bool isSharedAhead = shared.nextShared();
    NodeReader reader(groups, database.imp()->format, database);
    while (Chain node = reader.next()) {
        if (node->restype == 100) {
            sections.push_back({std::wstring(textOf(*node)), reader.bytes(), {}, {}});
            continue;
        }
        if (isSharedAhead && reader.bytes().data() == shared->bytes().data()) {
            sections.back().shared.push_back(shared.code());
            isSharedAhead = shared.nextShared();
        }
        const bool fixed = sections.size() == 1 && head.isHead(*node);
        sections.back().values.push_back({std::move(node), reader.bytes(), reader.coordinates(), fixed});
    }
    return sections;
}

/// The values that the list gives to one subclass.
struct Given {
    std::vector<const resbuf*> nodes;
    bool whole = false;  ///< the list named the subclass
};

/// One subclass's old values and given ones become its new groups.
class SectionMerge {
public:
    SectionMerge(const Section& section, const Given& given, const HxDbDatabase& database,
                 const ValueChecks& checks)
        : m_old(section.values), m_given(given.nodes), m_whole(given.whole),
          m_dropsAll(given.whole && section.marker == kXrecordMarker), m_database(database), m_checks(checks),
          m_pairOfGiven(given.nodes.size(), kNone), m_pairOfOld(section.values.size(), kNone) {
        pair();
    }

    bool write(GroupWriter& out) {
        m_out = &out;
        if (isRearranged()) {
            writeInOrder();
        } else {
            writeInPlace();
        }
        return m_good;
    }

private:
    void pair() {
        std::map<int, std::vector<std::size_t>> places;
        for (std::size_t i = 0; i < m_old.size(); ++i) {
            if (!m_old[i].fixed) {
                places[m_old[i].node->restype].push_back(i);
            }
        }
        for (std::size_t j = 0; j < m_given.size(); ++j) {
            const int code = m_given[j]->restype;
            const std::vector<std::size_t>& of = places[code];
            const std::size_t nth = m_count[code]++;
            if (nth < of.size()) {
                m_pairOfGiven[j] = of[nth];
                m_pairOfOld[of[nth]] = j;
            }
        }
        for (const auto& place : places) {
            m_repeats[place.first] = place.second.size() > 1 || m_count[place.first] > 1;
        }
        markDropped();
    }

    /// A colour replaces the true colour and the book's name that the list does not give with it.
    void markDropped() {
        for (const resbuf* node : m_given) {
            m_dropped[node->restype] = true;
        }
        if (m_checks.hasAppearance() && replaces(kColorIndex)) {
            m_dropped[kTrueColor] = m_dropped[kBookColor] = true;
        } else if (m_checks.hasAppearance() && replaces(kTrueColor)) {
            m_dropped[kBookColor] = true;
        }
    }
    bool replaces(int code) const {
        for (std::size_t j = 0; j < m_given.size(); ++j) {
            if (m_given[j]->restype == code) {
                return m_whole || m_pairOfGiven[j] == kNone ||
                       !sameColor(*m_given[j], *m_old[m_pairOfGiven[j]].node);
            }
        }
        return false;
    }
    /// The sign of a layer's index says whether it is off.
    static bool sameColor(const resbuf& a, const resbuf& b) {
        return a.restype == kColorIndex ? std::abs(a.resval.rint) == std::abs(b.resval.rint)
                                        : a.resval.rlong == b.resval.rlong;
    }

    /// The list's order is another than that of the groups, as far as the order may count.
    bool isRearranged() const {
        std::size_t last = 0;
        for (std::size_t j = 0; j < m_given.size(); ++j) {
            const std::size_t place = m_pairOfGiven[j];
            const auto repeats = m_repeats.find(m_given[j]->restype);
            if (place == kNone || !(m_whole || (repeats != m_repeats.end() && repeats->second))) {
                continue;
            }
            if (place < last) {
                return true;
            }
            last = place;
        }
        return false;
    }

    void writeInPlace() {
        if (m_whole) {
            writeUnpaired(0);
        }
        for (std::size_t i = 0; i < m_old.size(); ++i) {
            if (m_pairOfOld[i] != kNone) {
                writeGiven(m_pairOfOld[i]);
                writeUnpaired(m_pairOfOld[i] + 1);
            } else if (stays(i)) {
                keep(m_old[i]);
            }
        }
        if (!m_whole) {
            writeUnpaired(0);
        }
    }
    void writeInOrder() {
        const auto keepAll = [this](bool fixed) {
            for (std::size_t i = 0; i < m_old.size(); ++i) {
                if (m_old[i].fixed == fixed && m_pairOfOld[i] == kNone && stays(i)) {
                    keep(m_old[i]);
                }
            }
        };
        keepAll(true);
        for (std::size_t j = 0; j < m_given.size(); ++j) {
            writeGiven(j);
        }
        keepAll(false);
    }

    /// Neither given anew nor replaced by what is.
    bool stays(std::size_t i) const {
        return m_old[i].fixed || !(m_dropsAll || m_dropped.count(m_old[i].node->restype) > 0);
    }
    /// New values that the list has from `j` on, up to the next that has an old group.
    void writeUnpaired(std::size_t j) {
        for (; j < m_given.size() && m_pairOfGiven[j] == kNone; ++j) {
            writeGiven(j);
        }
    }
    void writeGiven(std::size_t j) {
        const resbuf& node = *m_given[j];
        const Old* old = m_pairOfGiven[j] != kNone ? &m_old[m_pairOfGiven[j]] : nullptr;
        if (old && !old->bytes.empty() && sameNode(node, *old->node)) {
            m_out->append(old->bytes);
            return;
        }
        m_good =
            m_good && m_checks.accepts(node) && writeNode(*m_out, node, m_database, coordinates(node, old));
    }
    void keep(const Old& old) {
        if (old.bytes.empty()) {
            m_good = m_good && writeNode(*m_out, *old.node, m_database);
        } else {
            m_out->append(old.bytes);
        }
    }

    /// A point without z stays so unless it gets one; a new point is like the others of its code.
    int coordinates(const resbuf& node, const Old* old) const {
        if (valueKind(node.restype) != ValueKind::point) {
            return 3;
        }
        const bool flat = isFlatPoint(m_checks.type(), node.restype);
        for (std::size_t i = 0; !old && i < m_old.size(); ++i) {
            old = m_old[i].node->restype == node.restype && !m_old[i].fixed ? &m_old[i] : nullptr;
        }
        const bool likeOld = old && old->coordinates == 2 && (flat || node.resval.rpoint[2] == 0);
        return likeOld || (!old && flat) ? 2 : 3;
    }

    const std::vector<Old>& m_old;
    const std::vector<const resbuf*>& m_given;
    bool m_whole;
    bool m_dropsAll;
    const HxDbDatabase& m_database;
    const ValueChecks& m_checks;
    std::vector<std::size_t> m_pairOfGiven;
    std::vector<std::size_t> m_pairOfOld;
    std::map<int, std::size_t> m_count;  ///< given values by code
    std::map<int, bool> m_repeats;
    std::map<int, bool> m_dropped;
    GroupWriter* m_out = nullptr;
    bool m_good = true;
};

/// Where a value goes that the list gives before any marker.
std::size_t sectionFor(const std::vector<Section>& sections, int code) {
    for (std::size_t i = 0; i < sections.size(); ++i) {
        if (sections[i].holds(code)) {
            return i;
        }
    }
    for (std::size_t i = sections.size(); i-- > 0;) {
        if (sections[i].has(code)) {
            return i;
        }
    }
    for (std::size_t i = 0; i < sections.size() && isSharedCode(code); ++i) {
        if (sections[i].marker == kGeneralMarker) {
            return i;
        }
    }
    return sections.size() - 1;
}

/// The nth section of a marker; kNone when there are not as many.
std::size_t sectionOf(const std::vector<Section>& sections, const std::wstring& marker, std::size_t nth) {
    for (std::size_t i = 1; i < sections.size(); ++i) {
        if (sections[i].marker == marker && nth-- == 0) {
            return i;
        }
    }
    return kNone;
}

/// Hands the list's values to the sections; false for a subclass that the object lacks.
bool distribute(const ListParts& list, const std::vector<Section>& sections, std::vector<Given>& given) {
    given.resize(sections.size());
    std::map<std::wstring, std::size_t> seen;
    for (std::size_t k = 0; k < list.sections.size(); ++k) {
        const ListSection& part = list.sections[k];
        if (k == 0 || sections.size() == 1) {
            for (const resbuf* node : part.nodes) {
                given[sectionFor(sections, node->restype)].nodes.push_back(node);
            }
            continue;
        }
        const std::size_t at = sectionOf(sections, part.marker, seen[part.marker]++);
        if (at == kNone) {
            return false;
        }
        given[at].nodes.insert(given[at].nodes.end(), part.nodes.begin(), part.nodes.end());
        given[at].whole = true;
    }
    return true;
}

}  // namespace

bool mergeList(std::string_view groups, const ListParts& list, const HxDbDatabase& database, int handleCode,
               const ValueChecks& checks, std::string& merged) {
    const GroupFormat& format = database.imp()->format;
    const std::size_t tail = xdataOffset(groups, format);
    const std::vector<Section> sections = sectionsOf(groups.substr(0, tail), database, handleCode);
    std::vector<Given> given;
    if (!distribute(list, sections, given)) {
        return false;
    }
    GroupWriter out(format);
    for (std::size_t i = 0; i < sections.size(); ++i) {
        out.append(sections[i].markerBytes);
        SectionMerge merge(sections[i], given[i], database, checks);
        if (!merge.write(out)) {
            return false;
        }
    }
    out.append(groups.substr(tail));
    merged = out.take();
    return true;
}

}  // namespace korvex
