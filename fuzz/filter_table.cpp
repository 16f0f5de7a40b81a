// Fuzz target: any text is taken as a filter's expression for the table of the filter editor. What the table
// can say, it says so that the filter accepts the same layers.
#include "fuzz/filter_layers.h"

#include "host/base/text.h"
#include "manager_ui/filters/filter_table.h"

using korvex::fuzz::accepted;
using korvex::fuzz::Drawing;
using korvex::fuzz::require;

extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size) {
    static auto* const drawing = new Drawing;
    const std::wstring text = korvex::fromUtf8({reinterpret_cast<const char*>(data), size}).c_str();
    KvFilterTable table;
    if (!tableOf(QString::fromStdWString(text), table)) return 0;
    const QString said = expressionOf(table);
    KvFilterTable again;
    require(tableOf(said, again) && expressionOf(again) == said);
    HxLyLayerFilter before;
    HxLyLayerFilter after;
    require(after.setFilterExpression(said.toStdWString().c_str(), nullptr) == Hx::eOk || !table.empty());
    if (before.setFilterExpression(text.c_str(), nullptr) == Hx::eOk) {
        require(accepted(before, *drawing) == accepted(after, *drawing));
    }
    return 0;
}
