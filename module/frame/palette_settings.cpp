// Where the layer palette stood, kept in the configuration service.
#include "palette_settings.h"

#include "module_state.h"

#include "hxconfig.h"

#include <QWidget>

#include <algorithm>
#include <array>
#include <cwchar>

namespace {

constexpr wchar_t kVisible[] = L"LayerPalette\\IsVisible";
constexpr wchar_t kSize[] = L"LayerPalette\\HorDockSize";
constexpr wchar_t kDockStyle[] = L"LayerPalette\\DockStyle";
constexpr wchar_t kFloating[] = L"LayerPalette\\IsFloating";
constexpr wchar_t kPosition[] = L"LayerPalette\\Position";

/// Beyond any desktop; keeps damaged settings out of the arithmetic of rectangles.
constexpr int kFarthestPixel = 1 << 20;

bool read(const wchar_t* key, VrexVariant& value) {
    KorvexConfig* const config = vrexConfig();
    return config && config->getValue(kHxConfigUser, key, value) == 0;
}

void write(const wchar_t* key, const VrexVariant& value) {
    if (KorvexConfig* const config = vrexConfig()) config->setValue(kHxConfigUser, key, value);
}

/// Up to four numbers parted by blanks; 0 for those that are missing.
std::array<int, 4> numbersOf(const VrexVariant& value) {
    std::array<int, 4> numbers{};
    std::swscanf(value.asString(), L"%d %d %d %d", &numbers[0], &numbers[1], &numbers[2], &numbers[3]);
    for (int& number : numbers) {
        number = std::clamp(number, -kFarthestPixel, kFarthestPixel);
    }
    return numbers;
}

void resizeTo(QWidget& widget, const VrexVariant& size) {
    const std::array<int, 4> numbers = numbersOf(size);
    widget.setGeometry(QRect(widget.geometry().topLeft(), QSize(numbers[0], numbers[1])));
}

std::wstring joined(std::initializer_list<int> numbers) {
    std::wstring text;
    for (const int number : numbers) {
        text += (text.empty() ? L"" : L" ") + std::to_wstring(number);
    }
    return text;
}

}  // namespace

void LoadPaletteSet() {
    KvPalettePanel* const palette = layerPalette();
    if (!palette) return;
    VrexVariant value;
    const bool floats = read(kFloating, value) && value.asInt32() != 0;
    if (read(kPosition, value) && floats) {
        const std::array<int, 4> corners = numbersOf(value);
        palette->floatAt(corners[0], corners[1]);
    }
    if (read(kSize, value)) resizeTo(*palette->widget(), value);
    const bool isVisibilityKnown = read(kVisible, value);
    const bool isVisible = isVisibilityKnown && value.asInt32() != 0;
    if (isVisibilityKnown) palette->widget()->setVisible(isVisible);
    if (!floats && read(kDockStyle, value) && value.asInt32() != 0) {
        palette->setDockPosition(value.asInt32());
        palette->showPanel(isVisible);
    }
}

void SavePaletteSet() {
    KvPalettePanel* const palette = layerPalette();
    if (!palette) return;
    const QRect place = palette->widget()->geometry();
    const bool floats = palette->isFloating();
    write(kVisible, VrexVariant(static_cast<std::int32_t>(palette->widget()->isVisible())));
    write(kSize, VrexVariant(joined({place.width(), place.height()}).c_str()));
    if (!floats) write(kDockStyle, VrexVariant(static_cast<std::int32_t>(palette->dockPosition())));
    write(kFloating, VrexVariant(static_cast<std::int32_t>(floats)));
    write(kPosition, VrexVariant(joined({place.left(), place.top(), place.right(), place.bottom()}).c_str()));
}
