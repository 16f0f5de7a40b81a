// A layer's fields.
#pragma once

#include "host/db/kernel/record_ref.h"
#include "host/db/tables/symbol_record_imp.h"
#include "host/db/values/color_groups.h"

namespace korvex {

class LayerImp : public SymbolRecordImp {
public:
    enum Flag : long long { kFrozen = 1, kFrozenInNewViewports = 2, kLocked = 4 };

    LayerImp() : SymbolRecordImp("LAYER", "AcDbLayerTableRecord") {}

    void clearFields() override;
    void readField(const ReadContext& context, const GroupCursor& group) override;
    void fieldsRead(HxDbDatabase& database) override;
    void xdataRead(HxDbDatabase& database) override;
    void added(HxDbDatabase& database) override;
    void writeFields(FieldWriter& out) const override;
    Hx::ErrorStatus mayErase() const override;
    Hx::ErrorStatus mayRename() const override;

    /// Layers that cannot go and count as used whatever is on them.
    bool isPermanent() const;
    bool isCurrent() const;
    void setFlag(Flag flag, bool on) { flags = on ? flags | flag : flags & ~static_cast<long long>(flag); }

    bool off = false;
    HxCmColor color;
    RecordRef linetype{TableKind::linetype};
    bool plottable = true;
    std::int16_t lineWeight = -3;
    HxDbStub* plotStyle = nullptr;
    HxCmTransparency transparency;
    std::wstring description;
    bool inUseWhenAdded = false;  ///< the mark of a record that is in no database yet

private:
    ColorGroups m_color{HxCmColor::kIndexWhite};
};

/// The layer of an object; the object must be one.
inline LayerImp& layerFields(const HxDbObject* layer) { return fields<LayerImp>(layer); }

}  // namespace korvex
