// Remembers the colours of colour books that were seen.
#include "host/editor/color_books.h"

#include "host/db/kernel/text_fold.h"
#include "sdk/hxdbsymtb.h"

#include <map>
#include <memory>

namespace korvex {

namespace {

std::map<std::wstring, HxCmColor>& known() {
    static std::map<std::wstring, HxCmColor> colors;
    return colors;
}

std::wstring keyOf(const std::wstring& book, const std::wstring& name) {
    return foldName(book + L"$" + name);
}

}  // namespace

void rememberBookColor(const HxCmColor& color) {
    if (color.isFromBook()) {
        known()[keyOf(color.bookName(), color.colorName())] = color;
    }
}

std::optional<HxCmColor> findBookColor(HxDbDatabase& database, const std::wstring& book,
                                       const std::wstring& name) {
    const auto remembered = known().find(keyOf(book, name));
    if (remembered != known().end()) {
        return remembered->second;
    }
    const HxDbObjectPointer<HxDbLayerTable> table(database.layerTableId(), HxDb::kForRead);
    HxDbSymbolTableIterator* steps = nullptr;
    if (!table || table->newIterator(steps) != Hx::eOk) {
        return {};
    }
    const std::unique_ptr<HxDbSymbolTableIterator> owner(steps);
    for (; !steps->done(); steps->step()) {
        const HxDbObjectPointer<HxDbLayerTableRecord> layer(steps->getRecordId(), HxDb::kForRead);
        if (layer && layer->color().isFromBook() && equalNames(layer->color().bookName(), book) &&
            equalNames(layer->color().colorName(), name)) {
            return layer->color();
        }
    }
    return {};
}

}  // namespace korvex
