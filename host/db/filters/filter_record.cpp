// Reads and writes filters' xrecords.
#include "host/db/filters/filter_record.h"

#include "host/db/filters/filter_imp.h"
#include "host/db/groups/group_writer.h"
#include "host/db/kernel/database_imp.h"
#include "host/db/objects/xrecord_imp.h"
#include "sdk/hxdbdict.h"

namespace korvex {

namespace {

constexpr int kTextCode = 1;  ///< the kind; in older records all texts
constexpr int kVersionCode = 90;
constexpr int kMarkCode = 290;
constexpr int kNameCode = 300;
constexpr int kExpressionCode = 301;
constexpr int kLayerCode = 330;
constexpr int kStatesCode = 70;
constexpr wchar_t kPropertyKind[] = L"AcLyLayerFilter";
constexpr wchar_t kGroupKind[] = L"AcLyLayerGroup";

HxLyLayerFilter::Kind kindNamed(std::wstring_view name) {
    return name == kPropertyKind ? HxLyLayerFilter::kProperty
           : name == kGroupKind  ? HxLyLayerFilter::kGroup
                                 : HxLyLayerFilter::kProxy;
}

HxDbStub* layerAt(std::uint64_t handle, const HxDbDatabase& database) {
    HxDbStub* stub = database.imp()->handles.find(handle);
    return stub && HxDbLayerTableRecord::cast(materialise(*stub)) ? stub : nullptr;
}

/// The texts of an older record in their order.
enum OlderText : std::size_t {
    kOlderName,
    kOlderLayers,
    kOlderColor,
    kOlderLinetype,
    kOlderWeight,
    kOlderStyle
};

constexpr struct {
    OlderText text;
    const wchar_t* property;
} kOlderConditions[] = {
    {kOlderLayers, L"NAME"},       {kOlderColor, L"COLOR"},     {kOlderLinetype, L"LINETYPE"},
    {kOlderWeight, L"LINEWEIGHT"}, {kOlderStyle, L"PLOTSTYLE"},
};

std::wstring expressionOf(const std::vector<std::wstring>& texts) {
    std::wstring expression;
    for (const auto& condition : kOlderConditions) {
        const std::wstring value = condition.text < texts.size() ? texts[condition.text] : std::wstring();
        if (!value.empty() && value != L"*") {
            expression += (expression.empty() ? L"" : L" AND ") + std::wstring(condition.property) + L"==\"" +
                          value + L"\"";
        }
    }
    return expression;
}

/// Writes what a filter holds, each thing once.
class FilterGroups {
public:
    FilterGroups(const HxLyLayerFilter& filter, GroupWriter& out) : m_filter(filter), m_out(out) {}

    void name() {
        if (!std::exchange(m_hasName, true)) {
            m_out.text(kNameCode, m_filter.name());
        }
    }
    /// The expression or the layers.
    void content() {
        if (std::exchange(m_hasContent, true)) {
            return;
        }
        if (!m_filter.isIdFilter()) {
            m_out.text(kExpressionCode, m_filter.filterExpression());
            return;
        }
        for (HxDbStub* layer : m_filter.imp()->layers) {
            if (!layer->erased) {
                m_out.handle(kLayerCode, layer->handle);
            }
        }
    }

    /// The content is there already.
    void keepContent() { m_hasContent = true; }

private:
    const HxLyLayerFilter& m_filter;
    GroupWriter& m_out;
    bool m_hasName = false;
    bool m_hasContent = false;
};

}  // namespace

const std::string* xrecordGroups(HxDbStub& record) {
    const auto* xrecord = HxDbXrecord::cast(materialise(record));
    return xrecord ? &fields<XrecordImp>(xrecord).groups() : nullptr;
}

namespace {

FilterRecord readGroups(std::string_view groups, const HxDbDatabase& database) {
    FilterRecord read;
    bool hasKind = false;
    GroupCursor cursor(groups, database.imp()->format);
    while (cursor.next()) {
        switch (cursor.code()) {
        case kTextCode:
            if (!std::exchange(hasKind, true)) {
                read.kind = kindNamed(cursor.asText());
            }
            break;
        case kMarkCode: read.isSelected = cursor.asInteger() != 0; break;
        case kNameCode: read.name = cursor.asText(); break;
        case kExpressionCode: read.expression += cursor.asText(); break;  // long ones are in pieces
        case kLayerCode:
            if (HxDbStub* layer = layerAt(cursor.asHandle(), database)) {
                read.layers.push_back(layer);
            }
            break;
        default: break;
        }
    }
    return read;
}

}  // namespace

FilterRecord readFilterRecord(HxDbStub& record) {
    const std::string* groups = xrecordGroups(record);
    return readGroups(groups ? std::string_view(*groups) : std::string_view(), *record.database);
}

FilterRecord readOlderFilterRecord(HxDbStub& record) {
    FilterRecord read;
    const std::string* groups = xrecordGroups(record);
    std::vector<std::wstring> texts;
    bool asksForStates = false;
    GroupCursor cursor(groups ? std::string_view(*groups) : std::string_view(),
                       record.database->imp()->format);
    while (cursor.next()) {
        if (cursor.code() == kTextCode) {
            texts.push_back(cursor.asText());
        }
        asksForStates = asksForStates || (cursor.code() == kStatesCode && cursor.asInteger() != 0);
    }
    if (!texts.empty()) {
        read.name = texts.front();
    }
    if (texts.size() > kOlderLayers && !asksForStates) {
        read.kind = HxLyLayerFilter::kProperty;
        read.expression = expressionOf(texts);
    }
    return read;
}

/// Layers that did not change keep their groups, those that name nothing among them.
std::string filterGroups(const HxLyLayerFilter& filter, std::string_view old, const GroupFormat& format) {
    GroupWriter out(format);
    FilterGroups fresh(filter, out);
    const bool keepsLayers = filter.isIdFilter() && !old.empty() &&
                             readGroups(old, *filter.imp()->treeDatabase()).layers == filter.imp()->layers;
    const int contentCode = filter.isIdFilter() ? kLayerCode : kExpressionCode;
    GroupCursor cursor(old, format);
    while (cursor.next()) {
        if (cursor.code() == kNameCode) {
            fresh.name();
        } else if (cursor.code() == contentCode && keepsLayers) {
            fresh.keepContent();
            out.copy(cursor);
        } else if (cursor.code() == contentCode) {
            fresh.content();
        } else {
            out.copy(cursor);
        }
    }
    if (old.empty()) {
        out.text(kTextCode, filter.isIdFilter() ? kGroupKind : kPropertyKind);
        out.integer(kVersionCode, 1);
    }
    fresh.name();
    fresh.content();
    return out.take();
}

std::string groupsWithMark(std::string_view old, bool isSelected, const GroupFormat& format) {
    GroupWriter out(format);
    if (isSelected) {
        out.integer(kMarkCode, 1);
    }
    GroupCursor cursor(old, format);
    while (cursor.next()) {
        if (cursor.code() != kMarkCode) {
            out.copy(cursor);
        }
    }
    return out.take();
}

}  // namespace korvex
