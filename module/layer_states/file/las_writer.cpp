// Items, numbers and names of a layer-state file.
#include "layer_states/file/las_writer.h"

#include "hxtext.h"
#include "layer_states/file/las_text.h"

#include <QSaveFile>

#include <charconv>
#include <cstring>
#include <iterator>

namespace {

constexpr char kHeader[] = "  0\r\nLAYERSTATEDICTIONARY\r\n  0\r\nLAYERSTATE\r\n";
constexpr std::string_view kLineEnd = "\r\n";
constexpr std::size_t kCodeSize = sizeof(KvLasCode) - 1;
constexpr std::int64_t kByAlpha = 0x02000000;
constexpr int kNoTransparency = 255;
constexpr std::size_t kBytesOfEntry = 160;

bool isBreak(wchar_t c) { return c == L'\n' || c == L'\r' || c == 0; }

/// With one blank for each line break.
CStdStr<wchar_t> onOneLine(const CStdStr<wchar_t>& text) {
    CStdStr<wchar_t> line = text;
    line.Replace(L"\r\n", L"\n");
    std::replace_if(line.begin(), line.end(), isBreak, L' ');
    return line;
}

/// Whether a text is the same in all code pages, and nothing of it is cut off when its line is read.
bool isPlain(const CStdStr<wchar_t>& text) {
    std::uint32_t strange = 0;
    for (const wchar_t c : text) {
        strange |=
            static_cast<std::uint32_t>(c) - L' ' > 0x7E - L' ' ? 1U : 0U;  // to the end: it is sooner so
    }
    return strange == 0 && (text.empty() || (text.front() != L' ' && text.back() != L' '));
}

void append(std::string& bytes, KvLasCode code, const CStdStr<wchar_t>& plain) {
    const std::size_t start = bytes.size();
    bytes.resize(start + kCodeSize + plain.size() + kLineEnd.size());
    char* const line = bytes.data() + start;
    std::memcpy(line, code, kCodeSize);
    char* const end = std::transform(plain.begin(), plain.end(), line + kCodeSize,
                                     [](wchar_t c) { return static_cast<char>(c); });
    std::memcpy(end, kLineEnd.data(), kLineEnd.size());
}

}  // namespace

void KvLasWriter::expect(int entries) { m_bytes.reserve(static_cast<std::size_t>(entries) * kBytesOfEntry); }

void KvLasWriter::addItem(KvLasCode code, std::int64_t value) {
    char item[kCodeSize + 24];
    std::memcpy(item, code, kCodeSize);
    char* const end = std::to_chars(item + kCodeSize, std::end(item) - kLineEnd.size(), value).ptr;
    std::memcpy(end, kLineEnd.data(), kLineEnd.size());
    m_bytes.append(item, static_cast<std::size_t>(end - item) + kLineEnd.size());
}

void KvLasWriter::addItem(KvLasCode code, const CStdStr<wchar_t>& name) {
    if (isPlain(name)) return append(m_bytes, code, name);
    if (m_brokenName.empty() && std::any_of(name.begin(), name.end(), isBreak)) m_brokenName = name;
    addDoubtful(code, name, name);
}

/// What reading might not give back as it was meant is remembered for changedNames().
void KvLasWriter::addDoubtful(KvLasCode code, const CStdStr<wchar_t>& text, const CStdStr<wchar_t>& meant) {
    m_bytes.append(code, kCodeSize);
    const std::size_t start = m_bytes.size();
    m_bytes += hxutEncode(text, m_codePage);
    m_bytes += kLineEnd;
    const auto [known, isNew] = m_doubtful.insert(meant);
    if (!isNew) return;
    m_doubtfulInOrder.push_back(&*known);
    m_doubtfulLines.append(m_bytes, start);
}

void KvLasWriter::begin(const CKvLayerState& state) {
    m_bytes += kHeader;
    addItem("  1\r\n", state.GetLayerStateName());
    addItem(" 91\r\n", state.GetLayerStateMake());
    const CStdStr<wchar_t> description = onOneLine(state.GetDescription());
    if (description == state.GetDescription()) {
        addItem("301\r\n", description);
    } else {
        addDoubtful("301\r\n", description, state.GetDescription());
    }
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
    KvLasDecoder decoder;
    KvLasLines lines(m_doubtfulLines);
    std::string_view line;
    CStdStr<wchar_t> readBack;
    for (const std::wstring* const text : m_doubtfulInOrder) {
        lines.next(line);
        decoder.decode(line, readBack);
        if (readBack != *text) changed.push_back(*text);
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
    if (states.hasReadEntries(&state)) writer.expect(states.entries(&state)->GetSize());
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
