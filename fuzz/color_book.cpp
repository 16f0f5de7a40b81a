// Fuzz target: any bytes are read as a colour book; what is read can be found again, what is not has a
// reason.
#include "host/editor/color_books.h"

#include <cstdint>
#include <cstdlib>

namespace {

void require(bool condition) {
    if (!condition) {
        std::abort();
    }
}

}  // namespace

extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size) {
    korvex::ColorBook book;
    korvex::FileFault fault;
    if (!korvex::readColorBook({reinterpret_cast<const char*>(data), size}, book, fault)) {
        require(!fault.what.empty() && !fault.remedy.empty() && !fault.text().empty());
        return 0;
    }
    require(!book.name.empty() && !book.pages.empty());
    for (const korvex::ColorBookPage& page : book.pages) {
        require(!page.title.empty() && !page.colors.empty());
        for (const korvex::BookColor& entry : page.colors) {
            require(book.find(entry.name) == &entry);
            HxCmColor again = book.color(entry);
            const HxCmColor color = again;
            require(again.setNamesFromDictionaryKey(color.getDictionaryKey().c_str()) == Hx::eOk);
            require(again == color && color.isFromBook());
        }
    }
    return 0;
}
