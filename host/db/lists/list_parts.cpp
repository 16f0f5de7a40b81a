// One walk over a list: the object's head up to the first marker, then the subclasses, then extended data.
#include "host/db/lists/list_parts.h"

#include "host/db/lists/chain.h"

namespace korvex {

namespace {

constexpr int kName = -1;
constexpr int kXDataMarker = -3;
constexpr int kFirstXData = 1000;
constexpr int kLastXData = 1071;

class Parting {
public:
    Parting(ListParts& parts, int handleCode) : m_parts(parts), m_handleCode(handleCode) {
        m_parts.sections.emplace_back();
    }

    void node(const resbuf& node) {
        const bool inHead = m_parts.sections.size() == 1;
        if (inHead && node.restype == 102) {
            brace(node);
        } else if (m_inBrace) {
            keepReactor(node);
        } else if (node.restype == 100) {
            m_parts.sections.push_back({std::wstring(textOf(node)), {}});
        } else if (!(inHead && head(node))) {
            m_parts.sections.back().nodes.push_back(&node);
        }
    }

private:
    bool head(const resbuf& node) {
        const resbuf** place = node.restype == kName                             ? &m_parts.name
                               : node.restype == 0 || node.restype == RTDXF0     ? &m_parts.type
                               : node.restype == m_handleCode                    ? &m_parts.handle
                               : node.restype == 330 && m_parts.owner == nullptr ? &m_parts.owner
                                                                                 : nullptr;
        if (place && !*place) {
            *place = &node;
        }
        return place != nullptr;
    }
    void brace(const resbuf& node) {
        const std::wstring_view text = textOf(node);
        m_inReactors = text == L"{ACAD_REACTORS" || (m_inReactors && text == L"}");
        keepReactor(node);
        m_inBrace = !text.empty() && text.front() == L'{';
        m_inReactors = m_inReactors && m_inBrace;
    }
    void keepReactor(const resbuf& node) {
        if (m_inReactors) {
            m_parts.reactors.push_back(&node);
        }
    }

    ListParts& m_parts;
    int m_handleCode;
    bool m_inBrace = false;
    bool m_inReactors = false;
};

}  // namespace

const resbuf* ListParts::find(int code) const {
    for (const ListSection& section : sections) {
        for (const resbuf* node : section.nodes) {
            if (node->restype == code) {
                return node;
            }
        }
    }
    return nullptr;
}

ListParts partsOfList(const resbuf* list, int handleCode) {
    ListParts parts;
    Parting parting(parts, handleCode);
    for (const resbuf* node = list; node; node = node->rbnext) {
        if (node->restype == kXDataMarker) {
            parts.xdata = node->rbnext;
            break;
        }
        if (node->restype >= kFirstXData && node->restype <= kLastXData) {
            parts.xdata = node;
            break;
        }
        parting.node(*node);
    }
    return parts;
}

}  // namespace korvex
