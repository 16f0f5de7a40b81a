// Fuzz target: any text is taken as a filter's expression. One that cannot be understood tells where and why
// and accepts nothing; NOT around one that can accepts exactly the other layers.
#include "host/base/text.h"
#include "sdk/hxdbdatabase.h"
#include "sdk/hxdbsymtb.h"
#include "sdk/hxlyfilter.h"

#include <cstdint>
#include <cstdlib>
#include <memory>
#include <vector>

namespace {

void require(bool condition) {
    if (!condition) {
        std::abort();
    }
}

/// A drawing with layers that differ in what expressions ask for.
struct Drawing {
    Drawing() {
        const HxDbObjectPointer<HxDbLayerTable> table(database.layerTableId(), HxDb::kForWrite);
        for (const wchar_t* name : {L"A-WALL", L"A-DOOR-1", L"x[a]", L"\u4e2d\u6587"}) {
            auto* layer = new HxDbLayerTableRecord;
            layer->setName(name);
            layer->setIsOff(layers.size() % 2 == 0);
            layer->setColor(HxCmColor::byIndex(static_cast<std::int16_t>(1 + layers.size())));
            table->add(layer);
            layers.push_back(layer);
        }
    }
    ~Drawing() {
        for (HxDbLayerTableRecord* layer : layers) {
            layer->close();
        }
    }
    HxDbDatabase database;
    std::vector<HxDbLayerTableRecord*> layers;
};

std::vector<bool> accepted(const HxLyLayerFilter& filter, const Drawing& drawing) {
    std::vector<bool> all;
    for (const HxDbLayerTableRecord* layer : drawing.layers) {
        all.push_back(filter.filter(layer));
    }
    return all;
}

}  // namespace

extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size) {
    static auto* const drawing = new Drawing;
    const std::wstring text = korvex::fromUtf8({reinterpret_cast<const char*>(data), size});
    HxLyLayerFilter filter;
    HxLyExpressionError error;
    if (filter.setFilterExpression(text.c_str(), &error) != Hx::eOk) {
        require(error.position >= 0 && error.position <= static_cast<int>(text.size()) &&
                !error.reason.empty());
        require(accepted(filter, *drawing) == std::vector<bool>(drawing->layers.size(), false));
        return 0;
    }
    require(error.position == -1);
    std::vector<bool> others = accepted(filter, *drawing);
    others.flip();
    HxLyLayerFilter opposite;
    const std::wstring taken = text.c_str();  // up to the first null
    if (taken.find_first_not_of(L" \t\r\n") != taken.npos &&
        opposite.setFilterExpression((L"NOT (" + taken + L")").c_str(), nullptr) == Hx::eOk) {
        require(accepted(opposite, *drawing) == others);
    }
    return 0;
}
