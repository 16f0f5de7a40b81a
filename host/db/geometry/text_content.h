// What texts say and how they are set: their plain text, without the codes that drawings format it with.
#pragma once

#include "host/db/geometry/entity_fields.h"

#include <string>
#include <vector>

namespace korvex {

/// Where the lines of a text lie across the point that it is set at.
enum class TextAcross : std::uint8_t {
    left,
    center,
    right,
    aligned,  ///< fills `span`, its height as its width demands
    fit,      ///< fills `span` at its own height
};
/// And along it: the first line's base line, or the top, middle or bottom of all lines.
enum class TextAlong : std::uint8_t { baseline, bottom, middle, top };

/// A text of one line, or a paragraph.
struct TextContent {
    std::vector<std::wstring> lines;  ///< as the text itself breaks them
    std::wstring style;               ///< name of the text style; empty for the standard one
    HxGeMatrix3d placement;           ///< from the plane of the text (base line along x) to its owner's
                                      ///< coordinates
    double height = 0;                ///< of capitals, in drawing units
    double widthFactor = 1;
    double oblique = 0;        ///< radians to the right
    bool isParagraph = false;  ///< takes width factor and slant from its style
    TextAcross across = TextAcross::left;
    TextAlong along = TextAlong::baseline;
    double span = 0;                               ///< of aligned and fitted texts
    double wrapWidth = 0;                          ///< longer lines of a paragraph are broken here; 0: never
    double linePitch = 0;                          ///< from base line to base line
    double measuredWidth = 0, measuredHeight = 0;  ///< as the drawing tells them; 0 when it does not
};

/// TEXT, ATTRIB, ATTDEF. Of a definition that is no constant the tag is shown. No lines for what is
/// invisible.
TextContent lineTextContent(const EntityFields& fields, std::string_view type);
/// MTEXT.
TextContent paragraphContent(const EntityFields& fields);

/// An attribute definition that stands for a value, as opposed to a constant.
bool isValueDefinition(const EntityFields& fields, std::string_view type);

/// "%%c", "%%d", "%%p", "%%nnn" and "^I" become the characters that they stand for, marks for lines over and
/// under the text go.
std::wstring plainLine(const std::wstring& text);
/// The same for a paragraph with its codes ("\P", "\H2x;", "{\C1;...}", "\S1/2;"), one text a line.
std::vector<std::wstring> plainParagraph(const std::wstring& text);

}  // namespace korvex
