// Whether a drawing's layers are isolated.
#pragma once

class HxDbDatabase;

namespace korvex {

/// The layer state that says how the layers were before; a drawing is isolated exactly as long as it has it.
constexpr wchar_t kIsolationState[] = L"_LAYISO_STATE";

/// Between LAYISO and LAYUNISO, also after saving and opening. One look into a dictionary.
bool isIsolated(HxDbDatabase& database);

}  // namespace korvex
