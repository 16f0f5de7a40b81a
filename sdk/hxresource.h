// Resource libraries: strings by number, in several languages, and Qt resources, apart from the code.
#pragma once

#include "hxtypes.h"

#include <cstddef>

struct HxModule;
/// A loaded module or resource library. Belongs to the host.
using HxModuleHandle = HxModule*;

/// One string of a resource library.
struct HxResourceString {
    std::uint32_t id;
    const wchar_t* text;
};

/// The strings of one language, sorted by id, each id once. Lives as long as the library.
struct HxResourceTable {
    const HxResourceString* strings;
    std::size_t count;
};

/// What a resource library exports, unmangled, under the name "hxresGetTable": the table of a language ("de",
/// "pt_BR"), null when the library lacks it; for the empty language the default table (English), which may
/// not be missing. Qt resources that are compiled in, below ":/<library name without extension>/", come and
/// go with the library.
using HxResourceGetTable = const HxResourceTable* (*)(const wchar_t* language);

/// The library that strings are taken from where no handle is given. Null at start.
HXSDK_API HxModuleHandle hxGetResourceHandle();
/// A handle that is not (or no longer) open counts as null.
HXSDK_API void hxSetResourceHandle(HxModuleHandle handle);

/// Loads a resource library by its full path, or by its file name: beside the module that calls, then in the
/// host's search folders. One that is loaded already is counted. Null when it is missing or is none; the
/// reason is in the host's log.
HXSDK_API HxModuleHandle LoadResourceDll(const wchar_t* name);
/// Takes back one LoadResourceDll; after the last one the library is unloaded, and when it was current, the
/// current handle is null. False for a handle that LoadResourceDll did not give.
HXSDK_API bool hxFreeResourceDll(HxModuleHandle handle);

/// The full path of a module or resource library, of the host's program for null. Returns the number of
/// characters without the closing null; `size` when the path was cut (the text is closed all the same); 0 for
/// an unknown handle. `size` counts characters.
HXSDK_API std::uint32_t hxModuleFileName(HxModuleHandle handle, wchar_t* buffer, std::uint32_t size);

/// Copies a string in the user's language, in the default language where that lacks it, from the current
/// resource handle for null. The language is that of the environment's locale when the library was loaded
/// ("de_AT", then "de"; LANGUAGE may list several). `size` counts characters with the closing null; what does
/// not fit is cut. Returns the number of characters without the null; 0 and an empty text when there is no
/// such string.
HXSDK_API int hxLoadString(HxModuleHandle handle, std::uint32_t id, wchar_t* buffer, int size);

/// Makes a resource library current while it lives; a null handle leaves the current one. Guards must end in
/// the reverse order.
class HxResourceOverride {
public:
    explicit HxResourceOverride(HxModuleHandle handle) : m_previous(hxGetResourceHandle()) {
        if (handle) hxSetResourceHandle(handle);
    }
    ~HxResourceOverride() { hxSetResourceHandle(m_previous); }
    HxResourceOverride(const HxResourceOverride&) = delete;
    HxResourceOverride& operator=(const HxResourceOverride&) = delete;

private:
    HxModuleHandle m_previous;
};
