// Edits outside of commands: each locks its document and is one undo step.
#include "sdk/hxdoc.h"
#include "sdk/hxui.h"

#include <algorithm>
#include <vector>

namespace {

constexpr wchar_t kGeneralName[] = L"Edit";

struct Operation {
    int handle;
    HxApDocument* document;  ///< null when it was closed meanwhile
    bool isStep;
};

/// The operations that have begun and not ended, the outermost first.
class Operations : public HxApDocManagerReactor {
public:
    int begin(HxApDocument* document, const wchar_t* name, bool isStep) {
        if (!m_listens) {
            m_listens = true;
            hxDocManager()->addReactor(this);
        }
        if (hxDocManager()->lockDocument(document) != Hx::eOk) {
            return 0;
        }
        if (isStep) {
            hxedBeginUndoGroup(document, name && *name ? name : kGeneralName);
        }
        m_open.push_back({++m_lastHandle, document, isStep});
        return m_lastHandle;
    }

    bool end(int handle) {
        const auto found = std::find_if(m_open.begin(), m_open.end(),
                                        [handle](const Operation& one) { return one.handle == handle; });
        if (found == m_open.end()) {
            return false;
        }
        const auto kept = static_cast<std::size_t>(found - m_open.begin());
        while (m_open.size() > kept) {
            const Operation last = m_open.back();
            m_open.pop_back();
            if (last.document && last.isStep) {
                hxedEndUndoGroup(last.document);
            }
            if (last.document) {
                hxDocManager()->unlockDocument(last.document);
            }
        }
        return true;
    }

    void documentToBeDestroyed(HxApDocument* document) override {
        for (Operation& operation : m_open) {
            operation.document = operation.document == document ? nullptr : operation.document;
        }
    }

private:
    std::vector<Operation> m_open;
    int m_lastHandle = 0;
    bool m_listens = false;
};

/// Lives as long as the process, like the documents' list of reactors.
Operations& operations() {
    static auto* const kOperations = new Operations;
    return *kOperations;
}

}  // namespace

int HxUiMainAppService::beginGuardedOperation(HxApDocument* document, const wchar_t* name, bool withUndo) {
    return operations().begin(document, name, withUndo);
}

bool HxUiMainAppService::endGuardedOperation(int handle) { return operations().end(handle); }
