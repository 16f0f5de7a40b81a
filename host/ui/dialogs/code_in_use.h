// Code of modules that waits in dialogs: it must not be unloaded under them.
#pragma once

#include <QString>

struct link_map;

namespace korvex {

/// Lets the dynamic linker ask before it unloads a module. Again changes nothing.
void watchCode();

/// The library that an object's class lies in. The object has virtual functions.
const link_map* libraryOfClass(const void* object);

/// While one lives, the module that the library is does not go.
class ModalUse {
public:
    /// `window` names the dialog for messages.
    ModalUse(const link_map* library, const QString& window);
    ~ModalUse();
    ModalUse(const ModalUse&) = delete;
    ModalUse& operator=(const ModalUse&) = delete;
};

}  // namespace korvex
