// Small drawings as group codes, written by tests.
#pragma once

#include <map>
#include <string>

namespace korvex::test {

/// Builds a drawing of release 2000 with one layout, "Layout1". Texts are in UTF-16 escapes where they are
/// not ASCII. Layers of entities are added as they are named.
class SmallDrawing {
public:
    /// The body of a block, of model space or of the paper.
    using Body = std::string;

    explicit SmallDrawing(std::string currentLayer = "0") : m_currentLayer(std::move(currentLayer)) {
        m_layers["0"] = "10";
    }

    Body line(const std::string& layer, double x1, double y1, double x2, double y2) {
        return entity("LINE", "AcDbLine", layer) + point(10, x1, y1) + point(11, x2, y2);
    }
    /// `scale` in both directions, `rotation` in degrees.
    Body insert(const std::string& block, const std::string& layer, double x, double y, double scale = 1,
                double rotation = 0) {
        return entity("INSERT", "AcDbBlockReference", layer) + group(2, block) + point(10, x, y) +
               group(41, scale) + group(42, scale) + group(43, scale) + group(50, rotation);
    }
    /// A square on paper with sides of `size` around a centre, which shows model space around another centre
    /// in its own scale. Number 1 is the sheet's own.
    Body viewport(int number, double x, double y, double size, double viewX, double viewY) {
        return entity("VIEWPORT", "AcDbViewport", "0", true) + point(10, x, y) + group(40, size) +
               group(41, size) + group(68, number) + group(69, number) + point2(12, viewX, viewY) +
               point2(13, 0, 0) + point2(14, 10, 10) + point2(15, 10, 10) + point(16, 0, 0, 1) +
               point(17, 0, 0) + group(42, 50) + group(43, 0) + group(44, 0) + group(45, size) +
               group(50, 0) + group(51, 0) + group(72, 100) + group(90, 32800);
    }
    /// Layers have plot styles of their own: "Normal" at first; "Screened" is another one.
    void useNamedPlotStyles() { m_namedPlotStyles = true; }
    /// Release 2000 unless told otherwise; "AC1027" and the like.
    void useVersion(const std::string& version) { m_version = version; }
    /// Dashes and gaps of these lengths.
    void linetype(const std::string& name, double dash, double gap) {
        m_linetypes += record("LTYPE", newHandle(), "5", "AcDbLinetypeTableRecord", name) + group(3, "") +
                       group(72, 65) + group(73, 2) + group(40, dash + gap) + group(49, dash) + group(74, 0) +
                       group(49, -gap) + group(74, 0);
    }
    /// A layer that nothing need be on, with extended data.
    void layer(const std::string& name, const std::string& extendedData = "") {
        if (m_layers.find(name) == m_layers.end()) {
            m_layers[name] = newHandle();
        }
        m_extendedData[name] = extendedData;
    }
    const std::string& layerHandle(const std::string& name) const { return m_layers.at(name); }
    void application(const std::string& name) {
        m_applications += record("APPID", newHandle(), "9", "AcDbRegAppTableRecord", name);
    }
    /// A layer state, or whatever else is in their dictionary: `groups` stand behind the record's head.
    void state(const std::string& name, const std::string& groups, const std::string& type = "XRECORD") {
        const std::string handle = newHandle();
        m_stateNames += group(3, name) + group(360, handle);
        m_states += group(0, type) + group(5, handle) + group(330, kStates) + groups;
    }
    void model(const Body& body) { m_model += body; }
    void paper(const Body& body) { m_paper += body; }
    void block(const std::string& name, const Body& body) {
        addBlock(name, 0, "", body, newHandle(), newHandle());
    }
    /// A block that is another drawing's model space.
    void xref(const std::string& name, const std::string& path) {
        addBlock(name, 4, path, "", newHandle(), newHandle());
    }

