// Texts and names as modules compare and encode them.
#include "host/db/groups/group_types.h"
#include "host/db/kernel/text_fold.h"
#include "sdk/hxtext.h"

using namespace korvex;

namespace {

constexpr int kUtf8Page = 65001;

/// Null for a page that does not exist.
const TextCodec* codecOf(int codePage) {
    return codePage == kUtf8Page ? &TextCodec::utf8() : TextCodec::find("CP" + std::to_string(codePage));
}

}  // namespace

CStdStr<wchar_t> hxutFoldName(const wchar_t* name) { return foldName(viewOf(name)); }

bool hxutEqualNames(const wchar_t* a, const wchar_t* b) { return equalNames(viewOf(a), viewOf(b)); }

CStdStr<wchar_t> hxGetUniStringFromMIFCIF(const wchar_t* text) {
    const TextCodec& codec = TextCodec::utf8();
    return codec.decode(codec.encode(viewOf(text)));
}

CStdStr<char> hxutEncode(const CStdStr<wchar_t>& text, int codePage) {
    const TextCodec* codec = codecOf(codePage);
    std::wstring known(text);
    for (wchar_t& c : known) {
        const bool isAscii = static_cast<char32_t>(c) < 0x80;
        c = isAscii || (codec && codec->canEncode(c)) ? c : L'?';
    }
    return codec ? codec->encode(known) : std::string(known.begin(), known.end());
}
