// Object ids and handles: how objects of a drawing are named.
#pragma once

#include "hxtypes.h"

#include <cstddef>
#include <cstdint>
#include <functional>

class HxDbDatabase;
class HxDbStub;

/// An object's permanent name within its drawing; 0 is no object.
class HXSDK_API HxDbHandle {
public:
    HxDbHandle() = default;
    explicit HxDbHandle(std::uint64_t value) : m_value(value) {}
    /// From hexadecimal text; anything else gives 0.
    explicit HxDbHandle(const wchar_t* text);

    std::uint64_t value() const { return m_value; }
    bool isNull() const { return m_value == 0; }
    /// Writes hexadecimal capitals and a closing null into `buffer`. False when `size` characters are not
    /// enough.
    bool getIntoAsciiBuffer(wchar_t* buffer, std::size_t size = 17) const;

    bool operator==(HxDbHandle o) const { return m_value == o.m_value; }
    bool operator!=(HxDbHandle o) const { return m_value != o.m_value; }
    bool operator<(HxDbHandle o) const { return m_value < o.m_value; }

private:
    std::uint64_t m_value = 0;
};

/// Names an object of an open drawing in this process. Copied freely; it outlives the object's erasure and
/// dies with the database: an id of a database that is gone must not be used.
class HXSDK_API HxDbObjectId {
public:
    HxDbObjectId() = default;
    explicit HxDbObjectId(HxDbStub* stub) : m_stub(stub) {}

    static HxDbObjectId null() { return HxDbObjectId(); }
    bool isNull() const { return m_stub == nullptr; }
    /// Not null, and of an object that is in a database (erased or not).
    bool isValid() const;
    /// Erased, or its creation was undone; false for the null id.
    bool isErased() const;
    HxDbHandle handle() const;
    /// Null for the null id.
    HxDbDatabase* database() const;

    HxDbStub* stub() const { return m_stub; }
    bool operator==(const HxDbObjectId& o) const { return m_stub == o.m_stub; }
    bool operator!=(const HxDbObjectId& o) const { return m_stub != o.m_stub; }
    bool operator<(const HxDbObjectId& o) const { return std::less<HxDbStub*>()(m_stub, o.m_stub); }

private:
    HxDbStub* m_stub = nullptr;
};

template <>
struct std::hash<HxDbObjectId> {
    std::size_t operator()(const HxDbObjectId& id) const noexcept {
        return std::hash<HxDbStub*>()(id.stub());
    }
};
