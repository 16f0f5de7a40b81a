// Texts and line samples for lineweights.
#include "lineweight_text.h"

#include "frame/util/resource_text.h"

#include "hxdbsymtb.h"
#include "hxed.h"

#include <algorithm>
#include <cmath>

namespace {

constexpr double kHundredthsPerInch = 2540.0;
constexpr double kHundredthsPerMillimetre = 100.0;
/// A sample is drawn at about three pixels a millimetre, as cells are no taller.
constexpr double kHundredthsPerPixel = 25.0;
constexpr int kThickestSample = 9;

CStdStr<wchar_t> measured(int lineweight, bool inInches, const wchar_t* inches) {
    CStdStr<wchar_t> text;
    if (inInches) {
        text.Format(inches, lineweight / kHundredthsPerInch);
    } else {
        text.Format(L"%.2f mm", lineweight / kHundredthsPerMillimetre);
    }
    return text;
}

}  // namespace

bool lineweightsAreInInches() {
    resbuf units = {};
    return hxedGetVar(L"LWUNITS", &units) == RTNORM && units.resval.rint != 1;
}

CStdStr<wchar_t> StringByLineWeight(int lineweight, bool isIndex) {
    if (isIndex) lineweight = HxDb::lineWeightByIndex(static_cast<signed char>(lineweight));
    switch (lineweight) {
    case HxDb::kLnWtByLayer: return L"Layer";
    case HxDb::kLnWtByBlock: return L"Block";
    case HxDb::kLnWtByLwDefault: return moduleString(kStrLineweightDefault, L"Default");
    default: break;
    }
    return measured(lineweight, lineweightsAreInInches(), L"%1.3f \"");
}

CStdStr<wchar_t> PrintDisplayLWeightString(int lineweight, bool inInches) {
    if (lineweight == HxDb::kLnWtByLayer) return L"ByLayer";
    if (lineweight == HxDb::kLnWtByBlock) return L"ByBlock";
    if (lineweight < 0) return moduleString(kStrLineweightDefault, L"Default");
    return measured(lineweight, inInches, L"%.3f\"");
}

int getThicknessFromLineweight(int lineweight) {
    return std::clamp(static_cast<int>(std::lround(lineweight / kHundredthsPerPixel)), 1, kThickestSample);
}
