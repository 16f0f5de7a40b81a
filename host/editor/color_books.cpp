// Colour books: reading their files, finding colours in them.
#include "host/editor/color_books.h"

#include "host/base/log.h"
#include "host/base/settings_store.h"
#include "host/db/kernel/text_fold.h"
#include "host/editor/number_text.h"
#include "sdk/hxdbsymtb.h"

#include <QDir>

#include <memory>
#include <set>

// Resources of a library are registered by a function that must be called by name, outside of namespaces.
static void registerResources() { Q_INIT_RESOURCE(color_books); }

namespace korvex {

namespace {

constexpr std::size_t kLongestName = 100;
constexpr std::wstring_view kBookMark = L"book:";
constexpr std::wstring_view kPageMark = L"page:";

bool startsWith(std::wstring_view text, std::wstring_view start) {
    return text.substr(0, start.size()) == start;
}

/// Digits only, 0 to 255.
bool readByte(std::wstring_view text, std::uint8_t& value) {
    int number = 0;
    const bool isNumber = !text.empty() && text.size() <= 3 &&
                          text.find_first_not_of(L"0123456789") == std::wstring_view::npos &&
                          readInteger(text, number);
    if (isNumber && number <= 255) {
        value = static_cast<std::uint8_t>(number);
        return true;
    }
    return false;
}

/// "255,128,0"
bool readRgb(std::wstring_view text, BookColor& color) {
    const std::size_t first = text.find(L',');
    const std::size_t second = first == std::wstring_view::npos ? first : text.find(L',', first + 1);
    return second != std::wstring_view::npos && readByte(text.substr(0, first), color.red) &&
           readByte(text.substr(first + 1, second - first - 1), color.green) &&
           readByte(text.substr(second + 1), color.blue);
}

/// Reads a book line by line, up to the first fault.
class BookReader {
public:
    BookReader(ColorBook& book, FileFault& fault) : m_book(book), m_fault(fault) {}

    bool read(const std::vector<DefinitionLine>& lines) {
        for (const DefinitionLine& line : lines) {
            m_fault.line = line.number;
            if (!readLine(line.text)) {
                return false;
            }
        }
        m_fault.line = 0;
        if (m_book.name.empty()) {
            return fail(L"This is no color book.", L"Begin it with a line such as \"book: My Colors\".");
        }
        return pageIsFull(lines.back().number) && hasPages();
    }

private:
    bool readLine(std::wstring_view line) {
        if (startsWith(line, kBookMark)) {
            return readBookName(trimmed(line.substr(kBookMark.size())));
        }
        if (m_book.name.empty()) {
            return fail(L"The first line of a color book is its name.",
                        L"Begin the file with a line such as \"book: My Colors\".");
        }
        if (startsWith(line, kPageMark)) {
            return readPageTitle(trimmed(line.substr(kPageMark.size())));
        }
        return readColor(line);
    }

    bool readBookName(std::wstring_view name) {
        if (!m_book.name.empty()) {
            return fail(L"This is a second \"book:\" line.", L"Put each book into a file of its own.");
        }
        m_book.name = name;
        return isName(name, L"book");
    }

    bool readPageTitle(std::wstring_view title) {
        if (!isName(title, L"page") || !pageIsFull(m_fault.line)) {
            return false;
        }
        if (!m_titles.insert(foldName(title)).second) {
            return fail(L"There is a page \"" + std::wstring(title) + L"\" already.",
                        L"Give each page a title of its own.");
        }
        m_book.pages.push_back({std::wstring(title), {}});
        return true;
    }

    bool readColor(std::wstring_view line) {
        BookColor color;
        const std::size_t blank = line.find_last_of(L" \t");
        const std::wstring_view rgb = blank == std::wstring_view::npos ? line : line.substr(blank + 1);
        if (!readRgb(rgb, color)) {
            return fail(L"\"" + std::wstring(line) + L"\" does not end with a color.",
                        L"Write a name and red,green,blue, each from 0 to 255: \"Sunset 255,128,0\".");
        }
        if (m_book.pages.empty()) {
            return fail(L"This color is on no page.",
                        L"Put a line such as \"page: Reds\" before the first color.");
        }
        color.name = blank == std::wstring_view::npos ? L"" : trimmed(line.substr(0, blank));
        if (!isName(color.name, L"color")) {
            return false;
        }
        if (!m_names.insert(foldName(color.name)).second) {
            return fail(L"There is a color \"" + color.name + L"\" already in this book.",
                        L"Give each color a name of its own.");
        }
        m_book.pages.back().colors.push_back(std::move(color));
        return true;
    }

    bool isName(std::wstring_view name, const wchar_t* ofWhat) {
        if (name.empty()) {
            return fail(std::wstring(L"This ") + ofWhat + L" has no name.", L"Write one.");
        }
        if (name.size() > kLongestName) {
            return fail(std::wstring(L"The name of this ") + ofWhat + L" is longer than 100 characters.",
                        L"Shorten it.");
        }
        if (name.find(L'$') != std::wstring_view::npos) {
            return fail(std::wstring(L"The name of this ") + ofWhat + L" has a \"$\" in it.",
                        L"Choose another name: drawings part book and color by this character.");
        }
        return true;
    }

