// Open documents: which there are, which is current, who has locked them, what is undone in them.
#pragma once

#include "hxdbdatabase.h"
#include "hxdbtransaction.h"

class HxApDocument;

/// Undo inside a running command, by marks.
class HXSDK_API VrexUndoController : public HxRxObject {
public:
    HX_DECLARE_MEMBERS(VrexUndoController)
    /// Sets a mark that undoInCommand goes back to.
    virtual void putSubCommandKnote() = 0;
    /// Marks of the running command that have not been undone; 0 outside of a command.
    virtual int subCommandKnoteCount() const = 0;
    /// Takes back what the command did since the last mark, and the mark; with `count` above 0 that many
    /// marks, with -1 one. `quiet` prints nothing. eNoUndo when there is no mark.
    virtual Hx::ErrorStatus undoInCommand(int count, bool quiet) = 0;
};

/// An open drawing with its command state.
class HXSDK_API HxApDocument : public HxRxObject {
public:
    HX_DECLARE_MEMBERS(HxApDocument)
    /// What the title shows: the file's name without its path, or "Drawing1".
    virtual const wchar_t* docTitle() const = 0;
    /// Full path; empty for one that was never saved.
    virtual const wchar_t* fileName() const = 0;
    virtual HxDbDatabase* database() const = 0;
    virtual HxDbTransactionManager* transactionManager() const = 0;
    virtual VrexUndoController* undoController() const = 0;
    /// No command is running in it.
    virtual bool isQuiescent() const = 0;
    virtual bool isReadOnly() const = 0;
    /// The global name of the running command; empty when there is none.
    virtual const wchar_t* commandInProgress() const = 0;
};

/// Receives what happens to documents. Belongs to its maker; must be removed before it is deleted.
class HXSDK_API HxApDocManagerReactor : public HxRxObject {
public:
    HX_DECLARE_MEMBERS(HxApDocManagerReactor)
    virtual void documentCreated(HxApDocument*) {}
    virtual void documentToBeDestroyed(HxApDocument*) {}
    virtual void documentDestroyed(const wchar_t* /*fileName*/) {}
    virtual void documentActivated(HxApDocument*) {}
    virtual void documentToBeDeactivated(HxApDocument*) {}
    virtual void documentBecameCurrent(HxApDocument*) {}
    virtual void documentTitleUpdated(HxApDocument*) {}
};

/// How a document is locked.
enum HxApLockMode : int { kNone = 0, kRead = 1, kWrite = 4, kXWrite = 0x14 };

/// Steps through the open documents in the order of opening. The caller deletes it.
class HXSDK_API HxApDocumentIterator {
public:
    virtual ~HxApDocumentIterator() = default;
    virtual bool done() const = 0;
    virtual void step() = 0;
    virtual HxApDocument* document() const = 0;
};

class HXSDK_API HxApDocManager : public HxRxObject {
public:
    HX_DECLARE_MEMBERS(HxApDocManager)
    /// Null when none is open.
    virtual HxApDocument* curDocument() const = 0;
    virtual HxApDocument* mdiActiveDocument() const = 0;
    /// Null when the database is not a document's.
    virtual HxApDocument* document(const HxDbDatabase* database) const = 0;
    virtual HxApDocumentIterator* newHxApDocumentIterator() const = 0;
    virtual int documentCount() const = 0;

    /// Locks nest; commands lock their document themselves. eNoDocument for one that is not open;
    /// eInvalidInput for kNone; unlockDocument: eLockViolation when it is not locked.
    virtual Hx::ErrorStatus lockDocument(HxApDocument* document, HxApLockMode mode = kWrite) = 0;
    virtual Hx::ErrorStatus unlockDocument(HxApDocument* document) = 0;
    /// The strongest of the locks that are held.
    virtual HxApLockMode lockMode(const HxApDocument* document) const = 0;

    /// The current document is the one whose database is the working database; the active one is what the
    /// user sees. setCurDocument leaves the active one as it is, activateDocument makes the document both.
    /// eNoDocument for one that is not open; activateDocument: eInvalidContext while a command runs in
    /// another.
    virtual Hx::ErrorStatus setCurDocument(HxApDocument* document) = 0;
    virtual Hx::ErrorStatus activateDocument(HxApDocument* document) = 0;
    /// Queues input for the document, run when the host is idle, as if typed. With `activate` the document
    /// becomes the active one first; without `echo` it does not appear on the command line. eNoDocument.
    virtual Hx::ErrorStatus sendStringToExecute(HxApDocument* document, const wchar_t* text,
                                                bool activate = true, bool wrapUpInactiveDocument = false,
                                                bool echo = true) = 0;

    /// Opens a drawing file as a new, active document; eFileNotFound, eFileAccessErr, eBadDxfSequence,
    /// eFilerError, eCancelled (by the user); the reason is in `error` (may be null). One that is open
    /// already becomes active.
    virtual Hx::ErrorStatus openDocument(const wchar_t* path, HxApDocument*& document,
                                         CStdStr<wchar_t>* error = nullptr) = 0;
    /// An empty drawing as a new, active document. Null while a command runs in another.
    virtual HxApDocument* newDocument() = 0;
    /// Saves under a path, or under its own name for null or "". eFileAccessErr and the like, eCancelled (by
    /// the user), the reason is in `error`; eInvalidInput for a drawing without a name.
    virtual Hx::ErrorStatus saveDocument(HxApDocument* document, const wchar_t* path,
                                         CStdStr<wchar_t>* error = nullptr) = 0;
    /// Closes without asking; what was not saved is lost. eInvalidContext while a command runs in it.
    virtual Hx::ErrorStatus closeDocument(HxApDocument* document) = 0;

    virtual void addReactor(HxApDocManagerReactor* reactor) = 0;
    virtual void removeReactor(HxApDocManagerReactor* reactor) = 0;
};

/// Never null.
HXSDK_API HxApDocManager* hxDocManager();
/// The current document, its database, its undo controller; null when there is none.
HXSDK_API HxApDocument* curDoc();
HXSDK_API HxDbDatabase* curDocDatabase();
HXSDK_API VrexUndoController* curDocUndoController();

/// Makes an undo group of everything until endUndoGroup: one step for the user, shown under `name`. Groups
/// nest.
HXSDK_API void hxedBeginUndoGroup(HxApDocument* document, const wchar_t* name);
HXSDK_API void hxedEndUndoGroup(HxApDocument* document);
