// The filters that every drawing has, and those that are made from its references and viewports.
#include "host/db/filters/filter_imp.h"
#include "host/db/kernel/entity_access.h"
#include "host/db/kernel/text_fold.h"
#include "host/db/tables/layer_imp.h"
#include "sdk/hxdbentity.h"

#include <algorithm>

using namespace korvex;

namespace {

constexpr wchar_t kXrefSeparator = L'|';

/// "PIPE|VALVE" is a layer of the reference PIPE.
bool belongsTo(std::wstring_view layer, std::wstring_view reference) {
    return layer.size() > reference.size() && layer[reference.size()] == kXrefSeparator &&
           equalNames(layer.substr(0, reference.size()), reference);
}

/// The names of the attached references, in the block table's order.
std::vector<std::wstring> referencesOf(const HxDbDatabase& database) {
    std::vector<std::wstring> names;
    for (HxDbStub* stub : members(*database.blockTableId().stub())) {
        const auto* block = stub->erased ? nullptr : HxDbBlockTableRecord::cast(materialise(*stub));
        if (block && block->isFromExternalReference() && !block->isDependent()) {
            names.emplace_back(block->name());
        }
    }
    return names;
}

bool hasOverridesIn(const HxDbDatabase& database, HxDbObjectId viewport) {
    const std::vector<HxDbStub*>& layers = members(*database.layerTableId().stub());
    return !viewport.isNull() && std::any_of(layers.begin(), layers.end(), [&](HxDbStub* stub) {
        const auto* layer = stub->erased ? nullptr : HxDbLayerTableRecord::cast(materialise(*stub));
        return layer && layer->hasOverrides(viewport);
    });
}

HxLyLayerFilter* nestedOfKind(HxLyLayerFilter& filter, HxLyLayerFilter::Kind kind) {
    const auto& nested = filter.getNestedFilters();
    const auto* found = std::find_if(nested.begin(), nested.end(),
                                     [&](const HxLyLayerFilter* one) { return one->kind() == kind; });
    return found == nested.end() ? nullptr : *found;
}

void generateReferences(HxLyLayerFilter& xrefRoot, const HxDbDatabase& database) {
    HxArray<HxLyLayerFilter*>& nested = xrefRoot.imp()->nested;
    std::vector<HxLyLayerFilter*> before(nested.begin(), nested.end());
    nested.removeAll();
    for (const std::wstring& name : referencesOf(database)) {
        const auto same = std::find_if(before.begin(), before.end(), [&](const HxLyLayerFilter* filter) {
            return equalNames(filter->name(), name);
        });
        if (same == before.end()) {
            xrefRoot.imp()->append(HxLyLayerFilter::Imp::make(HxLyLayerFilter::kXref, name));
        } else {
            nested.append(*same);
            before.erase(same);
        }
    }
    for (HxLyLayerFilter* gone : before) {
        gone->imp()->parent = nullptr;
        delete gone;
    }
}

void generateOverrides(HxLyLayerFilter& root, const HxDbDatabase& database) {
    HxLyLayerFilter* filter = nestedOfKind(root, HxLyLayerFilter::kViewportOverrides);
    const bool isWanted = hasOverridesIn(database, hxdbGetCurVportId(&database));
    if (isWanted && !filter) {
        const auto& nested = root.getNestedFilters();
        const auto* firstOfUser = std::find_if(nested.begin(), nested.end(),
                                               [](HxLyLayerFilter* one) { return one->imp()->isUsers(); });
        root.imp()->insert(
            HxLyLayerFilter::Imp::make(HxLyLayerFilter::kViewportOverrides, L"<ViewportOverrides"),
            static_cast<int>(firstOfUser - nested.begin()));
    } else if (!isWanted) {
        delete filter;
    }
}

}  // namespace

namespace korvex {

std::unique_ptr<HxLyLayerFilter> systemFilters(HxDbDatabase& database) {
    constexpr struct {
        HxLyLayerFilter::Kind kind;
        const wchar_t* name;
    } kNested[] = {
        {HxLyLayerFilter::kAllUsed, L"<AllUsed"},
        {HxLyLayerFilter::kAllNonXref, L"<AllNonXref"},
        {HxLyLayerFilter::kXrefRoot, L"<XrefRoot"},
    };
    std::unique_ptr<HxLyLayerFilter> root = HxLyLayerFilter::Imp::make(HxLyLayerFilter::kAll, L"<All");
    root->imp()->database = &database;
    for (const auto& nested : kNested) {
        root->imp()->append(HxLyLayerFilter::Imp::make(nested.kind, nested.name));
    }
    root->generateNested();
    return root;
}

}  // namespace korvex

bool HxLyLayerFilter::Imp::accepts(const HxDbLayerTableRecord& layer) {
    if (kind == kViewportOverrides || (kind == kProperty && expression.needsViewport())) {
        viewport.update(layer.database());
    }
    switch (kind) {
    case kAll: return true;
    case kAllUsed: return layer.isInUse();
    case kAllNonXref: return !layer.isDependent();
    case kXrefRoot: return layer.isDependent();
    case kXref: return belongsTo(layerFields(&layer).name, name);
    case kViewportOverrides: return layer.hasOverrides(viewport.id());
    case kProperty: return expression.accepts(layer, viewport);
    case kGroup: return layerSet.count(layer.imp()->stub) > 0;
    case kProxy: break;
    }
    return false;
}

Hx::ErrorStatus HxLyLayerFilter::generateNested() {
    HxDbDatabase* database = m_imp->treeDatabase();
    if (!database || (m_imp->kind != kAll && m_imp->kind != kXrefRoot)) {
        return Hx::eNotApplicable;
    }
    HxLyLayerFilter* xrefRoot = m_imp->kind == kAll ? nestedOfKind(*this, kXrefRoot) : this;
    if (xrefRoot) {
        generateReferences(*xrefRoot, *database);
    }
    if (m_imp->kind == kAll) {
        generateOverrides(*this, *database);
    }
    return Hx::eOk;
}