    std::string text() {
        std::string blocks = m_blocks;
        std::string records = m_records;
        m_blocks.clear();
        m_records.clear();
        addBlock("*Model_Space", 0, "", "", "1F", "20", "22");
        addBlock("*Paper_Space", 0, "", "", "1B", "1C", "1E");
        blocks = m_blocks + blocks;
        records = m_records + records;
        const std::string all = header() + group(0, "SECTION") + group(2, "TABLES") + tables() +
                                table("BLOCK_RECORD", "1", records) + group(0, "ENDSEC") +
                                section("BLOCKS", blocks) + section("ENTITIES", m_model + m_paper) +
                                section("OBJECTS", objects()) + group(0, "EOF");
        return all;
    }

private:
    static std::string group(int code, const std::string& value) {
        return std::to_string(code) + "\n" + value + "\n";
    }
    static std::string group(int code, int value) { return group(code, std::to_string(value)); }
    static std::string group(int code, double value) { return group(code, std::to_string(value)); }
    static std::string point2(int code, double x, double y) { return group(code, x) + group(code + 10, y); }
    static std::string point(int code, double x, double y, double z = 0) {
        return point2(code, x, y) + group(code + 20, z);
    }
    static std::string section(const std::string& name, const std::string& body) {
        return group(0, "SECTION") + group(2, name) + body + group(0, "ENDSEC");
    }
    std::string newHandle() {
        static const char digits[] = "0123456789ABCDEF";
        std::string text;
        for (int rest = m_nextHandle++; rest > 0; rest /= 16) {
            text.insert(text.begin(), digits[rest % 16]);
        }
        return text;
    }
    Body entity(const char* type, const char* marker, const std::string& layer, bool onPaper = false) {
        if (m_layers.find(layer) == m_layers.end()) {
            m_layers[layer] = newHandle();
        }
        return group(0, type) + group(5, newHandle()) + group(100, "AcDbEntity") +
               (onPaper ? group(67, 1) : "") + group(8, layer) + group(100, marker);
    }
    void addBlock(const std::string& name, int flags, const std::string& path, const Body& body,
                  const std::string& record, const std::string& begin, const std::string& layout = "0") {
        m_records += group(0, "BLOCK_RECORD") + group(5, record) + group(330, "1") +
                     group(100, "AcDbSymbolTableRecord") + group(100, "AcDbBlockTableRecord") +
                     group(2, name) + group(340, layout);
        m_blocks += group(0, "BLOCK") + group(5, begin) + group(330, record) + group(100, "AcDbEntity") +
                    group(8, "0") + group(100, "AcDbBlockBegin") + group(2, name) + group(70, flags) +
                    point(10, 0, 0) + group(3, name) + group(1, path) + body + group(0, "ENDBLK") +
                    group(5, newHandle()) + group(330, record) + group(100, "AcDbEntity") + group(8, "0") +
                    group(100, "AcDbBlockEnd");
    }
    std::string header() const {
        return section("HEADER", group(9, "$ACADVER") + group(1, m_version) + group(9, "$DWGCODEPAGE") +
                                     group(3, "ANSI_1252") + group(9, "$HANDSEED") + group(5, "FFFF") +
                                     group(9, "$CLAYER") + group(8, m_currentLayer) + group(9, "$TILEMODE") +
                                     group(70, 1) + group(9, "$PSTYLEMODE") +
                                     group(290, m_namedPlotStyles ? 0 : 1));
    }
    static std::string table(const std::string& name, const std::string& handle, const std::string& records,
                             const std::string& dictionary = "") {
        const std::string extension =
            group(102, "{ACAD_XDICTIONARY") + group(360, dictionary) + group(102, "}");
        return group(0, "TABLE") + group(2, name) + group(5, handle) + (dictionary.empty() ? "" : extension) +
               group(330, "0") + group(100, "AcDbSymbolTable") + group(70, 8) + records + group(0, "ENDTAB");
    }
    static std::string record(const char* type, const std::string& handle, const char* owner,
                              const char* marker, const std::string& name, int flags = 0) {
        return group(0, type) + group(5, handle) + group(330, owner) + group(100, "AcDbSymbolTableRecord") +
               group(100, marker) + group(2, name) + group(70, flags);
    }
    std::string tables() {
        std::string layers;
        for (const auto& [name, handle] : m_layers) {
            layers += record("LAYER", handle, "2", "AcDbLayerTableRecord", name) + group(62, 7) +
                      group(6, "Continuous") + m_extendedData[name];
        }
        std::string linetypes = m_linetypes;
        const char* const handles[] = {"14", "15", "16"};
        const char* const names[] = {"ByBlock", "ByLayer", "Continuous"};
        for (int i = 0; i < 3; ++i) {
            linetypes += record("LTYPE", handles[i], "5", "AcDbLinetypeTableRecord", names[i]) +
                         group(3, "") + group(72, 65) + group(73, 0) + group(40, 0.0);
        }
        const std::string view = record("VPORT", "29", "8", "AcDbViewportTableRecord", "*Active") +
                                 point2(10, 0, 0) + point2(11, 1, 1) + point2(12, 5, 5) + group(40, 60.0) +
                                 group(41, 1.5);
        return table("VPORT", "8", view) + table("LTYPE", "5", linetypes) +
               table("LAYER", "2", layers, m_states.empty() ? "" : kExtension) +
               table("APPID", "9",
                     record("APPID", "12", "9", "AcDbRegAppTableRecord", "ACAD") + m_applications);
    }
    static std::string layout(const char* handle, const char* name, int order, const char* block) {
        return group(0, "LAYOUT") + group(5, handle) + group(330, "1A") + group(100, "AcDbPlotSettings") +
               group(1, "") + group(100, "AcDbLayout") + group(1, name) + group(70, 1) + group(71, order) +
               group(330, block);
    }
    static std::string plotStyles(const std::string& marker) {
        return group(0, "ACDBDICTIONARYWDFLT") + group(5, "E") + group(330, "C") + marker +
               group(3, "Normal") + group(350, "F") + group(3, "Screened") + group(350, "D") +
               group(100, "AcDbDictionaryWithDefault") + group(340, "F") + group(0, "ACDBPLACEHOLDER") +
               group(5, "F") + group(330, "E") + group(0, "ACDBPLACEHOLDER") + group(5, "D") +
               group(330, "E");
    }
    std::string objects() const {
        const std::string marker = group(100, "AcDbDictionary") + group(281, 1);
        const std::string styleEntry =
            m_namedPlotStyles ? group(3, "ACAD_PLOTSTYLENAME") + group(350, "E") : "";
        return group(0, "DICTIONARY") + group(5, "C") + group(330, "0") + marker + group(3, "ACAD_LAYOUT") +
               group(350, "1A") + styleEntry + (m_namedPlotStyles ? plotStyles(marker) : "") +
               group(0, "DICTIONARY") + group(5, "1A") + group(330, "C") + marker + group(3, "Layout1") +
               group(350, "1E") + group(3, "Model") + group(350, "22") + layout("1E", "Layout1", 1, "1B") +
               layout("22", "Model", 0, "1F") + layerStates(marker);
    }
    std::string layerStates(const std::string& marker) const {
        if (m_states.empty()) {
            return {};
        }
        return group(0, "DICTIONARY") + group(5, kExtension) + group(330, "2") + marker +
               group(3, "ACAD_LAYERSTATES") + group(360, kStates) + group(0, "DICTIONARY") +
               group(5, kStates) + group(330, kExtension) + marker + m_stateNames + m_states;
    }

    static constexpr const char* kExtension = "3A";
    static constexpr const char* kStates = "3B";

    std::string m_version = "AC1015";
    std::string m_currentLayer;
    bool m_namedPlotStyles = false;
    std::map<std::string, std::string> m_layers;  ///< by name, the handles
    std::map<std::string, std::string> m_extendedData;
    std::string m_applications, m_linetypes, m_stateNames, m_states;
    std::string m_blocks, m_records, m_model, m_paper;
    int m_nextHandle = 0x100;
};

}  // namespace korvex::test
