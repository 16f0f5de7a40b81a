// The header line by line, then the entries by their codes.
#include "layer_states/file/las_reader.h"

#include "hxtext.h"
#include "layer_states/file/las_text.h"

#include <QFile>
#include <QFileInfo>

#include <limits>

namespace {

constexpr std::string_view kByteOrderMark = "\xEF\xBB\xBF";
constexpr qint64 kLargestFile = 1 << 30;
constexpr std::int64_t kWhite = 0xFFFFFF;
constexpr std::uint32_t kMethodRgb = 0xC2;
constexpr std::uint32_t kMethodByAlpha = 2;
constexpr int kNoTransparency = 255;

std::int32_t integer(std::string_view line) {
    constexpr std::int64_t most = std::numeric_limits<std::int32_t>::max();
    return static_cast<std::int32_t>(std::min(lasInteger(line), most));
}

/// 24 bits have red in the low byte. With the method of true colours before them, as some programs write it,
/// they have red on top; with another method they are no true colour.
std::int64_t trueColor(std::string_view line) {
    const auto word = static_cast<std::uint32_t>(lasInteger(line));
    const std::uint32_t method = word >> 24U;
    if (method == 0) return word;
    if (method != kMethodRgb) return -1;
    return (word & 0xFFU) << 16U | (word & 0xFF00U) | (word >> 16U & 0xFFU);
}

int transparency(std::string_view line) {
    const auto word = static_cast<std::uint32_t>(lasInteger(line));
    return word >> 24U == kMethodByAlpha ? static_cast<int>(word & 0xFFU) : kNoTransparency;
}

/// Reads one file's bytes.
class LasReading {
public:
    LasReading(std::string_view bytes, KvLasFailure& failure) : m_lines(bytes), m_failure(failure) {}

    KvLasState run() {
        m_result.state = std::make_unique<CKvLayerState>();
        m_result.entries.reset(new KvLayerStateInfoArray);
        if (!readHeader()) return {};
        readEntries();
        return std::move(m_result);
    }

private:
    bool fail(KvLasFailure::Kind kind, const wchar_t* expected = nullptr) {
        m_failure = {kind, m_lines.number(), expected};
        return false;
    }
    bool nextLine() { return m_lines.next(m_line) || fail(KvLasFailure::endsEarly); }

    /// The next line, which must be a code.
    bool expectCode(int code, const wchar_t* spelled) {
        if (!nextLine()) return false;
        return lasCode(m_line) == code || fail(KvLasFailure::otherLine, spelled);
    }
    bool expectWord(const wchar_t* word) {
        if (!expectCode(0, L"0") || !nextLine()) return false;
        return text().CompareNoCase(word) == 0 || fail(KvLasFailure::otherLine, word);
    }
    const CStdStr<wchar_t>& text() {
        m_decoder.decode(m_line, m_text);
        return m_text;
    }

    bool readHeader() {
        if (!expectWord(L"LAYERSTATEDICTIONARY") || !expectWord(L"LAYERSTATE")) return false;
        if (!expectCode(1, L"1") || !nextLine()) return false;
        if (m_line.empty()) return fail(KvLasFailure::noName);
        CKvLayerState& state = *m_result.state;
        state.SetLayerStateName(text());
        state.SetLasFileType(1);
        if (!expectCode(91, L"91") || !nextLine()) return false;
        state.SetLayerStateMake(integer(m_line));
        m_hasColors = (state.GetLayerStateMake() & HxLyState::kColor) != 0;
        return readRestOfHeader(state);
    }

    bool readRestOfHeader(CKvLayerState& state) {
        if (!nextLine()) return false;
        if (lasCode(m_line) == 301) {
            if (!nextLine()) return false;
            state.SetDescription(text());
            if (!nextLine()) return false;
        }
        if (lasCode(m_line) != 290) return fail(KvLasFailure::otherLine, L"290");
        if (!nextLine()) return false;
        state.SetSpace(integer(m_line) == HxLyState::kModel ? HxLyState::kModel : HxLyState::kLayout);
        if (!expectCode(302, L"302") || !nextLine()) return false;
        state.SetCurrentLayerName(text());
        return true;
    }

