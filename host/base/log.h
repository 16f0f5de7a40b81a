// The host's log: what goes wrong beside the way, for whoever shows or keeps it.
#pragma once

#include <functional>
#include <string>

namespace korvex {

enum class Severity { Note, Warning, Error };

using LogHook = std::function<void(Severity, const std::wstring& message)>;

/// Hands a message to the hook. Without one, the last hundred messages wait for it. May be called from any
/// thread; the hook then runs in it.
void log(Severity severity, const std::wstring& message);

/// Sets the hook (none for an empty one) and hands it what has been waiting.
void setLogHook(const LogHook& hook);

}  // namespace korvex
