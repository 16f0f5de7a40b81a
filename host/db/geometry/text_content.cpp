// Reads the records of texts.
#include "host/db/geometry/text_content.h"

#include <algorithm>

namespace korvex {

namespace {

constexpr double kLinePitch = 5.0 / 3;
constexpr wchar_t kDegreeSign = 0xB0, kPlusMinus = 0xB1, kDiameter = 0xD8, kNoBreakSpace = 0xA0;

bool isDigit(wchar_t c) { return c >= L'0' && c <= L'9'; }

/// Reads the code behind "%%" at `at`; leaves `at` behind it.
void takePercentCode(const std::wstring& text, std::size_t& at, std::wstring& out) {
    const wchar_t code = at < text.size() ? text[at] : L'\0';
    ++at;
    switch (code) {
    case L'c':
    case L'C': out += kDiameter; return;
    case L'd':
    case L'D': out += kDegreeSign; return;
    case L'p':
    case L'P': out += kPlusMinus; return;
    case L'%': out += L'%'; return;
    case L'u':
    case L'U':
    case L'o':
    case L'O':
    case L'k':
    case L'K':
    case L'\0': return;
    default: break;
    }
    int number = 0;
    std::size_t end = at - 1;
    for (; end < text.size() && end < at + 2 && isDigit(text[end]); ++end) {
        number = number * 10 + (text[end] - L'0');
    }
    if (end == at - 1) {
        out += L"%%";
        out += code;
    } else {
        at = end;
        // 127 to 129 are signs of the fonts that such texts were written for
        constexpr wchar_t kSigns[] = {kDegreeSign, kPlusMinus, kDiameter};
        if (number >= 32) {
            out += number >= 127 && number <= 129 ? kSigns[number - 127] : static_cast<wchar_t>(number);
        }
    }
}

/// "^I" is a tabulator, "^J" and "^M" line ends, "^ " the caret itself.
void takeCaretCode(const std::wstring& text, std::size_t& at, std::wstring& out) {
    const wchar_t code = at < text.size() ? text[at] : L' ';
    ++at;
    if (code == L'I') {
        out += L"    ";
    } else if (code == L' ') {
        out += L'^';
    }
}

/// Takes one character, or one of the codes that all texts know.
void takeCharacter(const std::wstring& text, std::size_t& at, std::wstring& out) {
    const wchar_t c = text[at++];
    if (c == L'%' && at < text.size() && text[at] == L'%') {
        takePercentCode(text, ++at, out);
    } else if (c == L'^') {
        takeCaretCode(text, at, out);
    } else if (c >= L' ') {
        out += c;
    }
}

class ParagraphReader {
public:
    explicit ParagraphReader(const std::wstring& text) : m_text(text) {}

    std::vector<std::wstring> read() {
        while (m_at < m_text.size()) {
            const wchar_t c = m_text[m_at];
            if (c == L'\\' && m_at + 1 < m_text.size()) {
                m_at += 2;
                takeCode(m_text[m_at - 1]);
            } else if (c == L'{' || c == L'}') {
                ++m_at;
            } else if (c == L'\n' || (c == L'^' && m_text.compare(m_at, 2, L"^J") == 0)) {
                m_at += c == L'\n' ? 1 : 2;
                endLine();
            } else {
                takeCharacter(m_text, m_at, m_line);
            }
        }
        m_lines.push_back(m_line);
        return m_lines;
    }

private:
    void endLine() {
        m_lines.push_back(m_line);
        m_line.clear();
    }

    void takeCode(wchar_t code) {
        static const std::wstring kWithValue = L"ACcFfHQTWp";
        switch (code) {
        case L'P':
        case L'N':
        case L'X': endLine(); return;
        case L'~': m_line += kNoBreakSpace; return;
        case L'S': takeStack(); return;
        case L'\\':
        case L'{':
        case L'}': m_line += code; return;
        default: break;
        }
        if (kWithValue.find(code) != std::wstring::npos) {
            m_at = std::min(m_text.find(L';', m_at), m_text.size() - 1) + 1;
        }
    }

    /// "1/2;", "1#2;" or "upper^lower;": fractions and tolerances, written in the line.
    void takeStack() {
        bool parted = false;
        while (m_at < m_text.size() && m_text[m_at] != L';') {
            const wchar_t c = m_text[m_at++];
            if (!parted && (c == L'/' || c == L'#' || c == L'^')) {
                m_line += c == L'^' ? L' ' : L'/';
                m_at += m_at < m_text.size() && m_text[m_at] == L' ' ? 1 : 0;
                parted = true;
            } else if (c == L'\\' && m_at < m_text.size()) {
                m_line += m_text[m_at++];
            } else {
                m_line += c;
            }
        }
        ++m_at;
    }

