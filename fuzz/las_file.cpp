// Fuzz target: any bytes are read as a layer-state file. What is refused has a place and a reason; cutting
// before decoding gives the same lines as cutting afterwards; what is read, and is plain ASCII, is written
// and read again as it is.
#include "layer_states/file/las_reader.h"
#include "layer_states/file/las_text.h"
#include "layer_states/file/las_writer.h"

#include <QTextCodec>

#include <cstdint>
#include <cstdlib>

namespace {

constexpr int kWestern = 1252;

void require(bool condition) {
    if (!condition) {
        std::abort();
    }
}

/// `bytes` with a line feed at their end: a character that they leave unfinished is finished by it.
void checkLines(const std::string& bytes) {
    const QTextCodec* const gbk = QTextCodec::codecForName("GBK");
    const std::wstring whole = gbk->toUnicode(bytes.data(), static_cast<int>(bytes.size())).toStdWString();
    KvLasDecoder decoder;
    KvLasLines lines(bytes);
    std::string_view line;
    CStdStr<wchar_t> text;
    std::size_t at = 0;
    while (lines.next(line)) {
        decoder.decode(line, text);
        const std::size_t end = std::min(whole.find(L'\n', at), whole.size());
        require(text == CStdStr<wchar_t>(whole.substr(at, end - at)).Trim());
        at = end + 1;
    }
}

std::string written(const KvLasState& read, bool& isPlain) {
    KvLasWriter writer(kWestern);
    writer.begin(*read.state);
    for (const CKvLayerStateInfo* const entry : *read.entries) {
        writer.add(entry->values());
    }
    require(writer.brokenName().empty() || writer.brokenName().find(L'\r') != std::wstring::npos);
    isPlain = writer.brokenName().empty() && writer.changedNames().empty();
    return writer.bytes();
}

}  // namespace

extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size) {
    const std::string_view bytes(reinterpret_cast<const char*>(data), size);
    KvLasFailure failure;
    const KvLasState read = readLas(bytes, failure);
    if (!read) {
        require(failure.kind != KvLasFailure::none && failure.line >= 0);
        return 0;
    }
    const bool isMarked = bytes.substr(0, 3) == "\xEF\xBB\xBF";
    checkLines(std::string(bytes.substr(isMarked ? 3 : 0)) + "\n");
    bool isPlain = false;
    const std::string once = written(read, isPlain);
    const KvLasState again = readLas(once, failure);
    if (!isPlain) return 0;
    require(again && again.entries->GetSize() == read.entries->GetSize());
    require(written(again, isPlain) == once && isPlain);
    return 0;
}
