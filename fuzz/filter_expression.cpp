// Fuzz target: any text is taken as a filter's expression. One that cannot be understood tells where and why
// and accepts nothing; NOT around one that can accepts exactly the other layers.
#include "fuzz/filter_layers.h"

#include "host/base/text.h"

using korvex::fuzz::accepted;
using korvex::fuzz::Drawing;
using korvex::fuzz::require;

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
