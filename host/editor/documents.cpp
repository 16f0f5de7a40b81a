// Opens, activates, locks, saves and closes documents.
#include "host/editor/documents.h"

#include "host/base/progress.h"
#include "host/db/kernel/reactor_list.h"
#include "host/editor/editor.h"
#include "host/editor/editor_notices.h"
#include "host/io/xref_files.h"

#include <QFileInfo>

#include <algorithm>

HX_DEFINE_MEMBERS(HxApDocument, HxRxObject)
HX_DEFINE_MEMBERS(HxApDocManager, HxRxObject)
HX_DEFINE_MEMBERS(HxApDocManagerReactor, HxRxObject)

namespace korvex {

namespace {

/// Of the progress of opening.
enum Share : long long { kReadingShare = 8, kXrefsShare = 2 };

std::wstring absolutePath(const std::wstring& path) {
    return QFileInfo(QString::fromStdWString(path)).absoluteFilePath().toStdWString();
}

/// One file under two paths is one file.
bool isSameFile(const std::wstring& a, const std::wstring& b) {
    const QFileInfo first(QString::fromStdWString(a));
    const QFileInfo second(QString::fromStdWString(b));
    return first.exists() && second.exists() ? first.canonicalFilePath() == second.canonicalFilePath()
                                             : a == b;
}

class DocumentIterator : public HxApDocumentIterator {
public:
    explicit DocumentIterator(std::vector<Document*> documents) : m_documents(std::move(documents)) {}
    bool done() const override { return m_at >= m_documents.size(); }
    void step() override { ++m_at; }
    HxApDocument* document() const override { return done() ? nullptr : m_documents[m_at]; }

private:
    std::vector<Document*> m_documents;
    std::size_t m_at = 0;
};

}  // namespace

void HeaderForwarder::headerSysVarWillChange(const HxDbDatabase* database, const wchar_t* name) {
    forwardHeaderChange(database, name, nullptr);
}

void HeaderForwarder::headerSysVarChanged(const HxDbDatabase* database, const wchar_t* name, bool success) {
    forwardHeaderChange(database, name, &success);
}

Document::Document(std::unique_ptr<HxDbDatabase> database, std::wstring title)
    : m_database(std::move(database)), m_undo(*m_database), m_title(std::move(title)) {
    m_database->addReactor(&m_forwarder);
}

Document::~Document() { m_database->removeReactor(&m_forwarder); }

bool Document::isReadOnly() const {
    const QFileInfo file(QString::fromStdWString(m_path));
    return !m_path.empty() && file.exists() && !file.isWritable();
}

void Document::setPath(const std::wstring& path) {
    m_path = path;
    m_title = QFileInfo(QString::fromStdWString(path)).fileName().toStdWString();
}

DocumentManager::~DocumentManager() = default;

template <class Call>
void DocumentManager::tell(Call call) {
    notifyAll(m_reactors, call);
}

std::vector<Document*> DocumentManager::all() const {
    std::vector<Document*> documents;
    for (const auto& document : m_documents) {
        documents.push_back(document.get());
    }
    return documents;
}

Document* DocumentManager::find(const HxApDocument* document) const {
    for (const auto& open : m_documents) {
        if (open.get() == document) {
            return open.get();
        }
    }
    return nullptr;
}

Document* DocumentManager::findPath(const std::wstring& path) const {
    for (const auto& open : m_documents) {
        if (*open->fileName() && isSameFile(open->fileName(), path)) {
            return open.get();
        }
    }
    return nullptr;
}

HxApDocument* DocumentManager::document(const HxDbDatabase* database) const {
    for (const auto& open : m_documents) {
        if (open->database() == database) {
            return open.get();
        }
    }
    return nullptr;
}

HxApDocumentIterator* DocumentManager::newHxApDocumentIterator() const { return new DocumentIterator(all()); }

Hx::ErrorStatus DocumentManager::lockDocument(HxApDocument* document, HxApLockMode mode) {
    Document* open = find(document);
    if (!open) {
        return Hx::eNoDocument;
    }
    if (mode == kNone) {
        return Hx::eInvalidInput;
    }
    open->locks().push_back(mode);
    return Hx::eOk;
}

Hx::ErrorStatus DocumentManager::unlockDocument(HxApDocument* document) {
    Document* open = find(document);
    if (!open) {
        return Hx::eNoDocument;
    }
    if (open->locks().empty()) {
        return Hx::eLockViolation;
    }
    open->locks().pop_back();
    return Hx::eOk;
}

HxApLockMode DocumentManager::lockMode(const HxApDocument* document) const {
    Document* open = find(document);
    if (!open || open->locks().empty()) {
        return kNone;
    }
    return *std::max_element(open->locks().begin(), open->locks().end());
}

void DocumentManager::makeCurrent(Document* document) {
    if (m_current == document) {
        return;
    }
    m_current = document;
    hxdbSetWorkingDatabase(document ? document->database() : nullptr);
    if (document) {
        tell([document](HxApDocManagerReactor& r) { r.documentBecameCurrent(document); });
    }
}

Hx::ErrorStatus DocumentManager::setCurDocument(HxApDocument* document) {
    Document* open = find(document);
    if (!open) {
        return Hx::eNoDocument;
    }
    makeCurrent(open);
    return Hx::eOk;
}

/// A command stays in the document that it was started in.
bool DocumentManager::mayActivate(const Document* document) const {
    return !m_active || m_active == document || m_active->isQuiescent();
}

Hx::ErrorStatus DocumentManager::activateDocument(HxApDocument* document) {
    Document* open = find(document);
    if (!open) {
        return Hx::eNoDocument;
    }
    if (!mayActivate(open)) {
        return Hx::eInvalidContext;
    }
    if (m_active != open) {
        if (Document* before = m_active) {
            tell([before](HxApDocManagerReactor& r) { r.documentToBeDeactivated(before); });
        }
        m_active = open;
        makeCurrent(open);
        tell([open](HxApDocManagerReactor& r) { r.documentActivated(open); });
    }
    makeCurrent(open);
    return Hx::eOk;
}

Hx::ErrorStatus DocumentManager::sendStringToExecute(HxApDocument* document, const wchar_t* text,
                                                     bool activate, bool, bool echo) {
    if (!find(document)) {
        return Hx::eNoDocument;
    }
    if (!text) {
        return Hx::eInvalidInput;
    }
    ScriptOptions options;
    options.echo = echo;
    options.document = document;
    options.activates = activate;
    editor().input().send(text, options);
    return Hx::eOk;
}

Document* DocumentManager::take(std::unique_ptr<Document> document) {
    Document* opened = document.get();
    m_documents.push_back(std::move(document));
    tell([opened](HxApDocManagerReactor& r) { r.documentCreated(opened); });
    activateDocument(opened);
    return opened;
}

Hx::ErrorStatus DocumentManager::openDocument(const wchar_t* path, HxApDocument*& document,
                                              CStdStr<wchar_t>* error) {
    document = nullptr;
    const auto fail = [error](Hx::ErrorStatus status, const std::wstring& why) {
        if (error) {
            *error = why;
        }
        return status;
    };
    if (!path || !*path) {
        return fail(Hx::eInvalidInput, L"a file name is missing");
    }
    if (!mayActivate(nullptr)) {
        return fail(Hx::eInvalidContext, L"a command is running: end it first");
    }
    const std::wstring full = absolutePath(path);
    if (Document* open = findPath(full)) {
        document = open;
        return activateDocument(open);
    }
    ProgressScope progress(L"Opening \"" + full.substr(full.rfind(L'/') + 1) + L"\"",
                           kReadingShare + kXrefsShare);
    progress.nextPart(kReadingShare);
    auto database = std::make_unique<HxDbDatabase>(false);
    const Hx::ErrorStatus status = database->readDwgFile(full.c_str());
    if (status != Hx::eOk) {
        return fail(status, *database->readError() ? database->readError() : Hx::errorText(status));
    }
    std::vector<std::wstring> messages;
    progress.step(kReadingShare);
    progress.nextPart(kXrefsShare);
    loadXrefs(*database, messages);
    if (progress.isCancelled()) {
        return fail(Hx::eCancelled, L"cancelled");
    }
    auto opened = std::make_unique<Document>(std::move(database), L"");
    opened->setPath(full);
    document = take(std::move(opened));
    for (const std::wstring& message : messages) {
        editor().console().message(message);
    }
    return Hx::eOk;
}

HxApDocument* DocumentManager::newDocument() {
    if (!mayActivate(nullptr)) {
        return nullptr;
    }
    const std::wstring title = L"Drawing" + std::to_wstring(++m_created);
    return take(std::make_unique<Document>(std::make_unique<HxDbDatabase>(true), title));
}

Hx::ErrorStatus DocumentManager::saveDocument(HxApDocument* document, const wchar_t* path,
                                              CStdStr<wchar_t>* error) {
    const auto fail = [error](Hx::ErrorStatus status, const std::wstring& why) {
        if (error) {
            *error = why;
        }
        return status;
    };
    Document* open = find(document);
    if (!open) {
        return fail(Hx::eNoDocument, L"no drawing is open");
    }
    const std::wstring wanted = path && *path ? absolutePath(path) : open->fileName();
    if (wanted.empty()) {
        return fail(Hx::eInvalidInput, L"the drawing has no name yet: use SAVEAS");
    }
    Document* other = findPath(wanted);
    if (other && other != open) {
        return fail(Hx::eFileAccessErr,
                    L"the file is open as another drawing: close that one or use another name");
    }
    const Hx::ErrorStatus status = open->database()->saveAs(wanted.c_str());
    if (status != Hx::eOk) {
        return fail(status,
                    *open->database()->readError() ? open->database()->readError() : Hx::errorText(status));
    }
    if (wanted != open->fileName()) {
        open->setPath(wanted);
        tell([open](HxApDocManagerReactor& r) { r.documentTitleUpdated(open); });
    }
    return Hx::eOk;
}

Hx::ErrorStatus DocumentManager::closeDocument(HxApDocument* document) {
    Document* gone = find(document);
    if (!gone) {
        return Hx::eNoDocument;
    }
    if (!gone->isQuiescent()) {
        return Hx::eInvalidContext;
    }
    if (m_active == gone) {
        tell([gone](HxApDocManagerReactor& r) { r.documentToBeDeactivated(gone); });
    }
    tell([gone](HxApDocManagerReactor& r) { r.documentToBeDestroyed(gone); });
    editor().input().forget(gone);
    const auto at = std::find_if(m_documents.begin(), m_documents.end(),
                                 [gone](const auto& open) { return open.get() == gone; });
    std::unique_ptr<Document> last = std::move(*at);
    m_documents.erase(at);
    const std::wstring name = last->fileName();
    if (m_active == gone) {
        m_active = nullptr;
    }
    if (m_current == gone) {
        makeCurrent(nullptr);
    }
    last.reset();
    tell([&name](HxApDocManagerReactor& r) { r.documentDestroyed(name.c_str()); });
    if (!m_active && !m_documents.empty()) {
        activateDocument(m_documents.back().get());
    }
    return Hx::eOk;
}

void DocumentManager::addReactor(HxApDocManagerReactor* reactor) { addOnce(m_reactors, reactor); }
void DocumentManager::removeReactor(HxApDocManagerReactor* reactor) { removeFrom(m_reactors, reactor); }

}  // namespace korvex

HxApDocManager* hxDocManager() { return &korvex::editor().documents(); }

HxApDocument* curDoc() { return hxDocManager()->curDocument(); }

HxDbDatabase* curDocDatabase() { return curDoc() ? curDoc()->database() : nullptr; }

VrexUndoController* curDocUndoController() { return curDoc() ? curDoc()->undoController() : nullptr; }

void hxedBeginUndoGroup(HxApDocument* document, const wchar_t* name) {
    if (korvex::editor().documents().find(document)) {
        korvex::journal(*document->database()).beginGroup(name ? name : L"");
    }
}

void hxedEndUndoGroup(HxApDocument* document) {
    if (korvex::editor().documents().find(document) && korvex::journal(*document->database()).nesting() > 0) {
        korvex::journal(*document->database()).endGroup();
    }
}
