// Whether a drawing's layers are isolated.
#pragma once

class HxDbDatabase;

namespace korvex {

/// The layer state that says how the layers were before; a drawing is isolated exactly as long as it has it.
constexpr wchar_t kIsolationState[] = L"_LAYISO_STATE";

/// Between LAYISO and LAYUNISO, also after saving and opening. One look into a dictionary.
bool isIsolated(HxDbDatabase& database);

/// Whether the drawing, which is the working one, says where the user was when it was isolated. Drawings
/// without layout objects (before R2000) cannot.
bool isIsolationPlaceKnown(HxDbDatabase& database);

}  // namespace korvex