    const std::wstring& m_text;
    std::size_t m_at = 0;
    std::wstring m_line;
    std::vector<std::wstring> m_lines;
};

enum Horizontal { kLeft, kCenter, kRight, kAligned, kMiddle, kFit };
enum Vertical { kBaseline, kBottom, kMiddleOfHeight, kTop };

TextAcross acrossOf(int horizontal) {
    switch (horizontal) {
    case kCenter:
    case kMiddle: return TextAcross::center;
    case kRight: return TextAcross::right;
    case kAligned: return TextAcross::aligned;
    case kFit: return TextAcross::fit;
    default: return TextAcross::left;
    }
}

TextAlong alongOf(int vertical) {
    switch (vertical) {
    case kBottom: return TextAlong::bottom;
    case kMiddleOfHeight: return TextAlong::middle;
    case kTop: return TextAlong::top;
    default: return TextAlong::baseline;
    }
}

/// Mirrored texts (group 71: 2 backwards, 4 upside down) run the other way from their anchor; those that fill
/// a span stay in it.
HxGeMatrix3d generation(int flags, double span) {
    return HxGeMatrix3d::translation({flags & 2 ? span : 0, 0}) *
           HxGeMatrix3d::scaling(flags & 2 ? -1 : 1, flags & 4 ? -1 : 1, 1);
}

/// Anchor, direction and alignment of a text of one line.
void setLine(TextContent& content, const EntityFields& fields, int vertical) {
    const int horizontal = fields.integer(72);
    const bool justified = (horizontal != kLeft || vertical != kBaseline) && fields.has(11);
    double rotation = fields.angle(50);
    HxGePoint3d anchor = justified ? fields.point(11) : fields.point(10);
    if (justified) {
        content.across = acrossOf(horizontal);
        content.along = horizontal == kMiddle ? TextAlong::middle : alongOf(vertical);
    }
    if (content.across == TextAcross::aligned || content.across == TextAcross::fit) {
        const HxGeVector3d along = fields.point(11) - fields.point(10);
        anchor = fields.point(10);
        rotation = std::atan2(along.y, along.x);
        content.span = std::hypot(along.x, along.y);
    }
    content.placement = fields.plane() * HxGeMatrix3d::translation({anchor.x, anchor.y, anchor.z}) *
                        HxGeMatrix3d::rotationZ(rotation) * generation(fields.integer(71), content.span);
}

/// The plane of a paragraph: turned by an angle, or along a direction.
HxGeMatrix3d paragraphPlane(const EntityFields& fields) {
    const HxGeVector3d normal = fields.extrusion().normal();
    HxGeMatrix3d turn = fields.plane() * HxGeMatrix3d::rotationZ(fields.angle(50));
    const HxGeVector3d up = normal.cross(fields.vector(11)).normal();
    if (fields.has(11) && up.length() > 0) {
        const HxGeVector3d along = up.cross(normal);
        turn.entry = {{{along.x, up.x, normal.x, 0},
                       {along.y, up.y, normal.y, 0},
                       {along.z, up.z, normal.z, 0},
                       {0, 0, 0, 1}}};
    }
    const HxGePoint3d& at = fields.point(10);
    return HxGeMatrix3d::translation({at.x, at.y, at.z}) * turn;
}

}  // namespace

std::wstring plainLine(const std::wstring& text) {
    std::wstring out;
    out.reserve(text.size());
    for (std::size_t at = 0; at < text.size();) {
        takeCharacter(text, at, out);
    }
    return out;
}

std::vector<std::wstring> plainParagraph(const std::wstring& text) { return ParagraphReader(text).read(); }

bool isValueDefinition(const EntityFields& fields, std::string_view type) {
    constexpr int kConstant = 2;
    return type == "ATTDEF" && (fields.integer(70) & kConstant) == 0;
}

TextContent lineTextContent(const EntityFields& fields, std::string_view type) {
    constexpr int kInvisible = 1;
    TextContent content;
    const bool attribute = type != "TEXT";
    const bool stands = isValueDefinition(fields, type);
    if (attribute && (fields.integer(70) & kInvisible) && !stands) {
        return content;
    }
    content.lines.push_back(plainLine(fields.text(stands ? 2 : 1)));
    content.style = fields.text(7);
    content.height = std::fabs(fields.real(40));
    content.widthFactor = std::fabs(fields.real(41, 1));
    content.oblique = fields.angle(51);
    setLine(content, fields, fields.integer(attribute ? 74 : 73));
    return content;
}

TextContent paragraphContent(const EntityFields& fields) {
    TextContent content;
    content.isParagraph = true;
    content.lines = plainParagraph(fields.text(1));
    content.style = fields.text(7);
    content.height = std::fabs(fields.real(40));
    content.placement = paragraphPlane(fields);
    content.wrapWidth = std::max(fields.real(41), 0.0);
    content.linePitch = content.height * kLinePitch * fields.real(44, 1);
    content.measuredWidth = std::max(fields.real(42), 0.0);
    content.measuredHeight = std::max(fields.real(43), 0.0);
    const int attachment = std::min(std::max(fields.integer(71, 1), 1), 9) - 1;
    constexpr TextAcross kAcross[] = {TextAcross::left, TextAcross::center, TextAcross::right};
    constexpr TextAlong kAlong[] = {TextAlong::top, TextAlong::middle, TextAlong::bottom};
    content.across = kAcross[attachment % 3];
    content.along = kAlong[attachment / 3];
    return content;
}

}  // namespace korvex
