// External references: attaching, detaching and reading again.
#pragma once

#include "sdk/hxdbdatabase.h"

#include <string>

namespace korvex {

// The reason of a failure is in `error`, without a full stop.

Hx::ErrorStatus attachXref(HxDbDatabase& host, const std::wstring& path, const std::wstring& name,
                           bool overlay, HxDbObjectId& block, std::wstring& error);
Hx::ErrorStatus detachXref(HxDbDatabase& host, HxDbObjectId block);
Hx::ErrorStatus reloadXref(HxDbDatabase& host, HxDbObjectId block, std::wstring& error);

}  // namespace korvex
