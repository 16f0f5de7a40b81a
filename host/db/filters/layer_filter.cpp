// Filters as the SDK shows them: names, expressions, the tree.
#include "host/db/filters/filter_imp.h"
#include "host/db/kernel/text_fold.h"

#include <algorithm>

HX_DEFINE_MEMBERS(HxLyLayerFilter, HxRxObject)

using namespace korvex;

namespace {

constexpr std::size_t kLongestName = 255;

/// Another filter of the tree than those of `except` and below it has the name.
bool isNameTaken(HxLyLayerFilter& root, std::wstring_view name, const HxLyLayerFilter* except) {
    if (&root == except) {
        return false;
    }
    if (root.imp()->isUsers() && equalNames(root.name(), name)) {
        return true;
    }
    const auto& nested = root.getNestedFilters();
    return std::any_of(nested.begin(), nested.end(),
                       [&](HxLyLayerFilter* filter) { return isNameTaken(*filter, name, except); });
}

}  // namespace

namespace korvex {

void collectFilters(HxLyLayerFilter& filter, std::vector<HxLyLayerFilter*>& all) {
    all.push_back(&filter);
    for (HxLyLayerFilter* nested : filter.getNestedFilters()) {
        collectFilters(*nested, all);
    }
}

bool isValidFilterName(std::wstring_view name) {
    constexpr wchar_t kFirstPrintable = 32;
    return !name.empty() && name.size() <= kLongestName && name.front() != L'<' &&
           std::all_of(name.begin(), name.end(), [](wchar_t c) { return c >= kFirstPrintable; });
}

}  // namespace korvex

std::unique_ptr<HxLyLayerFilter> HxLyLayerFilter::Imp::make(Kind kind, std::wstring name) {
    auto imp = std::make_unique<Imp>(kind);
    imp->name = std::move(name);
    return std::unique_ptr<HxLyLayerFilter>(new HxLyLayerFilter(imp.release()));
}

HxLyLayerFilter* HxLyLayerFilter::Imp::root() {
    HxLyLayerFilter* filter = self;
    while (filter->imp()->parent) {
        filter = filter->imp()->parent;
    }
    return filter;
}

HxDbDatabase* HxLyLayerFilter::Imp::treeDatabase() { return root()->imp()->database; }

void HxLyLayerFilter::Imp::setExpression(std::wstring text) {
    expressionText = std::move(text);
    expression.parse(expressionText, error);
}

void HxLyLayerFilter::Imp::append(std::unique_ptr<HxLyLayerFilter> filter) {
    filter->imp()->parent = self;
    nested.append(filter.release());
}

void HxLyLayerFilter::Imp::insert(std::unique_ptr<HxLyLayerFilter> filter, int place) {
    append(std::move(filter));
    std::rotate(nested.begin() + place, nested.end() - 1, nested.end());
}

HxLyLayerFilter::HxLyLayerFilter() : HxLyLayerFilter(new Imp(kProperty)) {}

HxLyLayerFilter::HxLyLayerFilter(Imp* imp) : m_imp(imp) { imp->self = this; }

HxLyLayerFilter::~HxLyLayerFilter() {
    if (m_imp->parent) {
        m_imp->parent->imp()->nested.remove(this);
    }
    for (HxLyLayerFilter* filter : m_imp->nested) {
        filter->imp()->parent = nullptr;  // it has no list to take itself out of any more
        delete filter;
    }
    delete m_imp;
}

HxLyLayerFilter::Kind HxLyLayerFilter::kind() const { return m_imp->kind; }
const CStdStr<wchar_t>& HxLyLayerFilter::name() const { return m_imp->name; }

Hx::ErrorStatus HxLyLayerFilter::setName(const wchar_t* name) {
    if (!allowRename()) {
        return Hx::eRefused;
    }
    if (!name || !isValidFilterName(name)) {
        return Hx::eInvalidInput;
    }
    const bool isTaken =
        std::any_of(m_imp->nested.begin(), m_imp->nested.end(),
                    [&](HxLyLayerFilter* filter) { return isNameTaken(*filter, name, nullptr); }) ||
        isNameTaken(*m_imp->root(), name, this);
    if (isTaken) {
        return Hx::eDuplicateKey;
    }
    m_imp->name = name;
    return Hx::eOk;
}

