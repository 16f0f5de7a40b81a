// Fuzz target: any bytes are read as a linetype file; what is read can be loaded into a drawing, what is not
// has a reason.
#include "host/editor/linetype_file_loader.h"

#include <cmath>
#include <cstdint>
#include <cstdlib>

namespace {

using namespace korvex;

void require(bool condition) {
    if (!condition) {
        std::abort();
    }
}

void checkSound(const LinetypeDefinition& definition) {
    require(!definition.name.empty() && definition.line > 0);
    require(definition.dashes.size() >= 2 && definition.dashes.size() <= kMostDashes);
    for (const double dash : definition.dashes) {
        require(std::isfinite(dash));
    }
}

}  // namespace

extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size) {
    LinetypeFile file;
    FileFault fault;
    if (!readLinetypes({reinterpret_cast<const char*>(data), size}, file, fault)) {
        require(!fault.what.empty() && !fault.remedy.empty() && !fault.text().empty());
        return 0;
    }
    for (const LinetypeDefinition& definition : file.linetypes) {
        checkSound(definition);
    }
    HxDbDatabase database(true);
    const LoadedLinetypes loaded = loadLinetypes(database, file.linetypes);
    require(loaded.ids.size() == file.linetypes.size() && loaded.failures.empty());
    for (const LinetypeDefinition& definition : file.linetypes) {
        require(linetypePresence(database, definition) == LinetypePresence::same);
    }
    return 0;
}
