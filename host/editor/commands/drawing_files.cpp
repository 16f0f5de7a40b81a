// NEW, OPEN, SAVE, SAVEAS, CLOSE and QUIT: drawings come and go, none without being asked about its changes.
#include "host/editor/command_processor.h"
#include "host/editor/commands/command_support.h"
#include "host/editor/commands/host_commands.h"
#include "host/editor/documents.h"
#include "host/editor/editor.h"
#include "host/editor/system_variables.h"
#include "host/editor/user_dialogs.h"

#include <QFileInfo>

namespace korvex {

namespace {

DocumentManager& documents() { return editor().documents(); }

/// An error as the end of a sentence.
std::wstring reason(const std::wstring& error) {
    return error.substr(0, error.find_last_not_of(L'.') + 1) + L".";
}

/// The window's dialogs when files are to be asked for by them; null otherwise.
UserDialogs* fileDialogs() { return integerVariable(L"FILEDIA") != 0 ? editor().dialogs() : nullptr; }

/// What was not done, also in a box when somebody sits before the window. What the user gave up is no
/// failure; the command counts as cancelled.
void refuseAloud(Hx::ErrorStatus status, const std::wstring& message) {
    if (status == Hx::eCancelled) {
        say(message);
        editor().cancelled = true;
        return;
    }
    refuse(message);
    if (UserDialogs* dialogs = editor().dialogs()) {
        dialogs->tellFailure(message);
    }
}

/// Saves under a path, or the drawing's own for "". False with a message when it could not be.
bool save(Document& document, const std::wstring& path) {
    CStdStr<wchar_t> error;
    const Hx::ErrorStatus status = documents().saveDocument(&document, path.c_str(), &error);
    if (status != Hx::eOk) {
        refuseAloud(status,
                    quoted(path.empty() ? document.docTitle() : path) + L" was not saved: " + reason(error));
        return false;
    }
    say(L"Saved " + quoted(document.fileName()) + L".");
    return true;
}

bool saveAs(Document& document) {
    const std::wstring now = document.fileName();
    if (UserDialogs* dialogs = fileDialogs()) {
        const std::wstring path = dialogs->askFileToSave(now.empty() ? document.docTitle() : now);
        return !path.empty() && save(document, path);
    }
    const Answer path = askName({now.empty() ? L"Enter file name to save the drawing as:"
                                             : L"Enter file name to save the drawing as <" + now + L">:"});
    if (path.isCancelled() || (path.isNone() && now.empty())) {
        return false;
    }
    const QFileInfo file(QString::fromStdWString(path.text));
    if (path.isValue() && file.exists() && file.absoluteFilePath().toStdWString() != now &&
        !askYesNo(L"A file of that name exists. Replace it?", false)) {
        say(L"The drawing was not saved.");
        return false;
    }
    return save(document, path.text);
}

bool saveUnderOwnName(Document& document) {
    return *document.fileName() ? save(document, L"") : saveAs(document);
}

void open(const std::wstring& path) {
    HxApDocument* document = nullptr;
    CStdStr<wchar_t> error;
    const Hx::ErrorStatus status = documents().openDocument(path.c_str(), document, &error);
    if (status != Hx::eOk) {
        refuseAloud(status, quoted(path) + L" was not opened: " + reason(error));
        return;
    }
    say(L"Opened " + quoted(document->fileName()) + L".");
}

/// Asks what is to become of unsaved changes. False when the drawing must stay open.
bool mayClose(Document& document) {
    if (!document.database()->isModified()) {
        return true;
    }
    UserDialogs* const dialogs = editor().dialogs();
    switch (dialogs ? dialogs->askToSave(document.docTitle())
                    : askYesNoCancel(L"Save changes to " + quoted(document.docTitle()) + L"?")) {
    case YesNoCancel::yes: return saveUnderOwnName(document);
    case YesNoCancel::no: return true;
    default: return false;
    }
}

}  // namespace

void newCommand() { say(L"New drawing " + quoted(documents().newDocument()->docTitle()) + L"."); }

void openCommand() {
    std::vector<std::wstring> paths;
    if (UserDialogs* dialogs = fileDialogs()) {
        paths = dialogs->askFilesToOpen();
    } else {
        const Answer path = askName({L"Enter name of drawing to open:"});
        if (path.isValue()) {
            paths.push_back(path.text);
        }
    }
    for (const std::wstring& path : paths) {
        open(path);
    }
}

void saveCommand() { saveUnderOwnName(*documents().current()); }
void saveAsCommand() { saveAs(*documents().current()); }

void closeCommand() {
    Document* document = documents().active();
    if (!document) {
        refuse(L"No drawing is open.");
        return;
    }
    const std::wstring title = document->docTitle();
    if (!mayClose(*document)) {
        say(quoted(title) + L" stays open.");
        return;
    }
    documents().closeDocument(document);
    say(L"Closed " + quoted(title) + L".");
}

void quitCommand() {
    for (Document* document : documents().all()) {
        if (!mayClose(*document)) {
            say(L"The host stays: " + quoted(document->docTitle()) + L" has changes.");
            return;
        }
    }
    for (Document* document : documents().all()) {
        documents().closeDocument(document);
    }
    editor().processor().requestQuit();
}

}  // namespace korvex