const CStdStr<wchar_t>& HxLyLayerFilter::filterExpression() const { return m_imp->expressionText; }

Hx::ErrorStatus HxLyLayerFilter::setFilterExpression(const wchar_t* expression, HxLyExpressionError* error) {
    if (m_imp->kind != kProperty) {
        return Hx::eNotApplicable;
    }
    m_imp->setExpression(expression ? expression : L"");
    if (error) {
        *error = m_imp->error;
    }
    return m_imp->error.position < 0 ? Hx::eOk : Hx::eInvalidInput;
}

const HxLyExpressionError& HxLyLayerFilter::expressionError() const { return m_imp->error; }

bool HxLyLayerFilter::filter(const HxDbLayerTableRecord* layer) const {
    if (!layer) {
        return false;
    }
    const HxLyLayerFilter* filter = this;
    bool passes = true;
    while (passes && filter) {
        passes = filter->m_imp->accepts(*layer);
        const HxLyLayerFilter* parent = filter->m_imp->parent;
        filter = parent && parent->m_imp->isUsers() ? parent : nullptr;
    }
    return passes;
}

bool HxLyLayerFilter::allowRename() const { return m_imp->kind == kProperty || m_imp->kind == kGroup; }
bool HxLyLayerFilter::allowDelete() const { return m_imp->isUsers(); }
bool HxLyLayerFilter::allowNested() const { return m_imp->kind == kAll || allowRename(); }
bool HxLyLayerFilter::dynamicallyGenerated() const {
    return m_imp->kind == kXref || m_imp->kind == kViewportOverrides;
}
bool HxLyLayerFilter::isIdFilter() const { return m_imp->kind == kGroup; }
bool HxLyLayerFilter::isProxy() const { return m_imp->kind == kProxy; }

HxLyLayerFilter* HxLyLayerFilter::parent() const { return m_imp->parent; }
const HxArray<HxLyLayerFilter*>& HxLyLayerFilter::getNestedFilters() const { return m_imp->nested; }

Hx::ErrorStatus HxLyLayerFilter::addNested(HxLyLayerFilter* filter) {
    if (!filter || !filter->m_imp->isUsers() || filter->m_imp->name.empty() || filter->m_imp->parent ||
        m_imp->root() == filter) {
        return Hx::eInvalidInput;
    }
    if (!allowNested()) {
        return Hx::eRefused;
    }
    std::vector<HxLyLayerFilter*> added;
    collectFilters(*filter, added);
    HxDbDatabase* database = m_imp->treeDatabase();
    const bool isForeign = std::any_of(added.begin(), added.end(), [&](const HxLyLayerFilter* one) {
        const std::vector<HxDbStub*>& layers = one->m_imp->layers;
        return database && !layers.empty() && HxDbObjectId(layers.front()).database() != database;
    });
    if (isForeign) {
        return Hx::eInvalidInput;
    }
    HxLyLayerFilter& root = *m_imp->root();
    const bool isTaken = std::any_of(added.begin(), added.end(), [&](const HxLyLayerFilter* one) {
        return isNameTaken(root, one->name(), nullptr);
    });
    if (isTaken) {
        return Hx::eDuplicateKey;
    }
    // Behind those of the tree's records, as it will be read again.
    const auto older = std::find_if(m_imp->nested.begin(), m_imp->nested.end(),
                                    [](const HxLyLayerFilter* one) { return one->m_imp->isOlder; });
    m_imp->insert(std::unique_ptr<HxLyLayerFilter>(filter), static_cast<int>(older - m_imp->nested.begin()));
    return Hx::eOk;
}

Hx::ErrorStatus HxLyLayerFilter::removeNested(HxLyLayerFilter* filter) {
    if (!filter || filter->m_imp->parent != this) {
        return Hx::eInvalidInput;
    }
    if (!filter->allowDelete()) {
        return Hx::eRefused;
    }
    m_imp->nested.remove(filter);
    filter->m_imp->parent = nullptr;
    return Hx::eOk;
}
