// Typed values of settings.
#include "host/base/log.h"
#include "host/base/text.h"
#include "sdk/hxconfig.h"

#include <cwchar>
#include <new>
#include <utility>

namespace {

/// A copy with its closing null, for delete[].
wchar_t* copyOf(const wchar_t* text) {
    const std::wstring_view view = korvex::viewOf(text);
    auto* const copy = new (std::nothrow) wchar_t[view.size() + 1];
    if (!copy) {
        try {
            korvex::log(korvex::Severity::Error, L"A setting's text cannot be kept: out of memory.");
        } catch (const std::bad_alloc&) {  // no memory for the note either: the caller still learns of it
        }
        throw HxErrorStatusException(Hx::eOutOfMemory);
    }
    korvex::copyText(view, copy, view.size() + 1);
    return copy;
}

}  // namespace

VrexVariant::~VrexVariant() { setEmpty(); }

VrexVariant::VrexVariant(const VrexVariant& other) { *this = other; }

VrexVariant::VrexVariant(VrexVariant&& other) noexcept { *this = std::move(other); }

VrexVariant& VrexVariant::operator=(const VrexVariant& other) {
    if (this == &other) {
        return *this;
    }
    if (other.m_type == kString) {
        setString(other.m_value.text);
    } else {
        setEmpty();
        m_type = other.m_type;
        m_value = other.m_value;
    }
    return *this;
}

VrexVariant& VrexVariant::operator=(VrexVariant&& other) noexcept {
    if (this != &other) {
        setEmpty();
        m_type = std::exchange(other.m_type, kEmpty);
        m_value = other.m_value;
    }
    return *this;
}

bool VrexVariant::operator==(const VrexVariant& other) const {
    if (m_type != other.m_type) {
        return false;
    }
    switch (m_type) {
    case kEmpty: return true;
    case kInt16: return m_value.int16 == other.m_value.int16;
    case kInt32: return m_value.int32 == other.m_value.int32;
    case kInt64: return m_value.int64 == other.m_value.int64;
    case kDouble: return m_value.real == other.m_value.real;
    case kBool: return m_value.flag == other.m_value.flag;
    case kString: return std::wcscmp(m_value.text, other.m_value.text) == 0;
    }
    return false;
}

bool VrexVariant::getInt16(std::int16_t& value) const {
    if (m_type == kInt16) value = m_value.int16;
    return m_type == kInt16;
}

bool VrexVariant::getInt32(std::int32_t& value) const {
    if (m_type == kInt32) value = m_value.int32;
    return m_type == kInt32;
}

bool VrexVariant::getInt64(std::int64_t& value) const {
    if (m_type == kInt64) value = m_value.int64;
    return m_type == kInt64;
}

bool VrexVariant::getDouble(double& value) const {
    if (m_type == kDouble) value = m_value.real;
    return m_type == kDouble;
}

bool VrexVariant::getBool(bool& value) const {
    if (m_type == kBool) value = m_value.flag;
    return m_type == kBool;
}

bool VrexVariant::getString(const wchar_t*& value) const {
    if (m_type == kString) value = m_value.text;
    return m_type == kString;
}

void VrexVariant::setEmpty() {
    if (m_type == kString) {
        delete[] m_value.text;
    }
    m_type = kEmpty;
    m_value.int64 = 0;
}

void VrexVariant::setInt16(std::int16_t value) {
    setEmpty();
    m_type = kInt16;
    m_value.int16 = value;
}

void VrexVariant::setInt32(std::int32_t value) {
    setEmpty();
    m_type = kInt32;
    m_value.int32 = value;
}

void VrexVariant::setInt64(std::int64_t value) {
    setEmpty();
    m_type = kInt64;
    m_value.int64 = value;
}

void VrexVariant::setDouble(double value) {
    setEmpty();
    m_type = kDouble;
    m_value.real = value;
}

void VrexVariant::setBool(bool value) {
    setEmpty();
    m_type = kBool;
    m_value.flag = value;
}

void VrexVariant::setString(const wchar_t* value) {
    wchar_t* const copy = copyOf(value);  // first: `value` may point into this variant
    setEmpty();
    m_type = kString;
    m_value.text = copy;
}
