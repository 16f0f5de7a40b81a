// The value prompts of -LAYER and VPLAYER.
#include "host/editor/commands/layer_values.h"

#include "host/db/tables/layer_values.h"
#include "host/editor/color_books.h"
#include "host/editor/commands/command_support.h"
#include "host/editor/number_text.h"
#include "host/editor/system_variables.h"
#include "sdk/hxdbdict.h"

#include <algorithm>
#include <cmath>

namespace korvex {

namespace {

constexpr int kWeights[] = {0,  5,  9,  13, 15, 18,  20,  25,  30,  35,  40,  50,
                            53, 60, 70, 80, 90, 100, 106, 120, 140, 158, 200, 211};
constexpr double kHundredthsOfInch = 2540;
constexpr double kHundredthsOfMillimetre = 100;

bool inInches() { return integerVariable(L"LWUNITS") == 0; }

/// "255,128,0".
std::optional<ColorAnswer> askTrueColor() {
    for (;;) {
        const Answer answer = askWord({L"Red,Green,Blue:", nullptr, RSG_NONULL});
        if (!answer.isValue()) {
            return {};
        }
        HxGePoint3d rgb;
        const auto isByte = [](double v) { return v >= 0 && v <= 255 && std::floor(v) == v; };
        if (readPoint(answer.text, {}, rgb) && answer.text.find_first_of(L"@<*") == std::wstring::npos &&
            isByte(rgb.x) && isByte(rgb.y) && isByte(rgb.z)) {
            return ColorAnswer{HxCmColor::byRgb(static_cast<std::uint8_t>(rgb.x),
                                                static_cast<std::uint8_t>(rgb.y),
                                                static_cast<std::uint8_t>(rgb.z))};
        }
        refuse(quoted(answer.text) +
               L" is no true colour: give three numbers from 0 to 255, such as 255,128,0.");
    }
}

/// A colour of a colour book, or one that a layer of the drawing has.
std::optional<ColorAnswer> askBookColor() {
    const Answer book = askName({L"Enter color book name:", nullptr, RSG_NONULL});
    if (!book.isValue()) {
        return {};
    }
    const Answer name = askName({L"Enter color name:", nullptr, RSG_NONULL});
    if (!name.isValue()) {
        return {};
    }
    const std::optional<HxCmColor> known = findBookColor(drawing(), book.text, name.text);
    if (!known) {
        refuse(L"Color " + quoted(name.text) + L" of book " + quoted(book.text) +
               L" is not known: neither a color book nor a layer of this drawing has it. Give it as a true "
               L"color "
               L"(Truecolor) instead.");
        return {};
    }
    return ColorAnswer{*known};
}

bool isColorIndex(int index) { return index >= 1 && index <= 255; }

/// An index, perhaps negative, or the name of a standard colour.
std::optional<ColorAnswer> readColor(const std::wstring& text) {
    const bool negative = text.size() > 1 && text.front() == L'-';
    const std::wstring name = text.substr(negative ? 1 : 0);
    int index = 0;
    if (!readInteger(name, index)) {
        const int standard = HxCmColor::standardColorIndex(name.c_str());
        const bool isWhite = CStdStr<wchar_t>(name).CompareNoCase(L"white") == 0;
        index = standard == HxCmColor::kIndexWhite && !isWhite ? 0 : standard;
    }
    if (!isColorIndex(index)) {
        return {};
    }
    return ColorAnswer{HxCmColor::byIndex(static_cast<std::int16_t>(index)), negative};
}

}  // namespace

std::optional<ColorAnswer> askColor(std::int16_t fallback) {
    const std::wstring prompt = L"New color [Truecolor/COlorbook] <" +
                                std::wstring(HxCmColor::byIndex(fallback).colorNameForDisplay()) + L">:";
    for (;;) {
        const Answer answer = askKeyword({prompt, L"Truecolor COlorbook", RSG_OTHER});
        if (answer.isCancelled()) {
            return {};
        }
        if (answer.isNone()) {
            return ColorAnswer{HxCmColor::byIndex(fallback)};
        }
        if (answer.isKeywordOf(L"Truecolor")) {
            return askTrueColor();
        }
        if (answer.isKeywordOf(L"COlorbook")) {
            return askBookColor();
        }
        if (std::optional<ColorAnswer> color = readColor(answer.text)) {
            return color;
        }
        refuse(quoted(answer.text) + L" is no colour: give 1 to 255, a name such as red, or Truecolor.");
    }
}

std::optional<HxDbObjectId> askLinetype() {
    const Answer name = askName({L"Enter loaded linetype name <Continuous>:"});
    if (name.isCancelled()) {
        return {};
    }
    const std::wstring wanted = name.isNone() ? L"Continuous" : name.text;
    const HxDbObjectPointer<HxDbSymbolTable> table(drawing().linetypeTableId(), HxDb::kForRead);
    HxDbObjectId id;
    if (!table || table->getAt(wanted.c_str(), id) != Hx::eOk) {
        refuse(L"There is no linetype " + quoted(wanted) + L" in this drawing.");
        return {};
    }
    return id;
}

std::wstring lineweightText(HxDb::LineWeight weight) {
    return weight < 0 || !inInches() ? lineWeightInMillimetres(weight)
                                     : realText(weight / kHundredthsOfInch, 3) + L"\"";
}

std::optional<HxDb::LineWeight> askLineweight() {
    const double largest = inInches() ? 211 / kHundredthsOfInch : 211 / kHundredthsOfMillimetre;
    const std::wstring prompt = inInches() ? L"Enter lineweight (0.0\" - 0.083\") or [Default]:"
                                           : L"Enter lineweight (0.0 - 2.11 mm) or [Default]:";
    for (;;) {
        const Answer answer = askReal({prompt, L"Default", RSG_NONEG});
        if (answer.isCancelled()) {
            return {};
        }
        if (answer.isNone() || answer.isKeyword) {
            return HxDb::kLnWtByLwDefault;
        }
        if (answer.real > largest + 0.0005) {
            refuse(L"The largest lineweight is " + lineweightText(static_cast<HxDb::LineWeight>(211)) + L".");
            continue;
        }
        const double hundredths = answer.real * (inInches() ? kHundredthsOfInch : kHundredthsOfMillimetre);
        const int nearest =
            *std::min_element(std::begin(kWeights), std::end(kWeights), [hundredths](int a, int b) {
                return std::fabs(a - hundredths) < std::fabs(b - hundredths);
            });
        const auto weight = static_cast<HxDb::LineWeight>(nearest);
        if (std::fabs(nearest - hundredths) > 1) {
            say(L"Lineweight rounded to " + lineweightText(weight) + L".");
        }
        return weight;
    }
}

std::optional<HxCmTransparency> askTransparency() {
    for (;;) {
        const Answer answer =
            askInteger({L"Enter transparency value (0-90):", nullptr, RSG_NONULL | RSG_NONEG});
        if (!answer.isValue()) {
            return {};
        }
        if (answer.integer <= 90) {
            HxCmTransparency transparency;
            transparency.setAlphaPercent(answer.integer);
            return transparency;
        }
        refuse(L"The largest transparency is 90.");
    }
}

std::optional<HxDbObjectId> askPlotStyle() {
    const Answer name = askName({L"Enter plot style name <Normal>:"});
    if (name.isCancelled()) {
        return {};
    }
    const std::wstring wanted = name.isNone() ? L"Normal" : name.text;
    const HxDbObjectPointer<HxDbDictionary> styles(drawing().getPlotStyleNameDictionaryId(), HxDb::kForRead);
    HxDbObjectId id;
    if (drawing().plotStyleMode()) {
        refuse(L"This drawing's plot styles depend on colours: layers have none of their own.");
        return {};
    }
    if (!styles || styles->getAt(wanted.c_str(), id) != Hx::eOk) {
        refuse(L"There is no plot style " + quoted(wanted) + L" in this drawing.");
        return {};
    }
    return id;
}

}  // namespace korvex
