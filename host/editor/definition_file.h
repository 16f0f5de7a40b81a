// Text files of definitions (colour books, linetypes): read as a whole, cut into lines; what is wrong in
// them.
#pragma once

#include <QString>

#include <string>
#include <string_view>
#include <vector>

namespace korvex {

/// What is wrong with a file: where, what, and what to do about it.
struct FileFault {
    std::wstring file;  ///< its path
    int line = 0;       ///< from 1; 0: the file as a whole
    std::wstring what;
    std::wstring remedy;

    /// One message of all of it.
    std::wstring text() const;
};

/// A line that says something, without blanks at its ends.
struct DefinitionLine {
    int number = 0;  ///< from 1
    std::wstring text;
};

/// All bytes of a file; resources (":/...") too. False when it cannot be read or is too long for a file of
/// definitions.
bool readDefinitionFile(const QString& path, std::string& bytes, FileFault& fault);

/// Cuts UTF-8 text, with or without byte order mark, into its lines; empty ones and comments (";") are left
/// out. False for other encodings and for control characters.
bool cutIntoLines(std::string_view bytes, std::vector<DefinitionLine>& lines, FileFault& fault);

/// Without blanks at both ends.
std::wstring_view trimmed(std::wstring_view text);

}  // namespace korvex
