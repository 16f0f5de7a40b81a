// Looks for a colour-book colour among the layers.
#include "host/editor/color_books.h"

#include "host/db/kernel/text_fold.h"
#include "sdk/hxdbsymtb.h"

#include <memory>

namespace korvex {

std::optional<HxCmColor> findBookColor(HxDbDatabase& database, const std::wstring& book,
                                       const std::wstring& name) {
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
