// Resource libraries: loading and counting them, strings by number in the user's language.
#include "host/base/resource_library.h"

#include "host/base/language.h"
#include "host/base/library.h"
#include "host/base/log.h"
#include "sdk/hxmodule.h"

#include <QFileInfo>

#include <algorithm>
#include <string>

namespace {

using korvex::Severity;

HxModuleHandle g_current = nullptr;

bool isSound(const HxResourceTable& table) {
    for (std::size_t i = 0; i < table.count; ++i) {
        if (!table.strings[i].text || (i > 0 && table.strings[i - 1].id >= table.strings[i].id)) {
            return false;
        }
    }
    return true;
}

/// Collects the tables of the user's languages and the default one; what is wrong, empty for nothing.
std::wstring collectTables(HxModule& library) {
    const auto getTable = reinterpret_cast<HxResourceGetTable>(korvex::exportOf(library, "hxresGetTable"));
    if (!getTable) {
        return L"it exports no hxresGetTable, so it is no resource library";
    }
    std::vector<std::wstring> languages = korvex::preferredLanguages();
    languages.emplace_back();
    for (const std::wstring& language : languages) {
        const HxResourceTable* const table = getTable(language.c_str());
        if (table && !isSound(*table)) {
            return L"its strings for the language \"" + language +
                   L"\" are not in the order of their numbers";
        }
        if (table) {
            library.tables.push_back(table);
        } else if (language.empty()) {
            return L"it has no strings in the default language";
        }
    }
    return {};
}

HxModuleHandle refuse(const std::wstring& name, const std::wstring& reason) {
    korvex::log(Severity::Error, L"The resource library \"" + name + L"\" cannot be loaded: " + reason +
                                     L". Install the module again.");
    return nullptr;
}

/// Null, with what is wrong, when the file is no resource library.
HxModule* openResources(const QString& path, std::wstring& wrong) {
    HxModule* const library = korvex::openLibrary(path, wrong);
    if (library) {
        wrong = collectTables(*library);
        if (!wrong.empty()) {
            korvex::closeLibrary(library);
        }
    }
    return wrong.empty() ? library : nullptr;
}

HxModuleHandle loadResources(const wchar_t* name, const link_map* caller) {
    const std::wstring given(korvex::viewOf(name));
    const QStringList folders = QStringList(QFileInfo(korvex::fileOf(caller)).path())
                                << korvex::searchFolders();
    const QString path = korvex::findLibrary(korvex::toQString(given), folders);
    if (path.isEmpty()) {
        return refuse(given, L"there is no such file in " + korvex::toWide(folders.join(", ")));
    }
    std::wstring wrong;
    HxModule* const there = korvex::resourceLibraryOf(path);
    HxModule* const library = there ? there : openResources(path, wrong);
    if (!library) {
        return refuse(given, wrong);
    }
    library->loadedBy.push_back(caller);
    return library;
}

bool freeResources(HxModuleHandle library, const link_map* caller) {
    if (!korvex::isLibrary(library) || library->loadedBy.empty()) {
        return false;
    }
    auto& loadedBy = library->loadedBy;
    const auto own = std::find(loadedBy.begin(), loadedBy.end(), caller);
    loadedBy.erase(own == loadedBy.end() ? loadedBy.end() - 1 : own);
    if (loadedBy.empty()) {
        g_current = g_current == library ? nullptr : g_current;
        korvex::closeLibrary(library);
    }
    return true;
}

const wchar_t* findString(const HxModule& library, std::uint32_t id) {
    for (const HxResourceTable* table : library.tables) {
        const HxResourceString* const end = table->strings + table->count;
        const HxResourceString* const found = std::lower_bound(
            table->strings, end, id,
            [](const HxResourceString& string, std::uint32_t wanted) { return string.id < wanted; });
        if (found != end && found->id == id) {
            return found->text;
        }
    }
    return nullptr;
}

}  // namespace

namespace korvex {

void freeResourcesOf(const link_map* library) {
    for (HxModule* resources : allLibraries()) {
        const auto count = std::count(resources->loadedBy.begin(), resources->loadedBy.end(), library);
        for (auto i = count; i > 0; --i) {
            freeResources(resources, library);
        }
    }
}

const wchar_t* resourceString(HxModuleHandle handle, std::uint32_t id) {
    const HxModuleHandle library = handle ? handle : g_current;
    return isLibrary(library) ? findString(*library, id) : nullptr;
}

}  // namespace korvex

HxModuleHandle hxGetResourceHandle() { return g_current; }

void hxSetResourceHandle(HxModuleHandle handle) {
    g_current = korvex::isLibrary(handle) ? handle : nullptr;  // it may have been unloaded meanwhile
}

// These two look at where they return to: they must stay calls of their own.
__attribute__((noinline)) HxModuleHandle LoadResourceDll(const wchar_t* name) {
    return loadResources(name, korvex::libraryAt(__builtin_return_address(0)));
}

__attribute__((noinline)) bool hxFreeResourceDll(HxModuleHandle handle) {
    return freeResources(handle, korvex::libraryAt(__builtin_return_address(0)));
}

std::uint32_t hxModuleFileName(HxModuleHandle handle, wchar_t* buffer, std::uint32_t size) {
    if (handle && !korvex::isLibrary(handle)) {
        korvex::copyText({}, buffer, size);
        return 0;
    }
    const std::wstring path = korvex::toWide(handle ? handle->path : korvex::programFile());
    korvex::copyText(path, buffer, size);
    return path.size() < size ? static_cast<std::uint32_t>(path.size()) : size;
}

int hxLoadString(HxModuleHandle handle, std::uint32_t id, wchar_t* buffer, int size) {
    const wchar_t* const text = korvex::resourceString(handle, id);
    const std::size_t room = size > 0 ? static_cast<std::size_t>(size) : 0;
    return static_cast<int>(korvex::copyText(korvex::viewOf(text), buffer, room));
}

bool hxDisableThreadLibraryCalls(HxModuleHandle module) { return korvex::isLibrary(module); }
