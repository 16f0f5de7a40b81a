// Choosing a plot style.
#pragma once

/// Lets the user choose one of the current drawing's named plot styles; `current` (may be null) is marked at
/// first, and so offered when the drawing lacks it and `keepsUnknown` is true. True on OK with the name in
/// `chosen`, made with new[] and the caller's; otherwise `chosen` is null.
bool kvPlotstyleDialog(const wchar_t* current, bool keepsUnknown, wchar_t*& chosen);
