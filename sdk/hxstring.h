// The host's string class and growable arrays.
#pragma once

#include <algorithm>
#include <cstdarg>
#include <cwchar>
#include <string>
#include <vector>

/// A string of characters T with the operations that host code expects beside those of the standard string.
template <class T>
class CStdStr : public std::basic_string<T> {
public:
    using Base = std::basic_string<T>;
    using Base::Base;
    CStdStr() = default;
    CStdStr(const Base& text) : Base(text) {}        // NOLINT(google-explicit-constructor)
    CStdStr(Base&& text) : Base(std::move(text)) {}  // NOLINT(google-explicit-constructor)
    /// Empty for null.
    CStdStr(const T* text) : Base(text ? Base(text) : Base()) {}  // NOLINT(google-explicit-constructor)

    int GetLength() const { return static_cast<int>(this->size()); }
    bool IsEmpty() const { return this->empty(); }
    void Empty() { this->clear(); }
    const T* GetString() const { return this->c_str(); }

    int Compare(const T* other) const { return this->compare(other ? other : Base().c_str()); }
    /// Folds "A" to "Z" only. Negative, 0 or positive.
    int CompareNoCase(const T* other) const {
        const CStdStr b(other);
        const std::size_t n = std::min(this->size(), b.size());
        for (std::size_t i = 0; i < n; ++i) {
            const auto x = fold((*this)[i]);
            const auto y = fold(b[i]);
            if (x != y) return x < y ? -1 : 1;
        }
        return this->size() == b.size() ? 0 : this->size() < b.size() ? -1 : 1;
    }
    void MakeLower() { std::transform(this->begin(), this->end(), this->begin(), fold); }
    void MakeUpper() {
        std::transform(this->begin(), this->end(), this->begin(), [](T c) {
            return c >= T('a') && c <= T('z') ? static_cast<T>(c - T('a') + T('A')) : c;
        });
    }
    CStdStr Left(int count) const { return CStdStr(this->substr(0, clamp(count))); }
    CStdStr Right(int count) const { return CStdStr(this->substr(this->size() - clamp(count))); }
    CStdStr Mid(int first) const { return CStdStr(this->substr(clamp(first))); }
    CStdStr Mid(int first, int count) const {
        return CStdStr(this->substr(clamp(first), count > 0 ? static_cast<std::size_t>(count) : 0));
    }
    /// Position of the first occurrence from `start`, -1 when there is none.
    int Find(const T* text, int start = 0) const { return position(this->find(text, clamp(start))); }
    int Find(T character, int start = 0) const { return position(this->find(character, clamp(start))); }
    int ReverseFind(T character) const { return position(this->rfind(character)); }
    /// Replaces every occurrence; returns how many.
    int Replace(const T* from, const T* to) {
        const Base source(from);
        const Base target(to ? Base(to) : Base());
        int count = 0;
        for (std::size_t at = source.empty() ? Base::npos : this->find(source); at != Base::npos;
             at = this->find(source, at + target.size()), ++count) {
            this->replace(at, source.size(), target);
        }
        return count;
    }
    /// Removes blanks, tabs and line ends at both ends.
    CStdStr& Trim() {
        const auto blank = [](T c) { return c == T(' ') || (c >= T(9) && c <= T(13)); };
        this->erase(this->begin(), std::find_if_not(this->begin(), this->end(), blank));
        this->erase(std::find_if_not(this->rbegin(), this->rend(), blank).base(), this->end());
        return *this;
    }
    /// printf into the string, of any length; for wide strings, where "%ls" is a wide argument.
    void Format(const T* format, ...) {
        va_list arguments;
        va_start(arguments, format);
        std::size_t room = 256;
        for (int written = -1; written < 0 && room <= (1U << 24U); room *= 2) {
            Base buffer(room, T(0));
            va_list again;
            va_copy(again, arguments);
            written = std::vswprintf(&buffer[0], room, format, again);
            va_end(again);
            if (written >= 0) {
                buffer.resize(static_cast<std::size_t>(written));
                Base::operator=(std::move(buffer));
            }
        }
        va_end(arguments);
    }

private:
    static T fold(T c) { return c >= T('A') && c <= T('Z') ? static_cast<T>(c - T('A') + T('a')) : c; }
    std::size_t clamp(int count) const {
        return count < 0 ? 0 : std::min(static_cast<std::size_t>(count), this->size());
    }
    static int position(std::size_t at) { return at == Base::npos ? -1 : static_cast<int>(at); }
};

/// Growable array of T.
template <class T>
class HxArray {
public:
    bool isEmpty() const { return m_items.empty(); }
    int length() const { return static_cast<int>(m_items.size()); }
    /// Appends; returns the position.
    int append(const T& item) {
        m_items.push_back(item);
        return length() - 1;
    }
    T& operator[](int at) { return m_items[static_cast<std::size_t>(at)]; }
    const T& operator[](int at) const { return m_items[static_cast<std::size_t>(at)]; }
    T& at(int at) { return m_items.at(static_cast<std::size_t>(at)); }
    const T& at(int at) const { return m_items.at(static_cast<std::size_t>(at)); }
    bool contains(const T& item) const {
        return std::find(m_items.begin(), m_items.end(), item) != m_items.end();
    }
    /// Removes the item at a position.
    void removeAt(int at) { m_items.erase(m_items.begin() + at); }
    /// Removes the first equal item; false when there is none.
    bool remove(const T& item) {
        const auto found = std::find(m_items.begin(), m_items.end(), item);
        if (found == m_items.end()) return false;
        m_items.erase(found);
        return true;
    }
    void setLogicalLength(int length) { m_items.resize(static_cast<std::size_t>(length)); }
    void removeAll() { m_items.clear(); }
    T* begin() { return m_items.data(); }
    T* end() { return m_items.data() + m_items.size(); }
    const T* begin() const { return m_items.data(); }
    const T* end() const { return m_items.data() + m_items.size(); }
    /// The items in one block; null may come back for an empty array.
    const T* asArrayPtr() const { return m_items.data(); }

private:
    std::vector<T> m_items;
};

/// Growable array of T in the dialog framework's manner; ARG is how items are passed.
template <class T, class ARG = const T&>
class CArray {
public:
    int GetSize() const { return static_cast<int>(m_items.size()); }
    bool IsEmpty() const { return m_items.empty(); }
    /// Appends; returns the position.
    int Add(ARG item) {
        m_items.push_back(item);
        return GetSize() - 1;
    }
    T& operator[](int at) { return m_items[static_cast<std::size_t>(at)]; }
    const T& operator[](int at) const { return m_items[static_cast<std::size_t>(at)]; }
    const T& GetAt(int at) const { return m_items[static_cast<std::size_t>(at)]; }
    void SetAt(int at, ARG item) { m_items[static_cast<std::size_t>(at)] = item; }
    void RemoveAt(int at, int count = 1) {
        m_items.erase(m_items.begin() + at, m_items.begin() + at + count);
    }
    void RemoveAll() { m_items.clear(); }
    T* begin() { return m_items.data(); }
    T* end() { return m_items.data() + m_items.size(); }
    const T* begin() const { return m_items.data(); }
    const T* end() const { return m_items.data() + m_items.size(); }

private:
    std::vector<T> m_items;
};
