// The bracket around one edit of the current document.
#pragma once

/// Locks the current document and makes one undo step of what is changed while it lives; edits nest, the
/// outermost makes the step. Not enabled, or without a document, it does nothing: a dialog edits inside a
/// transaction of its own.
class KvLayerUndoAndLockWorkerEx {
public:
    /// `withUndo` false: the lock alone. `name` is the step's name for the user; null: a general one.
    KvLayerUndoAndLockWorkerEx(bool enable, bool withUndo, const wchar_t* name = nullptr);
    ~KvLayerUndoAndLockWorkerEx();
    KvLayerUndoAndLockWorkerEx(const KvLayerUndoAndLockWorkerEx&) = delete;
    KvLayerUndoAndLockWorkerEx& operator=(const KvLayerUndoAndLockWorkerEx&) = delete;

private:
    int m_operation = 0;  ///< the host's handle; 0 none
};

class KvLayerUndoAndLockWorker : public KvLayerUndoAndLockWorkerEx {
public:
    explicit KvLayerUndoAndLockWorker(bool enable, const wchar_t* name = nullptr)
        : KvLayerUndoAndLockWorkerEx(enable, true, name) {}
};
