// The configuration service (typed settings of the current profile) and the host application services.
#pragma once

#include "hxrx.h"

#include <exception>

/// Thrown where a status cannot be returned.
class HXSDK_API HxErrorStatusException : public std::exception {
public:
    explicit HxErrorStatusException(Hx::ErrorStatus status) : m_status(status) {}
    Hx::ErrorStatus status() const { return m_status; }
    const char* what() const noexcept override { return "host error status"; }

private:
    Hx::ErrorStatus m_status;
};

/// One setting with its type. A string is copied and owned. Throws HxErrorStatusException with eOutOfMemory
/// when the string's storage cannot be allocated, after a note in the host's log; the variant is then as it
/// was.
class HXSDK_API VrexVariant {
public:
    enum Type : int {
        kEmpty = 0,
        kInt32 = 1,
        kInt64 = 2,
        kDouble = 3,
        kBool = 4,
        kString = 5,
        kInt16 = 6,
    };

    VrexVariant() = default;
    explicit VrexVariant(std::int16_t value) { setInt16(value); }
    explicit VrexVariant(std::int32_t value) { setInt32(value); }
    explicit VrexVariant(std::int64_t value) { setInt64(value); }
    explicit VrexVariant(double value) { setDouble(value); }
    explicit VrexVariant(bool value) { setBool(value); }
    /// The empty string for null.
    explicit VrexVariant(const wchar_t* value) { setString(value); }
    ~VrexVariant();
    VrexVariant(const VrexVariant& other);
    VrexVariant(VrexVariant&& other) noexcept;
    VrexVariant& operator=(const VrexVariant& other);
    VrexVariant& operator=(VrexVariant&& other) noexcept;

    Type type() const { return m_type; }
    bool operator==(const VrexVariant& other) const;
    bool operator!=(const VrexVariant& other) const { return !(*this == other); }

    /// False, and `value` stays, when the variant is of another type.
    bool getInt16(std::int16_t& value) const;
    bool getInt32(std::int32_t& value) const;
    bool getInt64(std::int64_t& value) const;
    bool getDouble(double& value) const;
    bool getBool(bool& value) const;
    /// Points into the variant, until it is changed or goes.
    bool getString(const wchar_t*& value) const;

    /// 0 for another type.
    std::int32_t asInt32() const { return m_type == kInt32 ? m_value.int32 : 0; }
    /// "" for another type. Points into the variant, until it is changed or goes.
    const wchar_t* asString() const { return m_type == kString ? m_value.text : L""; }

    void setEmpty();
    void setInt16(std::int16_t value);
    void setInt32(std::int32_t value);
    void setInt64(std::int64_t value);
    void setDouble(double value);
    void setBool(bool value);
    void setString(const wchar_t* value);

private:
    union Value {
        std::int64_t int64;
        std::int32_t int32;
        std::int16_t int16;
        double real;
        bool flag;
        wchar_t* text;
    };
    Type m_type = kEmpty;
    Value m_value = {0};
};

/// Settings by category and path. A path is a section and a name, parted by "\" or "/" alike; sections nest
/// in the same way; both compare without regard to case. Settings belong to the current profile, outlive a
/// crash of the host once the call has returned, and other running hosts see them. To be used from the
/// user-interface thread only.
///
/// Results: 0 done; Hx::eKeyNotFound no such setting; Hx::eInvalidInput empty path or name, or empty variant;
/// Hx::eFileAccessErr the store cannot be read or written, the reason is in the host's log.
class KorvexConfig {
public:
    virtual ~KorvexConfig() = default;
    /// `value` stays as it is unless the result is 0.
    virtual int getValue(int category, const wchar_t* path, VrexVariant& value) = 0;
    /// Adds the setting `name` to a section, or replaces it, type included. An empty section is the top.
    virtual int addValue(int category, const wchar_t* section, const wchar_t* name,
                         const VrexVariant& value) = 0;
    /// The same by path: adds or replaces.
    virtual int setValue(int category, const wchar_t* path, const VrexVariant& value) = 0;
    virtual int removeValue(int category, const wchar_t* path) = 0;
};

/// The category of what modules and the user interface keep.
constexpr int kHxConfigUser = 4;

/// Null when the store cannot be opened. It belongs to the host.
HXSDK_API KorvexConfig* vrexConfig();

/// What a module asks about the program that it runs in.
class HXSDK_API HxDbHostApplicationServices : public HxRxObject {
public:
    HX_DECLARE_MEMBERS(HxDbHostApplicationServices)
    /// "KORVEX"; the caption of message boxes.
    const wchar_t* product() const;
    /// The key below HKEY_CURRENT_USER that holds the product's settings. The unnamed value of its key
    /// "Profiles" is the name of the current profile, the keys below "Profiles" are the profiles.
    const wchar_t* getRegistryProductRootKey() const;
    /// Empty when the store cannot be read.
    CStdStr<wchar_t> currentProfile() const;
    /// Makes the profile if need be, and makes it the current one. eInvalidInput for an empty name or one
    /// with "\" or "/", eFileAccessErr when it cannot be stored.
    Hx::ErrorStatus setCurrentProfile(const wchar_t* name);
};

/// Never null.
HXSDK_API HxDbHostApplicationServices* hxdbHostApplicationServices();
