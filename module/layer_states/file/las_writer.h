// Writing a layer state into a file.
#pragma once

#include "layer_states/records/layer_state_map.h"

#include <string>
#include <unordered_set>
#include <vector>

/// The line of a group code, padded and ended.
using KvLasCode = const char (&)[6];

/// Makes the bytes of a layer-state file.
class KvLasWriter {
public:
    /// Texts are written in this code page.
    explicit KvLasWriter(int codePage) : m_codePage(codePage) {}

    /// Makes room for so many entries; it may be more or fewer.
    void expect(int entries);
    /// Once, before the entries. States of external references are written as those of a layout.
    void begin(const CKvLayerState& state);
    void add(const HxLyStateEntry& entry);

    const std::string& bytes() const { return m_bytes; }
    /// The first name with a line break in it, which a file has no place for; empty without one.
    const CStdStr<wchar_t>& brokenName() const { return m_brokenName; }
    /// The names that reading the file will not give back as they are, each once, in the order of writing.
    std::vector<CStdStr<wchar_t>> changedNames() const;

private:
    void addItem(KvLasCode code, std::int64_t value);
    void addItem(KvLasCode code, const CStdStr<wchar_t>& name);
    void addDoubtful(KvLasCode code, const CStdStr<wchar_t>& text, const CStdStr<wchar_t>& meant);

    int m_codePage;
    std::string m_bytes;
    CStdStr<wchar_t> m_brokenName;
    std::unordered_set<std::wstring> m_doubtful;         ///< texts that may come back otherwise,
    std::vector<const std::wstring*> m_doubtfulInOrder;  ///< the same as they came, and
    std::string m_doubtfulLines;                         ///< a line of each as it is written
};

/// What became of writing a file.
struct KvLasWritten {
    bool isWritten = false;
    CStdStr<wchar_t> brokenName;  ///< not empty: why nothing was written
    CStdStr<wchar_t> reason;      ///< else, why not
    std::vector<CStdStr<wchar_t>> changedNames;
};

/// Writes a state of the map into a file, in the user's ANSI code page. A file that is there is replaced when
/// everything is written, and stays as it was when something fails.
KvLasWritten writeLasFile(const CStdStr<wchar_t>& path, const KvLayerStateMap& states,
                          const CKvLayerState& state);
