// Text files of definitions: the bytes, the lines.
#include "host/editor/definition_file.h"

#include "host/base/text.h"

#include <QFile>
#include <QFileInfo>

namespace korvex {

namespace {

constexpr qint64 kLargestFile = 4 * 1024 * 1024;
constexpr std::string_view kByteOrderMark = "\xEF\xBB\xBF";

bool isControl(wchar_t c) { return (c < L' ' && c != L'\t') || c == 0x7F; }

/// The next line without its end ("\n", "\r\n" or "\r"), which is taken off the rest as well.
std::string_view takeLine(std::string_view& rest) {
    const std::size_t end = rest.find_first_of("\r\n");
    const std::string_view line = rest.substr(0, end);
    if (end == std::string_view::npos) {
        rest = {};
        return line;
    }
    rest.remove_prefix(end + (rest.substr(end, 2) == "\r\n" ? 2 : 1));
    return line;
}

}  // namespace

std::wstring FileFault::text() const {
    std::wstring place = quotedPath(toQString(file));
    if (line > 0) {
        place += L", line " + std::to_wstring(line);
    }
    return place + L": " + what + L" " + remedy;
}

bool readDefinitionFile(const QString& path, std::string& bytes, FileFault& fault) {
    fault.file = toWide(path);
    QFile file(path);
    if (!QFileInfo(path).isFile() || !file.open(QIODevice::ReadOnly)) {
        const bool exists = QFileInfo::exists(path);
        fault.what = exists ? L"This cannot be opened." : L"There is no such file.";
        fault.remedy = exists ? L"Check that it is a file that you may read." : L"Choose another one.";
        return false;
    }
    if (file.size() > kLargestFile) {
        fault.what = L"This file is longer than 4 MB.";
        fault.remedy = L"Divide it into several, or choose another one.";
        return false;
    }
    bytes = file.readAll().toStdString();
    if (file.error() != QFileDevice::NoError) {
        fault.what = L"This file cannot be read (" + toWide(file.errorString()) + L").";
        fault.remedy = L"Check the disk, or choose another file.";
        return false;
    }
    return true;
}

bool cutIntoLines(std::string_view bytes, std::vector<DefinitionLine>& lines, FileFault& fault) {
    if (bytes.substr(0, kByteOrderMark.size()) == kByteOrderMark) {
        bytes.remove_prefix(kByteOrderMark.size());
    }
    for (int number = 1; !bytes.empty(); ++number) {
        const std::string_view raw = takeLine(bytes);
        const std::wstring text = fromUtf8(raw);
        fault.line = number;
        if (toUtf8(text) != raw) {
            fault.what = L"This line is no UTF-8 text.";
            fault.remedy = L"Save the file in the encoding UTF-8.";
            return false;
        }
        if (std::any_of(text.begin(), text.end(), isControl)) {
            fault.what = L"There is a control character in this line.";
            fault.remedy = L"Remove it, or choose a text file.";
            return false;
        }
        const std::wstring_view said = trimmed(text);
        if (!said.empty() && said.front() != L';') {
            lines.push_back({number, std::wstring(said)});
        }
    }
    fault.line = 0;
    return true;
}

std::wstring_view trimmed(std::wstring_view text) {
    const std::size_t first = text.find_first_not_of(L" \t");
    return first == std::wstring_view::npos ? std::wstring_view()
                                            : text.substr(first, text.find_last_not_of(L" \t") - first + 1);
}

}  // namespace korvex
