// The bracket around one edit of the current document.
#include "edit_guard.h"

#include "hxdoc.h"
#include "hxui.h"

KvLayerUndoAndLockWorkerEx::KvLayerUndoAndLockWorkerEx(bool enable, bool withUndo, const wchar_t* name) {
    HxApDocument* const document = enable ? curDoc() : nullptr;
    if (document) m_operation = hxuiMainAppService()->beginGuardedOperation(document, name, withUndo);
}

KvLayerUndoAndLockWorkerEx::~KvLayerUndoAndLockWorkerEx() {
    if (m_operation != 0) hxuiMainAppService()->endGuardedOperation(m_operation);
}
