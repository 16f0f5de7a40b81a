// Colour books: named colours on pages, in the program itself and in the user's folder.
#pragma once

#include "host/editor/definition_file.h"
#include "sdk/hxcm.h"
#include "sdk/hxdbdatabase.h"

#include <optional>

namespace korvex {

struct BookColor {
    std::wstring name;
    std::uint8_t red = 0;
    std::uint8_t green = 0;
    std::uint8_t blue = 0;
};

struct ColorBookPage {
    std::wstring title;
    std::vector<BookColor> colors;
};

struct ColorBook {
    std::wstring name;
    std::wstring file;
    std::vector<ColorBookPage> pages;

    /// Names compare without case. Null when there is none.
    const BookColor* find(std::wstring_view colorName) const;
    /// A colour of the book, with the names of both.
    HxCmColor color(const BookColor& entry) const;
};

/// The books that there are, and the files that could not be read as one.
struct ColorBooks {
    std::vector<ColorBook> books;
    std::vector<FileFault> faults;

    /// Names compare without case. Null when there is none.
    const ColorBook* find(std::wstring_view bookName) const;
};

/// The extension of book files, without a dot.
constexpr char kColorBookExtension[] = "cbk";

/// Reads the text of a book file (docs/definition-files.md). False, with the first fault, unless all of it is
/// right.
bool readColorBook(std::string_view bytes, ColorBook& book, FileFault& fault);

/// Where the user's own books are: "color-books" in the profile folder. It need not exist.
QString colorBookFolder();

/// The program's books, then those of the user's folder by file name, read anew at each call. A book whose
/// name another one has already is a fault.
ColorBooks loadColorBooks();

/// The colour of that name: of the book, else one that a layer of the drawing has. Names compare without
/// case.
std::optional<HxCmColor> findBookColor(HxDbDatabase& database, const std::wstring& book,
                                       const std::wstring& name);

}  // namespace korvex
