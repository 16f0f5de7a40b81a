// The command line's main loop and the frame around every command.
#include "host/editor/command_processor.h"

#include "host/db/kernel/journal.h"
#include "host/db/kernel/text_fold.h"
#include "host/editor/commands/setvar.h"
#include "host/editor/documents.h"
#include "host/editor/editor.h"
#include "host/editor/editor_notices.h"
#include "host/editor/open_objects.h"
#include "host/editor/selection.h"
#include "host/editor/system_variables.h"
#include "sdk/hxconfig.h"

#include <algorithm>

namespace korvex {

namespace {

constexpr wchar_t kTransparent = L'\'';
constexpr wchar_t kPrompt[] = L"Command: ";
const Command kSetVariable{L"SETVAR", L"SETVAR", HXCMD_TRANSPARENT | kDocumentOptional, nullptr, nullptr,
                           -1,        nullptr};

/// What a command does to its document besides its work: lock, undo step, marks.
class DocumentFrame {
public:
    DocumentFrame(DocumentManager& documents, Document& document, const Command& command)
        : m_documents(documents), m_document(document), m_isStep(!command.has(HXCMD_NOUNDOMARK)),
          m_transactions(document.transactionManager()->numActiveTransactions()) {
        m_documents.lockDocument(&m_document, kWrite);
        if (m_document.isQuiescent()) {
            m_document.undo().beginCommand();
        }
        m_document.commands().push_back(command.global);
        if (m_isStep) {
            journal(*m_document.database()).beginGroup(command.global);
        }
    }
    ~DocumentFrame() {
        if (m_isStep) {
            journal(*m_document.database()).endGroup();
        }
        m_document.commands().pop_back();
        if (m_document.isQuiescent()) {
            m_document.undo().endCommand();
        }
        m_documents.unlockDocument(&m_document);
    }
    DocumentFrame(const DocumentFrame&) = delete;
    DocumentFrame& operator=(const DocumentFrame&) = delete;
    int transactionsBefore() const { return m_transactions; }

private:
    DocumentManager& m_documents;
    Document& m_document;
    bool m_isStep;
    int m_transactions;
};

std::wstring widened(const char* text) { return {text, text + std::char_traits<char>::length(text)}; }

}  // namespace

void CommandProcessor::reset() {
    m_last.clear();
    m_quit = false;
}

void CommandProcessor::runAll() {
    while (runNext()) {
    }
}

/// The document that the next source speaks to becomes the current one.
void CommandProcessor::followSource() {
    DocumentManager& documents = m_editor.documents();
    const InputSource* source = m_editor.input().source();
    HxApDocument* wanted = source && source->document() ? source->document() : documents.active();
    if (!wanted) {
        return;
    }
    if (source && source->document() && source->activates()) {
        documents.activateDocument(wanted);
    } else {
        documents.setCurDocument(wanted);
    }
}

bool CommandProcessor::runNext() {
    m_editor.idle();
    Input& input = m_editor.input();
    if (m_quit || input.isDry()) {
        followSource();
        return false;
    }
    input.takeSent(false);
    followSource();
    const bool interactive = input.isInteractive();
    InputRequest request;
    request.prompt = kPrompt;
    Token token;
    if (!input.next(request, token)) {
        return false;
    }
    if (token.interrupted) {
        return !m_quit;
    }
    std::wstring typed = token.text;
    if (typed.empty() && interactive) {
        typed = m_last;
    }
    if (!typed.empty() && !token.cancels) {
        runTyped(typed);
    }
    return !m_quit;
}

void CommandProcessor::runTyped(const std::wstring& typed) {
    const std::wstring name = typed.substr(typed.front() == kTransparent ? 1 : 0);
    if (const Command* found = m_editor.commands().find(name)) {
        const Command command = *found;
        m_last = command.global;
        execute(command, command.function);
    } else if (const SystemVariable* variable = findSystemVariable(name.c_str())) {
        execute(kSetVariable, [variable] { askSystemVariable(*variable); });
    } else {
        unknown(name);
    }
}

void CommandProcessor::unknown(const std::wstring& typed) {
    const std::wstring like = m_editor.commands().suggestion(typed);
    m_editor.failure(L"Unknown command \"" + typed + L"\". " +
                     (like.empty() ? L"Check the spelling, or load the module that brings it (HRX Load)."
                                   : L"Did you mean " + like + L"?"));
}

bool CommandProcessor::runTransparent(const std::wstring& answer, AnswerEnd end) {
    if (answer.size() < 2 || answer.front() != kTransparent) {
        return false;
    }
    const std::size_t blank = end == AnswerEnd::line ? answer.find(L' ') : std::wstring::npos;
    const std::wstring name = answer.substr(1, blank == std::wstring::npos ? blank : blank - 1);
    const Command* found = m_editor.commands().find(name);
    const SystemVariable* variable = found ? nullptr : findSystemVariable(name.c_str());
    if (!found && !variable) {
        if (end == AnswerEnd::line) {
            return false;
        }
        unknown(name);
        return true;
    }
    if (blank != std::wstring::npos) {
        m_editor.input().unread(answer.substr(blank + 1));
    }
    const Command command = found ? *found : kSetVariable;
    const std::wstring outer = m_running.empty() ? L"the dialogue" : m_running.back().name;
    if (!command.has(HXCMD_TRANSPARENT)) {
        m_editor.failure(command.global + L" can not run inside of another command: end " + outer +
                         L" first.");
        return true;
    }
    execute(
        command,
        found ? std::function<void()>(command.function) : [variable] { askSystemVariable(*variable); });
    m_editor.console().message(L"Resuming " + outer + L".");
    return true;
}

void CommandProcessor::fail(const std::wstring& message) {
    m_editor.failure(message);
    if (!m_running.empty()) {
        m_running.back().failed = true;
    }
}

std::wstring CommandProcessor::runningNames() const {
    std::wstring names;
    for (const Running& running : m_running) {
        names += (names.empty() ? L"" : L"'") + running.name;
    }
    return names;
}

/// Runs the body; whatever it throws ends here.
CommandProcessor::Outcome CommandProcessor::perform(const std::function<void()>& body) {
    const std::wstring name = m_running.back().name;
    try {
        body();
    } catch (const HxErrorStatusException& error) {
        fail(name + L" was stopped: " + Hx::errorText(error.status()) + L".");
    } catch (const std::exception& error) {
        fail(name + L" was stopped: " + widened(error.what()) + L".");
    }
    if (m_running.back().failed) {
        return Outcome::failed;
    }
    if (m_editor.cancelled && m_editor.input().ranDry()) {
        m_editor.failure(name + L" was cancelled: the script ended before its last question was answered.");
    }
    return m_editor.cancelled ? Outcome::cancelled : Outcome::ended;
}

void CommandProcessor::execute(const Command& command, const std::function<void()>& body) {
    Document* document =
        command.has(HXCMD_SESSION | kStandsForUser) ? nullptr : m_editor.documents().current();
    if (!document && !command.has(HXCMD_SESSION | kDocumentOptional | kStandsForUser)) {
        m_editor.failure(command.global + L" needs a drawing, and none is open: use NEW or OPEN first.");
        return;
    }
    std::optional<DocumentFrame> frame;
    if (document) {
        frame.emplace(m_editor.documents(), *document, command);
    }
    const Document* const began = m_editor.documents().current();
    m_count += m_running.empty() ? 1 : 0;
    m_running.push_back({command.global, document});
    m_editor.cancelled = false;
    m_editor.takeInitGet();
    if (Document* current = m_editor.documents().current();
        current && !command.has(HXCMD_TRANSPARENT | HXCMD_USEPICKSET)) {
        selectionOf(*current->database()).clear();
    }
    const wchar_t* name = command.global.c_str();
    tellEditorReactors([name](HxEditorReactor& r) { r.commandWillStart(name); });
    Outcome outcome = perform(body);
    if (document && closeLeftovers(*document, frame->transactionsBefore())) {
        outcome = Outcome::failed;
    }
    tellOutcome(outcome, name, began);
    m_running.pop_back();
    m_editor.cancelled = false;
}

/// Reactors find the same document current at the end of a command as at its beginning, if it is still open.
void CommandProcessor::tellOutcome(Outcome outcome, const wchar_t* name, const Document* began) {
    DocumentManager& documents = m_editor.documents();
    Document* const now = documents.current();
    Document* const document = documents.find(began);
    if (document) {
        documents.setCurDocument(document);
    }
    tellEditorReactors([outcome, name](HxEditorReactor& r) {
        switch (outcome) {
        case Outcome::ended: r.commandEnded(name); break;
        case Outcome::cancelled: r.commandCancelled(name); break;
        case Outcome::failed: r.commandFailed(name); break;
        }
    });
    if (document && documents.find(now)) {
        documents.setCurDocument(now);
    }
}

/// A command that forgets a transaction or a record must not hold up the next one.
bool CommandProcessor::closeLeftovers(Document& document, int transactionsBefore) {
    HxDbTransactionManager& transactions = *document.transactionManager();
    const std::wstring& name = m_running.back().name;
    const int left = transactions.numActiveTransactions() - transactionsBefore;
    if (left > 0) {
        m_editor.failure(name + L" left a transaction open; what it changed there is taken back.");
    }
    for (int i = 0; i < left; ++i) {
        transactions.abortTransaction();
    }
    const std::wstring open =
        m_running.size() == 1 ? newlyOpenObjects(*document.database(), document.knownOpen()) : std::wstring();
    if (!open.empty()) {
        m_editor.failure(name + L" left objects open, which others can not change now: " + open + L".");
    }
    return left > 0 || !open.empty();
}

}  // namespace korvex
