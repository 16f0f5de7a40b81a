// Small drawings for the tests of group codes, built from pairs as they would stand in a file.
#pragma once

#include "host/db/groups/file_scanner.h"

#include <string>
#include <utility>
#include <vector>

namespace korvex::test {

using Pairs = std::vector<std::pair<int, std::string>>;

/// What a binary drawing begins with.
inline std::string binarySentinel() { return std::string("KORVEX. Binary DXF\r\n\x1A\0", 22); }

inline std::string textDrawing(const Pairs& pairs, const char* lineEnd = "\n") {
    std::string out;
    for (const auto& [code, value] : pairs) {
        out += std::to_string(code) + lineEnd + value + lineEnd;
    }
    return out;
}

/// The pairs as the one section of a drawing.
inline Pairs inSection(Pairs pairs) {
    pairs.insert(pairs.begin(), {{0, "SECTION"}, {2, "ENTITIES"}});
    pairs.insert(pairs.end(), {{0, "ENDSEC"}, {0, "EOF"}});
    return pairs;
}

inline std::string headerDrawing(const std::string& version, const std::string& codePage,
                                 const std::string& text = "x") {
    Pairs pairs{{0, "SECTION"}, {2, "HEADER"}};
    if (!version.empty()) {
        pairs.insert(pairs.end(), {{9, "$ACADVER"}, {1, version}});
    }
    if (!codePage.empty()) {
        pairs.insert(pairs.end(), {{9, "$DWGCODEPAGE"}, {3, codePage}});
    }
    const Pairs rest = inSection({{0, "TEXT"}, {1, text}});
    pairs.push_back({0, "ENDSEC"});
    pairs.insert(pairs.end(), rest.begin(), rest.end());
    return textDrawing(pairs);
}

/// What became of a scan: the pieces, or the damage.
struct Scan {
    explicit Scan(const std::string& bytes) : scanner(bytes) {
        if (!scanner.detect(error)) {
            return;
        }
        detected = true;
        joined = scanner.preamble();
        for (FileRecord record; scanner.next(record, error);) {
            records.push_back(record);
            joined += record.slice;
        }
        joined += scanner.trailer();
    }

    FileScanner scanner;
    DrawingError error;
    std::vector<FileRecord> records;
    std::string joined;
    bool detected = false;
};

}  // namespace korvex::test
