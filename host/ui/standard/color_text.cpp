// Colours as texts, and texts as colours.
#include "host/ui/standard/color_text.h"

#include "host/base/text.h"

#include <QRegularExpression>
#include <QStringList>

namespace korvex {

std::optional<HxCmColor> readIndexColor(const QString& text, bool allowMetaColors) {
    const QString wanted = text.trimmed();
    bool isNumber = false;
    const int number = wanted.toInt(&isNumber);
    if (isNumber) {
        return number >= 1 && number <= 255
                   ? std::optional(HxCmColor::byIndex(static_cast<std::int16_t>(number)))
                   : std::nullopt;
    }
    const std::int16_t index = HxCmColor::standardColorIndex(toWide(wanted).c_str());
    const bool isUnknown =
        index == HxCmColor::kIndexWhite && wanted.compare(QLatin1String("white"), Qt::CaseInsensitive) != 0;
    const bool isMeta = index == HxCmColor::kIndexByLayer || index == HxCmColor::kIndexByBlock;
    if (isUnknown || (isMeta && !allowMetaColors)) {
        return {};
    }
    return HxCmColor::byIndex(index);
}

std::optional<QColor> readRgb(const QString& text) {
    const QStringList parts = text.split(',');
    if (parts.size() != 3) {
        return {};
    }
    int values[3] = {};
    for (int i = 0; i < 3; ++i) {
        bool isNumber = false;
        values[i] = parts[i].trimmed().toInt(&isNumber);
        if (!isNumber || values[i] < 0 || values[i] > 255) {
            return {};
        }
    }
    return QColor(values[0], values[1], values[2]);
}

std::optional<QColor> readHex(const QString& text) {
    static const QRegularExpression digits(QStringLiteral("^\\s*#?([0-9A-Fa-f]{6})\\s*$"));
    const QRegularExpressionMatch match = digits.match(text);
    return match.hasMatch() ? std::optional(QColor('#' + match.captured(1))) : std::nullopt;
}

QString rgbText(const QColor& color) {
    return QStringLiteral("%1,%2,%3").arg(color.red()).arg(color.green()).arg(color.blue());
}

QString describeColor(const HxCmColor& color) {
    const QString name = toQString(color.colorNameForDisplay());
    return color.isFromBook() ? QStringLiteral("%1 (%2)").arg(name, toQString(color.bookName())) : name;
}

QColor indexColor(int index) { return QColor::fromRgb(hxedGetRGB(index)); }

QColor seenColor(const HxCmColor& color, const HxCmColor& layerColor) {
    if (color.isByLayer()) {
        return layerColor.isByLayer() ? indexColor(HxCmColor::kIndexWhite)
                                      : seenColor(layerColor, layerColor);
    }
    if (color.isByBlock()) {
        return indexColor(HxCmColor::kIndexWhite);
    }
    return color.isByColor() ? QColor(color.red(), color.green(), color.blue())
                             : indexColor(color.colorIndex());
}

}  // namespace korvex