    /// The page that ends here has colours.
    bool pageIsFull(int line) {
        m_fault.line = line;
        return m_book.pages.empty() || !m_book.pages.back().colors.empty() ||
               fail(L"Page \"" + m_book.pages.back().title + L"\" has no colors.",
                    L"Add some, or remove the page.");
    }

    bool hasPages() {
        return !m_book.pages.empty() ||
               fail(L"This book has no colors.", L"Add a line such as \"page: Reds\" and colors behind it.");
    }

    bool fail(std::wstring what, std::wstring remedy) {
        m_fault.what = std::move(what);
        m_fault.remedy = std::move(remedy);
        return false;
    }

    ColorBook& m_book;
    FileFault& m_fault;
    std::set<std::wstring> m_titles;
    std::set<std::wstring> m_names;
};

bool loadBook(const QString& path, const ColorBooks& others, ColorBook& book, FileFault& fault) {
    std::string bytes;
    if (!readDefinitionFile(path, bytes, fault) || !readColorBook(bytes, book, fault)) {
        return false;
    }
    book.file = fault.file;
    if (const ColorBook* const other = others.find(book.name)) {
        fault.line = 0;
        fault.what = L"The color book \"" + book.name + L"\" is there already, from " +
                     quotedPath(toQString(other->file)) + L".";
        fault.remedy = L"Give this one another name in its \"book:\" line, or remove it.";
        return false;
    }
    return true;
}

void loadFolder(const QString& folder, ColorBooks& all) {
    const QDir dir(folder);
    const QStringList files =
        dir.entryList({QStringLiteral("*.") + kColorBookExtension}, QDir::Files | QDir::Readable, QDir::Name);
    for (const QString& name : files) {
        ColorBook book;
        FileFault fault;
        if (loadBook(dir.filePath(name), all, book, fault)) {
            all.books.push_back(std::move(book));
        } else {
            all.faults.push_back(std::move(fault));
        }
    }
}

std::optional<HxCmColor> findColorOfLayers(HxDbDatabase& database, const std::wstring& book,
                                           const std::wstring& name) {
    const HxDbObjectPointer<HxDbLayerTable> table(database.layerTableId(), HxDb::kForRead);
    HxDbSymbolTableIterator* steps = nullptr;
    if (!table || table->newIterator(steps) != Hx::eOk) {
        return {};
    }
    const std::unique_ptr<HxDbSymbolTableIterator> owner(steps);
    for (; !steps->done(); steps->step()) {
        const HxDbObjectPointer<HxDbLayerTableRecord> layer(steps->getRecordId(), HxDb::kForRead);
        if (layer && layer->color().isFromBook() && equalNames(layer->color().bookName(), book) &&
            equalNames(layer->color().colorName(), name)) {
            return layer->color();
        }
    }
    return {};
}

}  // namespace

const BookColor* ColorBook::find(std::wstring_view colorName) const {
    for (const ColorBookPage& page : pages) {
        for (const BookColor& color : page.colors) {
            if (equalNames(color.name, colorName)) {
                return &color;
            }
        }
    }
    return nullptr;
}

HxCmColor ColorBook::color(const BookColor& entry) const {
    HxCmColor color = HxCmColor::byRgb(entry.red, entry.green, entry.blue);
    color.setNames(entry.name.c_str(), name.c_str());
    return color;
}

const ColorBook* ColorBooks::find(std::wstring_view bookName) const {
    for (const ColorBook& book : books) {
        if (equalNames(book.name, bookName)) {
            return &book;
        }
    }
    return nullptr;
}

bool readColorBook(std::string_view bytes, ColorBook& book, FileFault& fault) {
    std::vector<DefinitionLine> lines;
    return cutIntoLines(bytes, lines, fault) && BookReader(book, fault).read(lines);
}

QString colorBookFolder() { return QDir(profileFolder()).filePath(QStringLiteral("color-books")); }

ColorBooks loadColorBooks() {
    registerResources();
    ColorBooks all;
    loadFolder(QStringLiteral(":/korvex/editor/color_books"), all);
    loadFolder(colorBookFolder(), all);
    return all;
}

std::optional<HxCmColor> findBookColor(HxDbDatabase& database, const std::wstring& book,
                                       const std::wstring& name) {
    const ColorBooks all = loadColorBooks();
    const ColorBook* const wanted = all.find(book);
    if (const BookColor* const entry = wanted ? wanted->find(name) : nullptr) {
        return wanted->color(*entry);
    }
    const std::optional<HxCmColor> known = findColorOfLayers(database, book, name);
    if (!known) {
        for (const FileFault& fault : all.faults) {
            log(Severity::Warning, L"A color book is left out. " + fault.text());
        }
    }
    return known;
}

}  // namespace korvex
