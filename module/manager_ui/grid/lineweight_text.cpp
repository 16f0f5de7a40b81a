// Texts and line samples for lineweights.
#include "lineweight_text.h"

#include "frame/resource_text.h"

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
    CStdStr<wchar_t> text;
    if (lineweightsAreInInches()) {
        text.Format(L"%1.3f \"", lineweight / kHundredthsPerInch);
    } else {
        text.Format(L"%1.2f mm", lineweight / kHundredthsPerMillimetre);
    }
    return text;
}

int getThicknessFromLineweight(int lineweight) {
    return std::clamp(static_cast<int>(std::lround(lineweight / kHundredthsPerPixel)), 1, kThickestSample);
}
