// Finding a file by its bare name.
#pragma once

#include "hxstring.h"

/// The full path of a file: in the folders of the host variable KORVEXSEARCHPATH (the environment variable
/// where there is no such one), then in the drawing's folder, then in the program's folder for files of its
/// extension: "Fonts" (.shx, .shp), "Template" (.dwg, .dwt, .dxf), "Help" (.hlp). A name with a folder, and
/// one that is not found, come back as they are.
CStdStr<wchar_t> KvFindInPath(const CStdStr<wchar_t>& name);

/// The full path of a file in the first of some folders, between semicolons, that has it; empty when none
/// has.
CStdStr<wchar_t> KvFindUserPathInCompletePath(const CStdStr<wchar_t>& folders, const CStdStr<wchar_t>& name);

/// What follows the last "." of a path's file name; empty without one.
CStdStr<wchar_t> extensionOf(const CStdStr<wchar_t>& path);
