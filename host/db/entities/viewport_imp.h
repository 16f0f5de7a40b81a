// A viewport's fields.
#pragma once

#include "host/db/entities/entity_imp.h"

#include <unordered_set>

namespace korvex {

class ViewportImp : public EntityImp {
public:
    ViewportImp() : EntityImp("VIEWPORT") {}
    void clearFields() override;
    void readField(const ReadContext& context, const GroupCursor& group) override;
    void xdataRead(HxDbDatabase& database) override;
    void writeFields(FieldWriter& out) const override;
    bool isStaleForSaving() const override;

    bool isOn() const { return status != 0 && (flags & kOffFlag) == 0; }
    std::vector<HxDbStub*> frozenLayers(const HxDbDatabase& database) const;
    bool isFrozen(const HxDbDatabase& database, const HxDbStub& layer) const;
    void freeze(HxDbStub& layer);
    void thaw(const std::unordered_set<const HxDbStub*>& layers);
    /// Drawings older than R13 keep the names in the extended data, where there is a place for them.
    bool holdsNames() const { return m_holdsNames; }
    void namesToXData(const HxDbDatabase& database);

    long long status = 1;
    long long number = 0;
    long long flags = 0;
    double height = 0;
    double viewHeight = 0;

private:
    static constexpr long long kOffFlag = 0x20000;
    struct Frozen {
        int code = 331;
        std::uint64_t handle = 0;
        HxDbStub* layer = nullptr;  ///< null when the drawing lacks it; the handle is kept then
    };
    std::vector<Frozen> m_frozen;
    mutable std::unordered_set<const HxDbStub*> m_isFrozen;  ///< layers of m_frozen, while m_isIndexed
    mutable bool m_isIndexed = false;
    std::vector<RecordRef> m_frozenNames;  ///< older than R13
    bool m_holdsNames = false;
};

}  // namespace korvex
