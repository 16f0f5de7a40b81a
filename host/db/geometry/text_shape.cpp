// Boxes around text. Fonts are not looked at: characters are taken to be as wide as those of an average font,
// which is near enough to pick by.
#include "host/db/geometry/shape_readers.h"

#include <algorithm>

namespace korvex {

namespace {

constexpr double kCharacterWidth = 0.75;  ///< of the text height
constexpr double kLinePitch = 5.0 / 3;

/// A box along a base line.
struct TextBox {
    double left = 0, bottom = 0, width = 0, height = 0;
};

Shape boxShape(const TextBox& box, const HxGeMatrix3d& placement) {
    Shape shape;
    const double right = box.left + box.width;
    const double top = box.bottom + box.height;
    if (!(box.width > 0) || !(box.height > 0)) {
        return shape;
    }
    shape.path.moveTo({box.left, box.bottom});
    shape.path.lineTo({right, box.bottom});
    shape.path.lineTo({right, top});
    shape.path.lineTo({box.left, top});
    shape.path.close();
    shape.path.transform(placement);
    shape.kind = shape.path.isEmpty() ? ShapeKind::none : ShapeKind::text;
    shape.filling = Filling::evenOdd;
    return shape;
}

/// "%%d" and the like are one character.
std::size_t lineLength(const std::wstring& text) {
    std::size_t length = 0;
    for (std::size_t i = 0; i < text.size(); ++i, ++length) {
        if (text.compare(i, 2, L"%%") == 0) {
            i += 2;
        }
    }
    return length;
}

enum Horizontal { kLeft, kCenter, kRight, kAligned, kMiddle, kFit };
enum Vertical { kBaseline, kBottom, kMiddleOfHeight, kTop };

/// Where a text of one line stands: its anchor, its direction, its size.
struct LineText {
    HxGePoint3d anchor;
    double rotation = 0;
    TextBox box;
};

LineText lineText(const EntityFields& fields, std::size_t length, int vertical) {
    const int horizontal = fields.integer(72);
    const bool justified = (horizontal != kLeft || vertical != kBaseline) && fields.has(11);
    LineText line;
    line.rotation = fields.angle(50);
    line.anchor = justified ? fields.point(11) : fields.point(10);
    TextBox& box = line.box;
    box.height = std::fabs(fields.real(40));
    box.width = box.height * std::fabs(fields.real(41, 1)) * kCharacterWidth * static_cast<double>(length);
    if (justified && (horizontal == kAligned || horizontal == kFit)) {
        const HxGeVector3d along = fields.point(11) - fields.point(10);
        line.anchor = fields.point(10);
        line.rotation = std::atan2(along.y, along.x);
        box.width = std::hypot(along.x, along.y);
    } else if (justified && horizontal != kLeft) {
        box.left = horizontal == kRight ? -box.width : -box.width / 2;
    }
    if (justified && (horizontal == kMiddle || vertical == kMiddleOfHeight)) {
        box.bottom = -box.height / 2;
    } else if (justified && vertical == kTop) {
        box.bottom = -box.height;
    }
    return line;
}

/// Mirrored texts (group 71: 2 backwards, 4 upside down) run the other way from their anchor.
HxGeMatrix3d generation(int flags) {
    return HxGeMatrix3d::scaling(flags & 2 ? -1 : 1, flags & 4 ? -1 : 1, 1);
}

/// Characters in each line of a paragraph, its codes left out, wrapped at `width` characters.
class ParagraphMeasure {
public:
    ParagraphMeasure(const std::wstring& text, double width) : m_width(width) {
        for (std::size_t i = 0; i < text.size(); ++i) {
            if (text[i] == L'\\' && i + 1 < text.size()) {
                i = afterCode(text, i + 1);
            } else if (text[i] != L'{' && text[i] != L'}') {
                ++m_length;
            }
        }
        endLine();
    }
    double lines() const { return m_lines; }
    double longest() const { return m_longest; }

private:
    /// The last character of the code that begins at i.
    std::size_t afterCode(const std::wstring& text, std::size_t i) {
        static const std::wstring kWithValue = L"ACcFfHQTWpS";
        if (text[i] == L'P' || text[i] == L'N') {
            endLine();
        } else if (kWithValue.find(text[i]) != std::wstring::npos) {
            const std::size_t end = std::min(text.find(L';', i), text.size());
            m_length += text[i] == L'S' ? static_cast<double>(end - i) / 2 : 0;
            return end;
        } else if (text[i] == L'\\' || text[i] == L'{' || text[i] == L'}' || text[i] == L'~') {
            ++m_length;
        }
        return i;
    }

    void endLine() {
        const double wrapped = m_width > 0 ? std::max(std::ceil(m_length / m_width), 1.0) : 1;
        m_lines += wrapped;
        m_longest = std::max(m_longest, wrapped > 1 ? m_width : m_length);
        m_length = 0;
    }

    double m_width;
    double m_length = 0;
    double m_lines = 0;
    double m_longest = 0;
};

TextBox paragraphBox(const EntityFields& fields) {
    const double height = std::fabs(fields.real(40));
    const double character = height * kCharacterWidth;
    const double reference = fields.real(41);
    const ParagraphMeasure measure(fields.text(1), character > 0 ? std::max(reference / character, 0.0) : 0);
    TextBox box;
    box.width = fields.real(42) > 0 ? fields.real(42) : measure.longest() * character;
    box.height = fields.real(43) > 0 ? fields.real(43)
                                     : height * (1 + (measure.lines() - 1) * kLinePitch * fields.real(44, 1));
    const int attachment = std::min(std::max(fields.integer(71, 1), 1), 9) - 1;
    const int column = attachment % 3;
    const int row = attachment / 3;
    box.left = -box.width * column / 2;
    box.bottom = -box.height * (2 - row) / 2;
    return box;
}

}  // namespace

Shape lineTextShape(const EntityFields& fields, std::string_view type) {
    constexpr int kInvisible = 1, kConstant = 2;
    const bool attribute = type != "TEXT";
    const bool definition = type == "ATTDEF";
    const bool constant = definition && (fields.integer(70) & kConstant);
    if (attribute && (fields.integer(70) & kInvisible) && !(definition && !constant)) {
        return {};
    }
    const std::wstring text = fields.text(definition && !constant ? 2 : 1);
    const LineText line = lineText(fields, lineLength(text), fields.integer(attribute ? 74 : 73));
    Shape shape = boxShape(
        line.box, fields.plane() * HxGeMatrix3d::translation({line.anchor.x, line.anchor.y, line.anchor.z}) *
                      HxGeMatrix3d::rotationZ(line.rotation) * generation(fields.integer(71)));
    shape.isTemplate = definition && !constant;
    return shape;
}

Shape paragraphShape(const EntityFields& fields) {
    const HxGeVector3d normal = fields.extrusion().normal();
    HxGeMatrix3d turn = fields.plane() * HxGeMatrix3d::rotationZ(fields.angle(50));
    const HxGeVector3d across = normal.cross(fields.vector(11)).normal();
    if (fields.has(11) && across.length() > 0) {
        const HxGeVector3d along = across.cross(normal);
        turn.entry = {{{along.x, across.x, normal.x, 0},
                       {along.y, across.y, normal.y, 0},
                       {along.z, across.z, normal.z, 0},
                       {0, 0, 0, 1}}};
    }
    const HxGePoint3d& at = fields.point(10);
    return boxShape(paragraphBox(fields), HxGeMatrix3d::translation({at.x, at.y, at.z}) * turn);
}

}  // namespace korvex