    void readEntries() {
        std::string_view code;
        while (m_lines.next(code) && m_lines.next(m_line)) {
            const int number = lasCode(code);
            if (number == 8) beginEntry();
            if (m_hasEntry) takeValue(number);
        }
        endEntry();
    }

    void beginEntry() {
        endEntry();
        m_hasEntry = true;
        m_entry.colorBook.clear();
        m_entry.linetype.clear();
        m_entry.plotStyle.clear();
        const HxLyStateEntry initial;
        m_entry.flags = initial.flags;
        m_entry.colorIndex = initial.colorIndex;
        m_entry.trueColor = initial.trueColor;
        m_entry.lineweight = initial.lineweight;
        m_entry.transparency = initial.transparency;
    }

    void takeValue(int code) {
        switch (code) {
        case 8: m_decoder.decode(m_line, m_entry.layer); break;
        case 90: m_entry.flags = integer(m_line); break;
        case 62: m_entry.colorIndex = m_hasColors ? integer(m_line) : HxCmColor::kIndexWhite; break;
        case 370: m_entry.lineweight = integer(m_line); break;
        case 6: m_decoder.decode(m_line, m_entry.linetype); break;
        case 2: m_decoder.decode(m_line, m_entry.plotStyle); break;
        case 92: m_entry.trueColor = m_hasColors ? trueColor(m_line) : kWhite; break;
        case 300:
            if (m_hasColors) m_decoder.decode(m_line, m_entry.colorBook);
            break;
        case 440: m_entry.transparency = transparency(m_line); break;
        default: break;
        }
    }

    void endEntry() {
        if (!m_hasEntry || m_entry.layer.empty()) return;  // without a name it is of no layer
        const bool isCurrent =
            hxutEqualNames(m_entry.layer.c_str(), m_result.state->GetCurrentLayerName().c_str());
        KvLayerStateInfoArray& entries = *m_result.entries;
        entries.Add(new CKvLayerStateInfo(m_entry, entries.GetSize(), isCurrent));
    }

    KvLasLines m_lines;
    KvLasDecoder m_decoder;
    KvLasFailure& m_failure;
    KvLasState m_result;
    std::string_view m_line;
    CStdStr<wchar_t> m_text;
    HxLyStateEntry m_entry;
    bool m_hasEntry = false;
    bool m_hasColors = false;
};

int lineOf(std::string_view bytes, std::size_t at) {
    return 1 +
           static_cast<int>(std::count(bytes.begin(), bytes.begin() + static_cast<std::ptrdiff_t>(at), '\n'));
}

}  // namespace

KvLasState readLas(std::string_view bytes, KvLasFailure& failure) {
    failure = {};
    const std::size_t null = bytes.find('\0');
    if (null != bytes.npos) {
        failure = {KvLasFailure::nullCharacter, lineOf(bytes, null), L""};
        return {};
    }
    if (bytes.substr(0, kByteOrderMark.size()) == kByteOrderMark) bytes.remove_prefix(kByteOrderMark.size());
    return LasReading(bytes, failure).run();
}

KvLasState readLasFile(const CStdStr<wchar_t>& path, KvLasFailure& failure) {
    QFile file(QString::fromStdWString(path));
    if (!file.open(QIODevice::ReadOnly)) {
        failure = {KvLasFailure::cannotRead, 0, file.errorString().toStdWString()};
        return {};
    }
    if (file.size() > kLargestFile) {
        failure = {KvLasFailure::tooLarge, 0, L""};
        return {};
    }
    const QByteArray bytes = file.readAll();
    if (file.error() != QFileDevice::NoError) {
        failure = {KvLasFailure::cannotRead, 0, file.errorString().toStdWString()};
        return {};
    }
    return readLas({bytes.constData(), static_cast<std::size_t>(bytes.size())}, failure);
}
