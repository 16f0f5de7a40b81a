// Ids and handles.
#include "host/db/kernel/stub.h"

#include <cwctype>

namespace {

constexpr wchar_t kDigits[] = L"0123456789ABCDEF";
constexpr std::size_t kMostDigits = 16;

int digitOf(wchar_t c) {
    if (c >= L'0' && c <= L'9') {
        return c - L'0';
    }
    const wchar_t lower = static_cast<wchar_t>(std::towlower(static_cast<wint_t>(c)));
    return lower >= L'a' && lower <= L'f' ? lower - L'a' + 10 : -1;
}

}  // namespace

HxDbHandle::HxDbHandle(const wchar_t* text) {
    std::size_t digits = 0;
    for (; text && text[digits]; ++digits) {
        const int digit = digitOf(text[digits]);
        if (digit < 0 || digits == kMostDigits) {
            m_value = 0;
            return;
        }
        m_value = m_value << 4U | static_cast<std::uint64_t>(digit);
    }
}

bool HxDbHandle::getIntoAsciiBuffer(wchar_t* buffer, std::size_t size) const {
    std::size_t digits = 1;
    while (digits < kMostDigits && m_value >> (4 * digits) != 0) {
        ++digits;
    }
    if (!buffer || size <= digits) {
        return false;
    }
    for (std::size_t i = 0; i < digits; ++i) {
        buffer[i] = kDigits[m_value >> (4 * (digits - 1 - i)) & 15U];
    }
    buffer[digits] = 0;
    return true;
}

bool HxDbObjectId::isValid() const {
    return m_stub && m_stub->database && (m_stub->object || !m_stub->blob.empty());
}

bool HxDbObjectId::isErased() const { return m_stub && m_stub->erased; }

HxDbHandle HxDbObjectId::handle() const { return HxDbHandle(m_stub ? m_stub->handle : 0); }

HxDbDatabase* HxDbObjectId::database() const { return m_stub ? m_stub->database : nullptr; }
