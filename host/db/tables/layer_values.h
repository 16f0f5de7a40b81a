// What values a layer may take.
#pragma once

#include "sdk/hxdbsymtb.h"

#include <string>

namespace korvex {

bool isLinetype(HxDbObjectId id, const HxDbDatabase* database);
/// An entry of the drawing's plot-style dictionary.
bool isPlotStyle(const HxDbDatabase& database, HxDbObjectId id);
/// The name of a plot style; "Normal" for null.
std::wstring plotStyleNameOf(const HxDbDatabase& database, HxDbStub* style);

/// One of the fixed lineweights (0 to 211 hundredths of a millimetre), or the default.
bool isLayerLineWeight(int weight);

/// Whether a layer can have a value: eInvalidInput for one that no layer has, eNotApplicable when the
/// drawing's version has no place for it. A null drawing has place for everything, and so have viewport
/// overrides.
Hx::ErrorStatus colorStatus(const HxDbDatabase* database, const HxCmColor& color);
Hx::ErrorStatus lineWeightStatus(const HxDbDatabase* database, int weight);

/// "0.25 mm"; "Default", "ByLayer" or "ByBlock" for the special values.
std::wstring lineWeightInMillimetres(int weight);

/// Place of a lineweight in the fixed table as viewport overrides store it, and back. Places that stand for
/// no weight of a layer give the default.
int lineWeightPlace(int weight);
int lineWeightAtPlace(long long place);

/// Adds an application's name to the drawing's table unless it is there.
Hx::ErrorStatus registerApplication(HxDbDatabase& database, const wchar_t* name);

}  // namespace korvex
