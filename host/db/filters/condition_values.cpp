// What properties and their values are called in expressions.
#include "host/db/filters/layer_condition.h"
#include "host/db/kernel/text_fold.h"
#include "host/db/tables/layer_values.h"

#include <algorithm>
#include <array>
#include <cmath>
#include <optional>
#include <vector>

namespace korvex {

namespace {

constexpr PropertyName kProperties[] = {
    {L"NAME", LayerProperty::name, false},
    {L"LINETYPE", LayerProperty::linetype, false},
    {L"VPLINETYPE", LayerProperty::linetype, true},
    {L"PLOTSTYLE", LayerProperty::plotStyle, false},
    {L"VPPLOTSTYLE", LayerProperty::plotStyle, true},
    {L"DESCRIPTION", LayerProperty::description, false},
    {L"COLOR", LayerProperty::color, false},
    {L"VPCOLOR", LayerProperty::color, true},
    {L"LINEWEIGHT", LayerProperty::lineWeight, false},
    {L"VPLINEWEIGHT", LayerProperty::lineWeight, true},
    {L"TRANSPARENCY", LayerProperty::transparency, false},
    {L"VPTRANSPARENCY", LayerProperty::transparency, true},
    {L"STATUS", LayerProperty::status, false},
    {L"ON", LayerProperty::on, false},
    {L"OFF", LayerProperty::off, false},
    {L"FROZEN", LayerProperty::frozen, false},
    {L"LOCKED", LayerProperty::locked, false},
    {L"PLOT", LayerProperty::plottable, false},
    {L"PLOTTABLE", LayerProperty::plottable, false},
    {L"NEWVPFROZEN", LayerProperty::frozenInNewViewports, false},
    {L"USED", LayerProperty::used, false},
    {L"XREF", LayerProperty::dependent, false},
    {L"VPFROZEN", LayerProperty::frozenInViewport, false},
    {L"VPOVERRIDE", LayerProperty::overridden, false},
};

constexpr int kWeightOffset = LayerCondition::kWeightOffset;
constexpr int kHeaviest = 211;
constexpr int kHundredthsOfMillimetre = 100;
constexpr int kMostPerCent = 100;
/// What a layer without a weight of its own counts as when weights are ordered.
constexpr int kDefaultWeight = 25;

std::wstring_view trimmed(std::wstring_view text) {
    const std::size_t first = std::min(text.find_first_not_of(L' '), text.size());
    text.remove_prefix(first);
    return text.substr(0, text.find_last_not_of(L' ') + 1);
}

/// A decimal number that is the whole text but for a unit behind it.
std::optional<double> numberIn(std::wstring_view text, std::wstring_view unit) {
    text = trimmed(text);
    if (text.size() > unit.size() && equalNames(text.substr(text.size() - unit.size()), unit)) {
        text = trimmed(text.substr(0, text.size() - unit.size()));
    }
    constexpr std::size_t kLongest = 20;
    if (text.empty() || text.size() > kLongest ||
        text.find_first_not_of(L"0123456789.") != std::wstring_view::npos) {
        return {};
    }
    double number = 0;
    double place = 1;
    bool behindPoint = false;
    for (const wchar_t c : text) {
        if (c == L'.') {
            if (behindPoint) {
                return {};
            }
            behindPoint = true;
            continue;
        }
        number = number * 10 + (c - L'0');
        place *= behindPoint ? 10 : 1;
    }
    return number / place;
}

/// Hundredths of a millimetre; whole numbers that are no weight in millimetres are taken as hundredths.
std::optional<int> weightIn(std::wstring_view text) {
    const std::optional<double> number = numberIn(text, L"mm");
    if (!number || *number > kHeaviest) {
        return {};
    }
    const int hundredths = static_cast<int>(std::lround(*number * kHundredthsOfMillimetre));
    const bool isWhole = *number == std::floor(*number);
    return isWhole && !isLayerLineWeight(hundredths) ? static_cast<int>(*number) : hundredths;
}

/// "255,0,0", also with "RGB:" in front, as 0x00BBGGRR.
std::optional<long> trueColorIn(std::wstring_view text) {
    constexpr std::wstring_view kPrefix = L"RGB:";
    constexpr int kParts = 3;
    if (equalNames(text.substr(0, kPrefix.size()), kPrefix)) {
        text.remove_prefix(kPrefix.size());
    }
    long rgb = 0;
    for (int part = 0; part < kParts; ++part) {
        const std::size_t comma = text.find(L',');
        const std::optional<double> number = numberIn(text.substr(0, comma), L"");
        const bool isLast = part == kParts - 1;
        if (!number || *number > 255 || *number != std::floor(*number) ||
            isLast != (comma == std::wstring_view::npos)) {
            return {};
        }
        rgb |= static_cast<long>(*number) << (8 * part);
        text.remove_prefix(isLast ? text.size() : comma + 1);
    }
    return rgb;
}

using Names = std::array<std::wstring, 4>;

Names weightNames(int value) {
    if (value == 0) {
        return {L"Default"};
    }
    const std::wstring text = lineWeightInMillimetres(value - kWeightOffset);  // "0.25 mm"
    const std::wstring number = text.substr(0, text.find(L' '));
    return {text, number, number + L"mm"};
}

Names colorNames(int index) {
    Names names{std::to_wstring(index)};
    constexpr int kNamed = HxCmColor::kIndexWhite;
    if (index <= kNamed) {
        names[1] = HxCmColor::byIndex(static_cast<std::int16_t>(index)).colorNameForDisplay();
    }
    names[2] = L"Color " + std::to_wstring(index);
    return names;
}

Names flagNames(bool value) {
    return value ? Names{L"True", L"1", L"Yes", L"On"} : Names{L"False", L"0", L"No", L"Off"};
}

Names statusNames(int value) {
    constexpr int kUsed = 1;
    return value == 0 ? Names{L"Unused"} : value == kUsed ? Names{L"Used"} : Names{L"Current", L"Used"};
}

/// First and last of the small numbers that a property's values stand for.
std::pair<int, int> rangeOf(LayerProperty property) {
    switch (property) {
    case LayerProperty::color: return {1, 255};
    case LayerProperty::lineWeight: return {0, kHeaviest + kWeightOffset};
    case LayerProperty::transparency: return {0, kMostPerCent};
    case LayerProperty::status: return {0, 2};
    default: return {0, 1};
    }
}

Names namesOf(LayerProperty property, int value) {
    switch (property) {
    case LayerProperty::color: return colorNames(value);
    case LayerProperty::lineWeight: return weightNames(value);
    case LayerProperty::transparency: return {std::to_wstring(value), std::to_wstring(value) + L"%"};
    case LayerProperty::status: return statusNames(value);
    default: return flagNames(value != 0);
    }
}

/// Not every number between the lightest and the heaviest weight is one.
bool isValue(LayerProperty property, int value) {
    return property != LayerProperty::lineWeight || value == 0 || isLayerLineWeight(value - kWeightOffset);
}

}  // namespace

const PropertyName* propertyNamed(std::wstring_view name) {
    const auto found = std::find_if(std::begin(kProperties), std::end(kProperties),
                                    [&](const PropertyName& known) { return equalNames(known.name, name); });
    return found == std::end(kProperties) ? nullptr : found;
}

bool LayerCondition::make(const PropertyName& property, Comparison comparison, std::wstring_view value,
                          std::wstring& reason) {
    m_property = property.property;
    m_inViewport = property.inViewport;
    m_comparison = comparison;
    const bool isOrdered = comparison != Comparison::equal && comparison != Comparison::different;
    if (isText()) {
        if (isOrdered) {
            m_bound = foldName(value);
        } else {
            m_pattern = std::make_unique<Pattern>(value);
        }
        return true;
    }
    if (isOrdered) {
        return acceptOrdered(value, reason);
    }
    if (!acceptEqual(value)) {
        reason = property.name + std::wstring(L" cannot be \"") + std::wstring(value) + L"\"";
        return false;
    }
    if (comparison == Comparison::different) {
        m_accepted.flip();
    }
    return true;
}

bool LayerCondition::acceptOrdered(std::wstring_view value, std::wstring& reason) {
    if (m_property >= LayerProperty::status) {
        reason = L"this property has no order; use == or !=";
        return false;
    }
    const bool isWeight = m_property == LayerProperty::lineWeight;
    const std::optional<int> weight = isWeight ? weightIn(value) : std::nullopt;
    const std::optional<double> number = isWeight ? std::optional<double>(weight) : numberIn(value, L"%");
    if (!number) {
        reason = L"a number is expected";
        return false;
    }
    const auto [first, last] = rangeOf(m_property);
    for (int v = first; v <= last; ++v) {
        const int compared = !isWeight ? v : v == 0 ? kDefaultWeight : v - kWeightOffset;
        const int order = compared < *number ? -1 : compared > *number ? 1 : 0;
        const bool passes = m_comparison == Comparison::less          ? order < 0
                            : m_comparison == Comparison::greater     ? order > 0
                            : m_comparison == Comparison::lessOrEqual ? order <= 0
                                                                      : order >= 0;
        m_accepted[static_cast<std::size_t>(v)] = passes;
    }
    return true;
}

/// False when none of the property's values is meant.
bool LayerCondition::acceptEqual(std::wstring_view value) {
    const bool isColor = m_property == LayerProperty::color;
    if (isColor) {
        if (const std::optional<long> rgb = trueColorIn(value)) {
            m_rgb = *rgb;
            return true;
        }
    }
    if (m_property == LayerProperty::lineWeight) {
        const std::optional<int> weight = weightIn(value);
        if (weight && isLayerLineWeight(*weight)) {
            m_accepted.set(static_cast<std::size_t>(*weight + kWeightOffset));
            return true;
        }
    }
    m_pattern = std::make_unique<Pattern>(value);
    const auto [first, last] = rangeOf(m_property);
    for (int v = first; v <= last; ++v) {
        const Names names = namesOf(m_property, v);
        m_accepted[static_cast<std::size_t>(v)] =
            isValue(m_property, v) && m_pattern->matchesAny({names[0], names[1].empty() ? names[0] : names[1],
                                                             names[2].empty() ? names[0] : names[2],
                                                             names[3].empty() ? names[0] : names[3]});
    }
    return isColor || m_accepted.any();  // what a colour book calls its colours is anyone's guess
}

}  // namespace korvex
