// An object open for write, for as long as a scope lasts, also when its caller has it open already.
#pragma once

#include "host/db/kernel/object_imp.h"

namespace korvex {

/// Opens for write and closes. What is open for write stays so: no one but the caller can have it. What is
/// open for read once is upgraded meanwhile, if that is wanted.
class WriteAccess {
public:
    /// Whose open for read may be upgraded.
    enum class Upgrade { transactions, anyone };

    explicit WriteAccess(HxDbStub& stub, bool openErased = false, Upgrade whose = Upgrade::transactions) {
        m_status = hxdbOpenObject(m_object, HxDbObjectId(&stub), HxDb::kForWrite, openErased);
        m_after = After::close;
        if (m_status == Hx::eWasOpenForWrite) {
            m_status = Hx::eOk;
            m_after = After::leave;
        } else if (m_status == Hx::eWasOpenForRead && (stub.resident || whose == Upgrade::anyone)) {
            m_status = stub.object->upgradeOpen();
            m_after = After::downgrade;
        }
        m_object = m_status == Hx::eOk ? stub.object : nullptr;
    }
    ~WriteAccess() {
        if (m_object && m_after == After::close) {
            m_object->close();
        } else if (m_object && m_after == After::downgrade) {
            m_object->downgradeOpen();
        }
    }
    WriteAccess(const WriteAccess&) = delete;
    WriteAccess& operator=(const WriteAccess&) = delete;

    Hx::ErrorStatus status() const { return m_status; }
    /// Null unless the status is eOk.
    HxDbObject* object() const { return m_object; }

private:
    enum class After { close, downgrade, leave };
    HxDbObject* m_object = nullptr;
    Hx::ErrorStatus m_status = Hx::eOk;
    After m_after = After::close;
};

}  // namespace korvex
