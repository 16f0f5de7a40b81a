// Conversions rest on Qt; what Qt would pass on unchecked is replaced before.
#include "host/base/text.h"

#include <QChar>
#include <QDir>
#include <QFile>

#include <algorithm>

namespace korvex {
namespace {

constexpr char32_t kReplacement = 0xFFFD;

bool isCharacter(char32_t c) { return c <= 0x10FFFF && (c < 0xD800 || c > 0xDFFF); }

}  // namespace

QString toQString(std::wstring_view text) {
    QString result;
    result.reserve(static_cast<int>(text.size()));
    for (const wchar_t wide : text) {
        const auto given = static_cast<char32_t>(wide);
        const char32_t c = isCharacter(given) ? given : kReplacement;
        if (QChar::requiresSurrogates(c)) {
            result += QChar(QChar::highSurrogate(c));
            result += QChar(QChar::lowSurrogate(c));
        } else {
            result += QChar(static_cast<ushort>(c));
        }
    }
    return result;
}

QString toQString(const wchar_t* text) { return toQString(viewOf(text)); }

std::wstring toWide(const QString& text) {
    std::wstring result = text.toStdWString();
    for (wchar_t& c : result) {
        if (!isCharacter(static_cast<char32_t>(c))) {
            c = static_cast<wchar_t>(kReplacement);
        }
    }
    return result;
}

std::string toUtf8(std::wstring_view text) { return toQString(text).toStdString(); }

std::wstring fromUtf8(std::string_view bytes) {
    return toWide(QString::fromUtf8(bytes.data(), static_cast<int>(bytes.size())));
}

std::string toFileName(std::wstring_view path) { return QFile::encodeName(toQString(path)).toStdString(); }

std::wstring fromFileName(std::string_view path) {
    return toWide(QFile::decodeName(QByteArray(path.data(), static_cast<int>(path.size()))));
}

std::wstring quotedPath(const QString& path) { return L'"' + toWide(QDir::toNativeSeparators(path)) + L'"'; }

wchar_t foldCharacter(wchar_t c) {
    const auto code = static_cast<char32_t>(c);
    if (code < 0x80) {
        return foldAscii(c);
    }
    return code <= 0x10FFFF ? static_cast<wchar_t>(QChar::toCaseFolded(code)) : c;
}

std::wstring foldCase(std::wstring_view text) {
    std::wstring result(text);
    std::transform(result.begin(), result.end(), result.begin(), foldCharacter);
    return result;
}

std::size_t copyText(std::wstring_view text, wchar_t* buffer, std::size_t room) {
    if (!buffer || room == 0) {
        return 0;
    }
    const std::size_t count = std::min(text.size(), room - 1);
    std::copy_n(text.data(), count, buffer);
    buffer[count] = L'\0';
    return count;
}

}  // namespace korvex
