// Linetype files: a line with name and description, then a line with the pattern.
#include "host/editor/linetype_file.h"

#include "host/base/text.h"
#include "host/db/kernel/text_fold.h"
#include "host/db/tables/record_names.h"
#include "host/editor/number_text.h"

#include <cmath>
#include <map>

// Resources of a library are registered by a function that must be called by name, outside of namespaces.
static void registerResources() { Q_INIT_RESOURCE(linetype_files); }

namespace korvex {

namespace {

constexpr std::size_t kLongestDescription = 255;
constexpr double kLongestDash = 1e6;
constexpr const wchar_t* kFixedLinetypes[] = {L"ByLayer", L"ByBlock", L"Continuous"};

bool isFixed(std::wstring_view name) {
    return std::any_of(std::begin(kFixedLinetypes), std::end(kFixedLinetypes),
                       [name](const wchar_t* fixed) { return equalNames(name, fixed); });
}

/// What stands between commas, without blanks at the ends.
std::vector<std::wstring_view> parts(std::wstring_view text) {
    std::vector<std::wstring_view> all;
    for (;;) {
        const std::size_t comma = text.find(L',');
        all.push_back(trimmed(text.substr(0, comma)));
        if (comma == std::wstring_view::npos) {
            return all;
        }
        text.remove_prefix(comma + 1);
    }
}

/// Reads the lines up to the first fault.
class LinetypeReader {
public:
    LinetypeReader(LinetypeFile& file, FileFault& fault) : m_file(file), m_fault(fault) {}

    bool read(const std::vector<DefinitionLine>& lines) {
        for (const DefinitionLine& line : lines) {
            m_fault.line = line.number;
            const bool isHead = line.text.front() == L'*';
            if (isHead == m_expectsPattern) {
                return failOrder(line.text);
            }
            if (isHead ? !readHead(line) : !readPattern(line.text)) {
                return false;
            }
            m_expectsPattern = isHead;
        }
        if (m_expectsPattern) {
            return fail(L"Linetype \"" + m_next.name + L"\" has no pattern.",
                        L"Add a line such as \"A,6,-3\" behind it.");
        }
        m_fault.line = 0;
        if (m_file.linetypes.empty() && m_file.leftOut.empty()) {
            return fail(
                L"There is no linetype in this file.",
                L"Choose a linetype file: lines \"*NAME,description\", each with a pattern behind it.");
        }
        return true;
    }

private:
    bool failOrder(std::wstring_view line) {
        if (m_expectsPattern) {
            return fail(L"Linetype \"" + m_next.name + L"\" has no pattern before this line.",
                        L"Add a line such as \"A,6,-3\" behind its name.");
        }
        return fail(L"\"" + std::wstring(line.substr(0, 40)) + L"\" belongs to no linetype.",
                    L"Put a line such as \"*DASHED,Dashed __ __\" before it.");
    }

    bool readHead(const DefinitionLine& line) {
        const std::wstring_view text = std::wstring_view(line.text).substr(1);
        const std::size_t comma = text.find(L',');
        m_next = {};
        m_next.line = line.number;
        m_next.name = trimmed(text.substr(0, comma));
        if (comma != std::wstring_view::npos) {
            m_next.description = trimmed(text.substr(comma + 1));
        }
        if (!isValidSymbolName(m_next.name)) {
            return fail(L"\"" + m_next.name + L"\" cannot be a linetype's name.",
                        L"Use 1 to 255 characters, but none of <>/\\\":;?*|=`.");
        }
        if (m_next.description.size() > kLongestDescription) {
            return fail(L"The description of linetype \"" + m_next.name +
                            L"\" is longer than 255 characters.",
                        L"Shorten it.");
        }
        const auto [other, isNew] = m_lines.emplace(foldName(m_next.name), line.number);
        return isNew || fail(L"Linetype \"" + m_next.name + L"\" is in line " +
                                 std::to_wstring(other->second) + L" already.",
                             L"Remove or rename one of the two.");
    }

    bool readPattern(std::wstring_view line) {
        if (line.find(L'[') != std::wstring_view::npos) {
            leaveOut(L"contains shapes or texts ([...]), which cannot be loaded.",
                     L"Use a linetype of dashes, gaps and dots instead.");
            return true;
        }
        std::vector<std::wstring_view> all = parts(line);
        if (all.front() != L"A" && all.front() != L"a") {
            return fail(L"The pattern of linetype \"" + m_next.name + L"\" does not begin with \"A\".",
                        L"Write it as \"A,6,-3\"; there is no other alignment.");
        }
        all.erase(all.begin());
        if (!readDashes(all) || !isPattern()) {
            return false;
        }
        if (isFixed(m_next.name)) {
            leaveOut(L"is one that every drawing has and that cannot be redefined.",
                     L"Give it another name to load it.");
        } else {
            m_file.linetypes.push_back(m_next);
        }
        return true;
    }

    bool readDashes(const std::vector<std::wstring_view>& texts) {
        for (const std::wstring_view text : texts) {
            double dash = 0;
            if (!readReal(text, dash) || std::fabs(dash) > kLongestDash) {
                return fail(L"\"" + std::wstring(text) + L"\" in the pattern of linetype \"" + m_next.name +
                                L"\" is no length.",
                            L"Write a number with a decimal point: above 0 a dash, below 0 a gap, 0 a dot.");
            }
            m_next.dashes.push_back(dash);
        }
        return true;
    }

    bool isPattern() {
        const std::vector<double>& dashes = m_next.dashes;
        if (dashes.size() < 2 || dashes.size() > kMostDashes) {
            return fail(L"The pattern of linetype \"" + m_next.name + L"\" has " +
                            std::to_wstring(dashes.size()) + L" lengths.",
                        L"Give it 2 to 12.");
        }
        if (dashes.front() < 0) {
            return fail(L"The pattern of linetype \"" + m_next.name + L"\" begins with a gap.",
                        L"Begin it with a dash or a dot.");
        }
        if (std::none_of(dashes.begin(), dashes.end(), [](double dash) { return dash < 0; })) {
            return fail(L"The pattern of linetype \"" + m_next.name + L"\" has no gap.",
                        L"Add a length below 0.");
        }
        return true;
    }

    void leaveOut(const std::wstring& why, const std::wstring& remedy) {
        m_file.leftOut.push_back(
            {m_fault.file, m_next.line, L"Linetype \"" + m_next.name + L"\" " + why, remedy});
    }

    bool fail(std::wstring what, std::wstring remedy) {
        m_fault.what = std::move(what);
        m_fault.remedy = std::move(remedy);
        return false;
    }

    LinetypeFile& m_file;
    FileFault& m_fault;
    LinetypeDefinition m_next;
    bool m_expectsPattern = false;
    std::map<std::wstring, int> m_lines;
};

}  // namespace

bool readLinetypes(std::string_view bytes, LinetypeFile& file, FileFault& fault) {
    std::vector<DefinitionLine> lines;
    return cutIntoLines(bytes, lines, fault) && LinetypeReader(file, fault).read(lines);
}

bool loadLinetypeFile(const QString& path, LinetypeFile& file, FileFault& fault) {
    registerResources();
    std::string bytes;
    return readDefinitionFile(path, bytes, fault) && readLinetypes(bytes, file, fault);
}

QString ownLinetypeFile() { return QStringLiteral(":/korvex/editor/linetype_files/korvex.lin"); }

}  // namespace korvex
