// Message boxes and file dialogs for drawings.
#include "host/ui/workbench/window_dialogs.h"

#include "host/ui/workbench/file_choice.h"
#include "sdk/hxdialog.h"

#include <QObject>

namespace korvex {

namespace {

FileChoice openChoice() {
    return {"DrawingFolder",
            QObject::tr("Open Drawing"),
            {QObject::tr("Drawings (*.dxf *.dwg *.dwt)"), QObject::tr("All files (*)")}};
}

FileChoice saveChoice() {
    return {"DrawingFolder", QObject::tr("Save Drawing As"), {QObject::tr("Drawings (*.dxf)")}};
}

}  // namespace

YesNoCancel WindowDialogs::askToSave(const std::wstring& title) {
    const std::wstring question = L"Save changes to \"" + title + L"\"?";
    switch (hxuiMessageBox(m_parent, question.c_str(), nullptr, MB_YESNOCANCEL | MB_ICONQUESTION)) {
    case IDYES: return YesNoCancel::yes;
    case IDNO: return YesNoCancel::no;
    default: return YesNoCancel::cancel;
    }
}

std::vector<std::wstring> WindowDialogs::askFilesToOpen() {
    std::vector<std::wstring> paths;
    for (const QString& path : chooseFilesToOpen(m_parent, openChoice(), true)) {
        paths.push_back(path.toStdWString());
    }
    return paths;
}

std::wstring WindowDialogs::askFileToSave(const std::wstring& current) {
    return chooseFileToSave(m_parent, saveChoice(), QString::fromStdWString(current), "dxf").toStdWString();
}

void WindowDialogs::tellFailure(const std::wstring& text) {
    hxuiMessageBox(m_parent, text.c_str(), nullptr, MB_OK | MB_ICONWARNING);
}

}  // namespace korvex
