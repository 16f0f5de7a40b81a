// Shared libraries that the host opens: modules and resource libraries, where they lie, what they export.
#pragma once

#include "host/base/text.h"
#include "sdk/hxresource.h"

#include <QStringList>

#include <vector>

struct link_map;

/// One open library.
struct HxModule {
    QString path;  ///< full, without symbolic links
    void* handle = nullptr;
    const link_map* map = nullptr;
    /// String tables in the order in which they are asked; the default table is the last.
    std::vector<const HxResourceTable*> tables;
    /// The libraries that LoadResourceDll was called from, once for each call that was not taken back.
    std::vector<const link_map*> loadedBy;
};

namespace korvex {

/// The folders for libraries that are named without one: those of KORVEX_MODULE_PATH (parted by ":"), the
/// program's own, and "module" beside that.
QStringList searchFolders();

/// The library's file: `name` itself when it has a folder, else the first of that name in `folders`. Empty
/// when there is none.
QString findLibrary(const QString& name, const QStringList& folders);

/// Opens a library with its symbols kept to itself. Null when it cannot be opened; `reason` tells why.
HxModule* openLibrary(const QString& path, std::wstring& reason);
/// Takes back the library's meta types, closes it and forgets the handle.
void closeLibrary(HxModule* library);

/// The handle is one of an open library.
bool isLibrary(const HxModule* library);
/// The library open from that path as a resource library; null for none.
HxModule* resourceLibraryOf(const QString& path);
/// All that are open.
std::vector<HxModule*> allLibraries();

/// A function that the library itself exports; those of the libraries below it do not count.
void* exportOf(const HxModule& library, const char* name);

/// The library (or program) that an address lies in, null for none.
const link_map* libraryAt(const void* address);
QString fileOf(const link_map* library);
QString programFile();

}  // namespace korvex
