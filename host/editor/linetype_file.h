// Linetype files: patterns of dashes, gaps and dots by name.
#pragma once

#include "host/editor/definition_file.h"

namespace korvex {

struct LinetypeDefinition {
    std::wstring name;
    std::wstring description;
    std::vector<double> dashes;  ///< in drawing units: positive a dash, negative a gap, 0 a dot
    int line = 0;                ///< of its name in the file, from 1
};

struct LinetypeFile {
    std::vector<LinetypeDefinition> linetypes;
    std::vector<FileFault> leftOut;  ///< definitions that are right but cannot be loaded
};

/// Longest pattern, in dashes, gaps and dots.
constexpr std::size_t kMostDashes = 12;

/// Reads the text of a linetype file (docs/definition-files.md). False, with the first fault, unless all of
/// it is right.
bool readLinetypes(std::string_view bytes, LinetypeFile& file, FileFault& fault);
/// Reads a linetype file; resources (":/...") too.
bool loadLinetypeFile(const QString& path, LinetypeFile& file, FileFault& fault);

/// The linetype file that comes with the program.
QString ownLinetypeFile();

}  // namespace korvex
