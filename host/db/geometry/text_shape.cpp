// Boxes around text. Fonts are not looked at: characters are taken to be as wide as those of an average font,
// which is near enough to pick by.
#include "host/db/geometry/shape_readers.h"
#include "host/db/geometry/text_content.h"

#include <algorithm>

namespace korvex {

namespace {

constexpr double kCharacterWidth = 0.75;  ///< of the text height

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

double leftOf(TextAcross across, double width) {
    return across == TextAcross::right ? -width : across == TextAcross::center ? -width / 2 : 0;
}

/// The longest line and the number of lines, broken where they are too long.
void measure(const TextContent& content, double character, double& longest, double& count) {
    const double most = character > 0 && content.wrapWidth > 0 ? content.wrapWidth / character : 0;
    for (const std::wstring& line : content.lines) {
        const auto length = static_cast<double>(line.size());
        const double broken = most > 0 ? std::max(std::ceil(length / most), 1.0) : 1;
        count += broken;
        longest = std::max(longest, broken > 1 ? most : length);
    }
}

TextBox boxOf(const TextContent& content) {
    const double character = content.height * content.widthFactor * kCharacterWidth;
    double longest = 0;
    double count = 0;
    measure(content, character, longest, count);
    TextBox box;
    box.width = content.span > 0            ? content.span
                : content.measuredWidth > 0 ? content.measuredWidth
                                            : longest * character;
    box.height = content.measuredHeight > 0 ? content.measuredHeight
                                            : content.height + std::max(count - 1, 0.0) * content.linePitch;
    box.left = leftOf(content.across, box.width);
    box.bottom = content.along == TextAlong::top      ? -box.height
                 : content.along == TextAlong::middle ? -box.height / 2
                                                      : 0;
    return box;
}

}  // namespace

Shape lineTextShape(const EntityFields& fields, std::string_view type) {
    const TextContent content = lineTextContent(fields, type);
    Shape shape = boxShape(boxOf(content), content.placement);
    shape.isTemplate = isValueDefinition(fields, type);
    return shape;
}

Shape paragraphShape(const EntityFields& fields) {
    const TextContent content = paragraphContent(fields);
    return boxShape(boxOf(content), content.placement);
}

}  // namespace korvex
