// A dictionary's fields.
#pragma once

#include "host/db/kernel/object_imp.h"

namespace korvex {

class DictionaryImp : public HxDbObjectImp {
public:
    struct Entry {
        std::wstring name;
        int code = 350;  ///< of the pointer: 350 the dictionary only knows the object, 360 it owns it
        std::uint64_t handle = 0;
        HxDbStub* object = nullptr;  ///< null when the drawing lacks it; the handle is kept then
        bool isLive() const;
    };

    explicit DictionaryImp(std::string_view dxfType = "DICTIONARY") : HxDbObjectImp(dxfType) {}
    void clearFields() override;
    void readField(const ReadContext& context, const GroupCursor& group) override;
    void writeFields(FieldWriter& out) const override;
    Hx::ErrorStatus mayErase() const override;
    bool isStaleForSaving() const override;

    /// Null when there is no live entry of that name.
    Entry* find(std::wstring_view name);
    /// Entries of that name whose objects are erased.
    bool hasDead(std::wstring_view name) const;
    void dropDead(std::wstring_view name);
    /// Owns its objects: they are erased with their entries.
    bool isHardOwner() const { return m_hardOwner; }
    void makeHardOwner() { m_hardOwner = true; }

    std::vector<Entry> entries;

private:
    static bool isDeadOf(const Entry& entry, std::wstring_view name);

    std::string m_head;  ///< groups before the first entry
    bool m_hardOwner = false;
};

class DictionaryWithDefaultImp : public DictionaryImp {
public:
    DictionaryWithDefaultImp() : DictionaryImp("ACDBDICTIONARYWDFLT") {}
    void clearFields() override;
    void readField(const ReadContext& context, const GroupCursor& group) override;
    void writeFields(FieldWriter& out) const override;

    HxDbStub* defaultEntry = nullptr;
};

}  // namespace korvex
