// Folders, in the order in which they are searched.
#include "layer_states/file/find_in_path.h"

#include "frame/util/system_variable.h"
#include "hxresource.h"

#include <QDir>
#include <QFileInfo>
#include <QString>

namespace {

constexpr char kSearchPath[] = "KORVEXSEARCHPATH";
constexpr wchar_t kDrawingFolder[] = L"DWGPREFIX";
constexpr int kPathSize = 4096;

struct Place {
    const wchar_t* ending;
    const char* folder;
};
constexpr Place kPlaces[] = {
    {L"shx", "Fonts"},    {L"shp", "Fonts"},    {L"dwg", "Template"},
    {L"dwt", "Template"}, {L"dxf", "Template"}, {L"hlp", "Help"},
};

CStdStr<wchar_t> searchPath() {
    CStdStr<wchar_t> folders;
    if (textVariable(QString(kSearchPath).toStdWString().c_str(), folders)) return folders;
    return qEnvironmentVariable(kSearchPath).toStdWString();
}

/// Empty when the folder, or no folder, has it.
CStdStr<wchar_t> fileIn(const QString& folder, const CStdStr<wchar_t>& name) {
    const QFileInfo file(QDir(folder), QString::fromStdWString(name));
    return folder.isEmpty() || !file.isFile() ? L"" : file.absoluteFilePath().toStdWString();
}

QString drawingFolder() {
    CStdStr<wchar_t> folder;
    textVariable(kDrawingFolder, folder);
    return QString::fromStdWString(folder);
}

QString programFolder(const CStdStr<wchar_t>& name) {
    wchar_t program[kPathSize] = {};
    const CStdStr<wchar_t> ending = extensionOf(name);
    for (const Place& place : kPlaces) {
        if (ending.CompareNoCase(place.ending) != 0 || !hxModuleFileName(nullptr, program, kPathSize))
            continue;
        return QFileInfo(QString::fromWCharArray(program)).dir().filePath(place.folder);
    }
    return {};
}

}  // namespace

CStdStr<wchar_t> extensionOf(const CStdStr<wchar_t>& path) {
    return QFileInfo(QString::fromStdWString(path)).suffix().toStdWString();
}

CStdStr<wchar_t> KvFindUserPathInCompletePath(const CStdStr<wchar_t>& folders, const CStdStr<wchar_t>& name) {
    for (const QString& folder : QString::fromStdWString(folders).split(';')) {
        const CStdStr<wchar_t> found = fileIn(folder.trimmed(), name);
        if (!found.empty()) return found;
    }
    return {};
}

CStdStr<wchar_t> KvFindInPath(const CStdStr<wchar_t>& name) {
    if (name.empty() || name.find(L'/') != name.npos) return name;
    CStdStr<wchar_t> found = KvFindUserPathInCompletePath(searchPath(), name);
    if (found.empty()) found = fileIn(drawingFolder(), name);
    if (found.empty()) found = fileIn(programFolder(name), name);
    return found.empty() ? name : found;
}
