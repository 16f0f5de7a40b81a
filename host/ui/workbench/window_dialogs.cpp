// Message boxes and file dialogs for drawings.
#include "host/ui/workbench/window_dialogs.h"

#include "sdk/hxdialog.h"
#include "sdk/hxstddlg.h"

#include <QObject>

namespace korvex {

namespace {

constexpr wchar_t kKey[] = L"HxDrawingFileDlg";

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
    HxUiFileDialog files(L"Open Drawing", kKey,
                         {QObject::tr("Drawings (*.dxf *.dwg *.dwt)"), QObject::tr("All files (*)")});
    std::vector<std::wstring> paths;
    for (const QString& path : files.getOpenFiles(m_parent)) {
        paths.push_back(path.toStdWString());
    }
    return paths;
}

std::wstring WindowDialogs::askFileToSave(const std::wstring& current) {
    HxUiFileDialog files(L"Save Drawing As", kKey, {QObject::tr("Drawings (*.dxf)")});
    files.setFileName(QString::fromStdWString(current));
    return files.getSaveFile(m_parent).toStdWString();
}

void WindowDialogs::tellFailure(const std::wstring& text) {
    hxuiMessageBox(m_parent, text.c_str(), nullptr, MB_OK | MB_ICONWARNING);
}

}  // namespace korvex
