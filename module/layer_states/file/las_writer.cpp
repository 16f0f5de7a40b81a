// Items, numbers and names of a layer-state file.
#include "layer_states/file/las_writer.h"

#include "hxtext.h"
#include "layer_states/file/las_text.h"

#include <QSaveFile>

#include <charconv>
#include <iterator>

namespace {

constexpr char kHeader[] = "  0\r\nLAYERSTATEDICTIONARY\r\n  0\r\nLAYERSTATE\r\n";
constexpr char kLineEnd[] = "\r\n";
constexpr std::int64_t kByAlpha = 0x02000000;
constexpr int kNoTransparency = 255;

bool isBreak(wchar_t c) { return c == L'\n' || c == L'\r' || c == 0; }

bool hasBreak(const CStdStr<wchar_t>& text) { return std::any_of(text.begin(), text.end(), isBreak); }

/// With one blank for each line break.
CStdStr<wchar_t> onOneLine(const CStdStr<wchar_t>& text) {
    CStdStr<wchar_t> line = text;
    line.Replace(L"\r\n", L"\n");
    std::replace_if(line.begin(), line.end(), isBreak, L' ');
    return line;
}

bool isTrimmed(const CStdStr<wchar_t>& text) {
    const auto isBlank = [](wchar_t c) { return c == L' ' || (c >= L'\t' && c <= L'\r'); };
    return text.empty() || !(isBlank(text.front()) || isBlank(text.back()));
}

void appendAscii(std::string& bytes, const CStdStr<wchar_t>& text) {
    const std::size_t start = bytes.size();
    bytes.resize(start + text.size());
    std::transform(text.begin(), text.end(), bytes.begin() + static_cast<std::ptrdiff_t>(start),
                   [](wchar_t c) { return static_cast<char>(c); });
}

}  // namespace

/// `code` is the whole line, padded and ended.
void KvLasWriter::addItem(const char* code, std::int64_t value) {
    char digits[24];
    const std::to_chars_result end = std::to_chars(std::begin(digits), std::end(digits), value);
    m_bytes += code;
    m_bytes.append(digits, static_cast<std::size_t>(end.ptr - digits));
    m_bytes += kLineEnd;
}

void KvLasWriter::addItem(const char* code, const CStdStr<wchar_t>& name) {
    if (m_brokenName.empty() && hasBreak(name)) m_brokenName = name;
    addText(code, name, name);
}

/// What reading might not give back as it was meant is remembered for changedNames().
void KvLasWriter::addText(const char* code, const CStdStr<wchar_t>& text, const CStdStr<wchar_t>& meant) {
    m_bytes += code;
    const std::size_t start = m_bytes.size();
    const bool isPlain = isAscii(text);
    if (isPlain) {
        appendAscii(m_bytes, text);
    } else {
        m_bytes += hxutEncode(text, m_codePage);
    }
    m_bytes += kLineEnd;
    if ((isPlain && isTrimmed(text) && text.size() == meant.size()) || !m_known.insert(meant).second) return;
    m_doubtful.push_back(meant);
    m_doubtfulLines.append(m_bytes, start);
}

void KvLasWriter::begin(const CKvLayerState& state) {
    m_bytes += kHeader;
    addItem("  1\r\n", state.GetLayerStateName());
    addItem(" 91\r\n", state.GetLayerStateMake());
    addText("301\r\n", onOneLine(state.GetDescription()), state.GetDescription());
    addItem("290\r\n", state.isOfReference() ? HxLyState::kLayout : state.GetSpace());
    addItem("302\r\n", state.GetCurrentLayerName());
}

void KvLasWriter::add(const HxLyStateEntry& entry) {
    addItem("  8\r\n", entry.layer);
    addItem(" 90\r\n", entry.flags);
    addItem(" 62\r\n", entry.colorIndex);
    addItem("370\r\n", entry.lineweight);
    addItem("  6\r\n", entry.linetype);
    addItem("  2\r\n", entry.plotStyle);
    if (entry.trueColor != -1) addItem(" 92\r\n", entry.trueColor);
    if (!entry.colorBook.empty()) addItem("300\r\n", entry.colorBook);
    const bool hasAlpha = entry.transparency != kNoTransparency;
    addItem("440\r\n", hasAlpha ? kByAlpha + (entry.transparency & 0xFF) : 0);
}

std::vector<CStdStr<wchar_t>> KvLasWriter::changedNames() const {
    std::vector<CStdStr<wchar_t>> changed;
    KvLasLines lines(m_doubtfulLines);
    std::string_view line;
    CStdStr<wchar_t> readBack;
    for (const CStdStr<wchar_t>& text : m_doubtful) {
        lines.next(line);
        decodeLasLine(line, readBack);
        if (readBack != text) changed.push_back(text);
    }
    return changed;
}

namespace {

/// Empty when it went well, else why not.
CStdStr<wchar_t> replaceFile(const CStdStr<wchar_t>& path, const std::string& bytes) {
    QSaveFile file(QString::fromStdWString(path));
    const auto size = static_cast<qint64>(bytes.size());
    const bool isDone =
        file.open(QIODevice::WriteOnly) && file.write(bytes.data(), size) == size && file.commit();
    return isDone ? CStdStr<wchar_t>() : CStdStr<wchar_t>(file.errorString().toStdWString());
}

}  // namespace

KvLasWritten writeLasFile(const CStdStr<wchar_t>& path, const KvLayerStateMap& states,
                          const CKvLayerState& state) {
    KvLasWriter writer(hxutAnsiCodePage());
    writer.begin(state);
    states.visitEntries(&state, [&](const HxLyStateEntry& entry) {
        writer.add(entry);
        return writer.brokenName().empty();
    });
    KvLasWritten result;
    result.brokenName = writer.brokenName();
    if (!result.brokenName.empty()) return result;
    result.reason = replaceFile(path, writer.bytes());
    result.isWritten = result.reason.empty();
    if (result.isWritten) result.changedNames = writer.changedNames();
    return result;
}
