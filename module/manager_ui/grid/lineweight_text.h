// Lineweights as users read and see them.
#pragma once

#include "hxstring.h"

/// "0.25 mm", or in inches with LWUNITS 0; "Layer", "Block" and the word for the default for -1, -2 and -3. A
/// lineweight is in hundredths of a millimetre; with `isIndex` it is a place in the host's table of
/// lineweights.
CStdStr<wchar_t> StringByLineWeight(int lineweight, bool isIndex);

/// The same where states are edited: "ByLayer" and "ByBlock" in full, inches without a blank.
CStdStr<wchar_t> PrintDisplayLWeightString(int lineweight, bool inInches);

/// Whether users read lineweights in inches (LWUNITS), else in millimetres.
bool lineweightsAreInInches();

/// The pen, in device-independent pixels, with which a cell shows a lineweight: 1 for the special values and
/// thin ones, at most 9.
int getThicknessFromLineweight(int lineweight);
