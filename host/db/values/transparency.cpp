// Transparencies: percentages as users give them, the word that drawings store.
#include "sdk/hxcm.h"

#include <algorithm>
#include <cmath>

namespace {

constexpr double kOpaque = 255;
constexpr double kMostPercent = 90;

}  // namespace

void HxCmTransparency::setAlpha(std::uint8_t alpha) {
    m_method = kByAlpha;
    m_alpha = alpha;
}

void HxCmTransparency::setAlphaPercent(double percent) {
    const double within = percent > 0 ? std::min(percent, kMostPercent) : 0;
    setAlpha(static_cast<std::uint8_t>(kOpaque * (100 - within) / 100));
}

int HxCmTransparency::percent() const {
    return m_method == kByAlpha ? static_cast<int>(std::lround((kOpaque - m_alpha) * 100 / kOpaque)) : 0;
}

std::uint32_t HxCmTransparency::serializeOut() const {
    return static_cast<std::uint32_t>(m_method) << 24U | (m_method == kByAlpha ? m_alpha : 0U);
}

void HxCmTransparency::serializeIn(std::uint32_t word) {
    m_method = static_cast<Method>(std::min<std::uint32_t>(word >> 24U, kErrorValue));
    m_alpha = m_method == kByAlpha ? static_cast<std::uint8_t>(word) : static_cast<std::uint8_t>(kOpaque);
}
