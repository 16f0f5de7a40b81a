// What all table records have: a name and flags.
#pragma once

#include "host/db/kernel/name_log.h"
#include "host/db/kernel/object_imp.h"

namespace korvex {

class SymbolRecordImp : public HxDbObjectImp {
public:
    static constexpr int kNameCode = 2;
    static constexpr int kFlagsCode = 70;
    static constexpr long long kDependentFlag = 16;

    SymbolRecordImp(std::string_view dxfType, const char* marker)
        : HxDbObjectImp(dxfType), m_marker(marker), m_table(tableKind(dxfType)) {}

    void clearFields() override;
    void readField(const ReadContext& context, const GroupCursor& group) override;
    void fieldsRead(HxDbDatabase& database) override { noteName(database); }
    void added(HxDbDatabase& database) override { noteName(database); }
    void writeFields(FieldWriter& out) const override;
    Hx::ErrorStatus mayUnerase() const override;

    bool isDependent() const;
    TableKind table() const { return m_table; }
    /// After a change of the name: other objects' groups follow it, look-ups find it.
    void noteName(HxDbDatabase& database);
    /// What keeps the record from being given another name by a user.
    virtual Hx::ErrorStatus mayRename() const;

    std::wstring name;
    long long flags = 0;

protected:
    /// Begins the class's own subclass; fields of derived classes follow.
    void beginFields(FieldWriter& out) const;

private:
    const char* m_marker;
    TableKind m_table;
    bool m_nameRead = false;
    std::wstring m_loggedName;  ///< what the name log and the index know
};

}  // namespace korvex
