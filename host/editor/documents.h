// The open documents: which is active, which is current, their locks, opening, saving and closing.
#pragma once

#include "host/editor/undo_controller.h"
#include "sdk/hxdoc.h"

#include <memory>
#include <string>
#include <vector>

namespace korvex {

class Document;
class DocumentManager;

/// Passes the header variables that change in a drawing on as system variables that change.
class HeaderForwarder : public HxDbDatabaseReactor {
public:
    void headerSysVarWillChange(const HxDbDatabase* database, const wchar_t* name) override;
    void headerSysVarChanged(const HxDbDatabase* database, const wchar_t* name, bool success) override;
};

/// An open drawing.
class Document : public HxApDocument {
public:
    Document(std::unique_ptr<HxDbDatabase> database, std::wstring title);
    ~Document() override;

    const wchar_t* docTitle() const override { return m_title.c_str(); }
    const wchar_t* fileName() const override { return m_path.c_str(); }
    HxDbDatabase* database() const override { return m_database.get(); }
    HxDbTransactionManager* transactionManager() const override { return m_database->transactionManager(); }
    VrexUndoController* undoController() const override { return &m_undo; }
    bool isQuiescent() const override { return m_commands.empty(); }
    bool isReadOnly() const override;
    const wchar_t* commandInProgress() const override {
        return m_commands.empty() ? L"" : m_commands.front().c_str();
    }

    void setPath(const std::wstring& path);
    UndoController& undo() const { return m_undo; }
    std::vector<HxApLockMode>& locks() { return m_locks; }
    /// The running commands, the outermost first; the processor keeps them.
    std::vector<std::wstring>& commands() { return m_commands; }
    /// Objects that were found open after a command and were reported.
    std::vector<HxDbStub*>& knownOpen() { return m_knownOpen; }

private:
    std::unique_ptr<HxDbDatabase> m_database;
    HeaderForwarder m_forwarder;
    mutable UndoController m_undo;
    std::wstring m_title;
    std::wstring m_path;
    std::vector<HxApLockMode> m_locks;
    std::vector<std::wstring> m_commands;
    std::vector<HxDbStub*> m_knownOpen;
};

class DocumentManager : public HxApDocManager {
public:
    ~DocumentManager() override;

    HxApDocument* curDocument() const override { return m_current; }
    HxApDocument* mdiActiveDocument() const override { return m_active; }
    HxApDocument* document(const HxDbDatabase* database) const override;
    HxApDocumentIterator* newHxApDocumentIterator() const override;
    int documentCount() const override { return static_cast<int>(m_documents.size()); }
    Hx::ErrorStatus lockDocument(HxApDocument* document, HxApLockMode mode) override;
    Hx::ErrorStatus unlockDocument(HxApDocument* document) override;
    HxApLockMode lockMode(const HxApDocument* document) const override;
    Hx::ErrorStatus setCurDocument(HxApDocument* document) override;
    Hx::ErrorStatus activateDocument(HxApDocument* document) override;
    Hx::ErrorStatus sendStringToExecute(HxApDocument* document, const wchar_t* text, bool activate,
                                        bool wrapUpInactiveDocument, bool echo) override;
    Hx::ErrorStatus openDocument(const wchar_t* path, HxApDocument*& document,
                                 CStdStr<wchar_t>* error) override;
    HxApDocument* newDocument() override;
    Hx::ErrorStatus saveDocument(HxApDocument* document, const wchar_t* path,
                                 CStdStr<wchar_t>* error) override;
    Hx::ErrorStatus closeDocument(HxApDocument* document) override;
    void addReactor(HxApDocManagerReactor* reactor) override;
    void removeReactor(HxApDocManagerReactor* reactor) override;

    Document* current() const { return m_current; }
    Document* active() const { return m_active; }
    std::vector<Document*> all() const;
    /// The open document; null for any other pointer.
    Document* find(const HxApDocument* document) const;

private:
    template <class Call>
    void tell(Call call);
    Document* take(std::unique_ptr<Document> document);
    Document* findPath(const std::wstring& path) const;
    void makeCurrent(Document* document);
    bool mayActivate(const Document* document) const;

    std::vector<std::unique_ptr<Document>> m_documents;
    std::vector<HxApDocManagerReactor*> m_reactors;
    Document* m_current = nullptr;
    Document* m_active = nullptr;
    int m_created = 0;
};

}  // namespace korvex
