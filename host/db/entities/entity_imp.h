// What all entities have: layer, colour, linetype, lineweight, visibility.
#pragma once

#include "host/db/kernel/object_imp.h"
#include "host/db/kernel/record_ref.h"
#include "host/db/values/color_groups.h"

namespace korvex {

class EntityImp : public HxDbObjectImp {
public:
    explicit EntityImp(std::string_view dxfType) : HxDbObjectImp(dxfType) {}
    void clearFields() override;
    void readGroups(std::string_view groups, const GroupFormat& format) override;
    void fieldsRead(HxDbDatabase& database) override;
    void writeFields(FieldWriter& out) const override;
    void added(HxDbDatabase& database) override;

    RecordRef layer{TableKind::layer};
    RecordRef linetype{TableKind::linetype};
    HxCmColor color = HxCmColor::byIndex(HxCmColor::kIndexByLayer);
    std::int16_t lineWeight = -1;
    bool visible = true;

protected:
    /// True for the part of the groups that no entity class has fields of its own in.
    static bool isCommon(const ReadContext& context) { return context.subclass == "AcDbEntity"; }

private:
    ColorGroups m_color{HxCmColor::kIndexByLayer};
};

}  // namespace korvex
