// Looking each name up once.
#include "layer_states/file/names_in_drawing.h"

#include "hxdbdict.h"
#include "hxdbsymtb.h"
#include "hxtext.h"
#include "model/opened_or_held.h"

#include <unordered_map>
#include <unordered_set>

namespace {

constexpr wchar_t kContinuous[] = L"Continuous";
constexpr wchar_t kColorStyle[] = L"Color_";

/// Remembers what was asked before; the last name at once, as it mostly comes again.
template <class LookUp>
class KnownNames {
public:
    explicit KnownNames(LookUp lookUp) : m_lookUp(lookUp) {}

    /// An empty name says nothing and can be used.
    bool isUsable(const CStdStr<wchar_t>& name) {
        if (name.empty() || (m_last && m_last->first == name)) return name.empty() || m_last->second;
        auto found = m_known.find(name);
        if (found == m_known.end()) {
            found = m_known.emplace(name, m_lookUp(name)).first;
            if (!found->second) addUnusable(name);
        }
        m_last = &*found;
        return found->second;
    }
    std::vector<CStdStr<wchar_t>>& unusable() { return m_unusable; }

private:
    /// Once for all its spellings.
    void addUnusable(const CStdStr<wchar_t>& name) {
        if (m_folded.insert(hxutFoldName(name.c_str())).second) m_unusable.push_back(name);
    }

    LookUp m_lookUp;
    std::unordered_map<std::wstring, bool> m_known;
    const std::pair<const std::wstring, bool>* m_last = nullptr;
    std::vector<CStdStr<wchar_t>> m_unusable;
    std::unordered_set<std::wstring> m_folded;
};

bool isColorStyle(const CStdStr<wchar_t>& name) {
    const int prefix = static_cast<int>(std::wcslen(kColorStyle));
    const CStdStr<wchar_t> number = name.Mid(prefix);
    if (name.Left(prefix).CompareNoCase(kColorStyle) != 0 || number.empty() || number.size() > 3)
        return false;
    if (number.find_first_not_of(L"0123456789") != number.npos) return false;
    const int index = std::stoi(number);
    return index >= 1 && index <= 255;
}

}  // namespace

bool canUseLinetype(HxDbDatabase& database, const CStdStr<wchar_t>& name) {
    const OpenedOrHeld<HxDbLinetypeTable> table(database.linetypeTableId(), HxDb::kForRead);
    return table && table->has(name.c_str());
}

bool canUsePlotStyle(HxDbDatabase& database, const CStdStr<wchar_t>& name) {
    if (database.plotStyleMode()) return isColorStyle(name);
    const OpenedOrHeld<HxDbDictionary> styles(database.getPlotStyleNameDictionaryId(), HxDb::kForRead);
    const CStdStr<wchar_t> localNormal = hxdbGetReservedString(kHxReservedNormal, true);
    const CStdStr<wchar_t> stored = hxutEqualNames(name.c_str(), localNormal.c_str())
                                        ? hxdbGetReservedString(kHxReservedNormal, false)
                                        : name;
    return styles && styles->has(stored.c_str());
}

KvUnusableNames fitToDrawing(HxDbDatabase* database, KvLayerStateInfoArray& entries) {
    if (!database) return {};
    KnownNames linetypes([&](const CStdStr<wchar_t>& name) { return canUseLinetype(*database, name); });
    for (CKvLayerStateInfo* const entry : entries) {
        if (!linetypes.isUsable(entry->GetLineType())) entry->SetLineType(kContinuous);
    }
    KvUnusableNames unusable = fitPlotStylesToDrawing(database, entries);
    unusable.linetypes = std::move(linetypes.unusable());
    return unusable;
}

KvUnusableNames fitPlotStylesToDrawing(HxDbDatabase* database, KvLayerStateInfoArray& entries) {
    if (!database) return {};
    KnownNames plotStyles([&](const CStdStr<wchar_t>& name) { return canUsePlotStyle(*database, name); });
    const bool haveNames = !database->plotStyleMode();
    for (CKvLayerStateInfo* const entry : entries) {
        const bool isUsable = plotStyles.isUsable(entry->GetPlotStyle());
        if (!isUsable && haveNames) entry->SetPlotStyle({});
    }
    return {{}, std::move(plotStyles.unusable())};
}
