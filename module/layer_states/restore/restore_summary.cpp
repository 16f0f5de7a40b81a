#include "layer_states/restore/restore_summary.h"

#include "frame/resource_text.h"

#include <algorithm>

CStdStr<wchar_t> restoreSummary(const KvRestoreResult& result) {
    constexpr int kNamed = 5;
    if (result.refused.isEmpty()) return {};
    CStdStr<wchar_t> names;
    for (int i = 0; i < std::min(result.refused.length(), kNamed); ++i) {
        names += (i == 0 ? L"" : L", ") + result.refused[i];
    }
    if (result.refused.length() > kNamed) {
        CStdStr<wchar_t> more;
        more.Format(moduleString(kStrAndMore).c_str(), names.c_str(), result.refused.length() - kNamed);
        names = more;
    }
    CStdStr<wchar_t> text;
    text.Format(moduleString(kStrRestoreRefused).c_str(), result.refused.length(), result.layers,
                names.c_str());
    return text;
}
