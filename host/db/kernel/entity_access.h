// Entities without opening them: for picking, drawing and saving, which look at all of a drawing.
#pragma once

#include "host/db/kernel/database_imp.h"

namespace korvex {

/// The entities of a block record in drawing order, erased ones and sub-entities (vertices, attributes)
/// included.
const std::vector<HxDbStub*>& members(const HxDbStub& container);

/// Alive: not erased, and for a sub-entity its main entity neither.
bool isAlive(const HxDbStub& stub);

/// Record type, groups and their form. The views hold until the object changes.
struct EntityGroups {
    std::string_view type;
    std::string_view groups;
    const GroupFormat& format;
};
EntityGroups entityGroups(HxDbStub& entity);

/// The layer that the entity is on; layer "0" when the drawing lacks the one that it names. Null only in a
/// drawing without layers.
HxDbStub* layerOf(HxDbStub& entity);

struct LayerVisibility {
    bool off = false;
    bool frozen = false;
    bool locked = false;
};
/// Without opening the layer.
LayerVisibility layerVisibility(HxDbStub& layer);

/// The layers frozen in a viewport, sorted by address.
std::vector<HxDbStub*> layersFrozenIn(HxDbStub& viewport);

/// The record of a name in a table; null when there is none that is not erased.
HxDbStub* findRecord(const HxDbDatabase& database, TableKind table, std::wstring_view name);
/// The name of a table record.
std::wstring recordName(HxDbStub& record);

constexpr wchar_t kModelSpaceName[] = L"*Model_Space";
/// Model space, and the block record of the active paper space (null when there is none).
HxDbStub* modelSpace(const HxDbDatabase& database);
HxDbStub* paperSpace(const HxDbDatabase& database);

/// The drawing that an external reference's block record was loaded from; null when it is none or is not
/// loaded.
HxDbDatabase* xrefDatabase(const HxDbStub& blockRecord);
/// The layer of the host drawing that stands for a layer of an external reference: "XREF|LAYER", "0" for "0".
/// Null when the host drawing lacks it.
HxDbStub* hostLayer(HxDbStub& blockRecord, HxDbStub& xrefLayer);

/// Block begin's base point is in the BLOCK record: groups 10, 20, 30.
HxDbStub* blockBegin(const HxDbStub& blockRecord);

}  // namespace korvex
