// Helpers of the host's commands.
#include "host/editor/commands/command_support.h"

#include "host/db/kernel/header.h"
#include "host/db/kernel/text_fold.h"
#include "host/editor/command_processor.h"
#include "host/editor/editor.h"
#include "host/editor/system_variables.h"
#include "sdk/hxdbentity.h"

#include <memory>

#include <algorithm>

namespace korvex {

HxDbDatabase& drawing() { return *hxdbWorkingDatabase(); }

void say(const std::wstring& message) { editor().console().message(message); }
void refuse(const std::wstring& message) { editor().processor().fail(message); }
std::wstring because(Hx::ErrorStatus status) {
    if (status == Hx::eNotApplicable) {
        return std::wstring(L" (a drawing of version ") + drawing().version() + L" does not have it)";
    }
    return L" (" + std::wstring(Hx::errorText(status)) + L")";
}
void runOptions(const std::vector<CommandOption>& options) {
    std::wstring keywords;
    for (const CommandOption& option : options) {
        keywords += (keywords.empty() ? L"" : L" ") + std::wstring(option.keyword);
    }
    std::wstring choices = keywords;
    std::replace(choices.begin(), choices.end(), L' ', L'/');
    for (;;) {
        const Answer answer = askKeyword({L"Enter an option\n[" + choices + L"]:", keywords.c_str()});
        if (!answer.isKeyword) {
            return;
        }
        for (const CommandOption& option : options) {
            if (answer.text == option.keyword) {
                option.run();
            }
        }
    }
}

std::wstring quoted(const std::wstring& name) { return L"\"" + name + L"\""; }

std::wstring column(std::wstring text, std::size_t width) {
    text.resize(std::max(text.size() + 1, width), L' ');
    return text;
}

NewEntity::NewEntity(const wchar_t* type) : m_type(type) {
    text(0, m_type);
    text(8, variableValue(*findSystemVariable(L"CLAYER")).text);
    const std::wstring linetype = variableValue(*findSystemVariable(L"CELTYPE")).text;
    if (!equalNames(linetype, L"ByLayer")) {
        text(6, linetype);
    }
    constexpr int kByLayerColor = HxCmColor::kIndexByLayer;
    const auto color = static_cast<short>(headerInteger(drawing(), L"$CECOLOR", kByLayerColor));
    if (color != kByLayerColor) {
        integer(62, color);
    }
    const auto weight = static_cast<short>(integerVariable(L"CELWEIGHT"));
    if (weight != HxDb::kLnWtByLayer) {
        integer(370, weight);
    }
}

NewEntity::~NewEntity() { hxutRelRb(m_first); }

resbuf* NewEntity::add(short code) {
    resbuf* node = hxutNewRb(code);
    if (!node) {
        throw std::bad_alloc();
    }
    (m_last ? m_last->rbnext : m_first) = node;
    m_last = node;
    return node;
}

NewEntity& NewEntity::text(short code, const std::wstring& value) {
    add(code)->resval.rstring = hxutNewString(value.c_str());
    return *this;
}

NewEntity& NewEntity::point(short code, const HxGePoint3d& value) {
    double* to = add(code)->resval.rpoint;
    to[0] = value.x;
    to[1] = value.y;
    to[2] = value.z;
    return *this;
}

NewEntity& NewEntity::real(short code, double value) {
    add(code)->resval.rreal = value;
    return *this;
}

NewEntity& NewEntity::integer(short code, short value) {
    add(code)->resval.rint = value;
    return *this;
}

bool NewEntity::make() {
    if (hxdbEntMake(m_first) == RTNORM) {
        return true;
    }
    refuse(L"The drawing did not take the new " + m_type + L".");
    return false;
}

namespace {

/// The viewports of a layout's block but for the paper's own, which is number 1 or, in a layout that is not
/// the active one, the first.
void addFloating(HxDbObjectId block, std::vector<HxDbObjectId>& ids) {
    const HxDbObjectPointer<HxDbBlockTableRecord> paper(block, HxDb::kForRead);
    HxDbBlockTableRecordIterator* steps = nullptr;
    if (!paper || paper->newIterator(steps) != Hx::eOk) {
        return;
    }
    const std::unique_ptr<HxDbBlockTableRecordIterator> owner(steps);
    bool first = true;
    for (; !steps->done(); steps->step()) {
        HxDbObjectId id;
        steps->getEntityId(id);
        const HxDbObjectPointer<HxDbViewport> viewport(id, HxDb::kForRead);
        if (!viewport) {
            continue;
        }
        if (viewport->number() != 1 && !(first && viewport->number() < 0)) {
            ids.push_back(id);
        }
        first = false;
    }
}

}  // namespace

std::vector<HxDbObjectId> floatingViewports(HxDbDatabase& database, bool ofAllLayouts) {
    std::vector<HxDbObjectId> ids;
    const HxDbObjectId active = database.paperSpaceId();
    addFloating(active, ids);
    HxDbBlockTable* table = nullptr;
    HxDbSymbolTableIterator* steps = nullptr;
    if (!ofAllLayouts || database.getBlockTable(table, HxDb::kForRead) != Hx::eOk) {
        return ids;
    }
    if (table->newIterator(steps) == Hx::eOk) {
        const std::unique_ptr<HxDbSymbolTableIterator> owner(steps);
        for (; !steps->done(); steps->step()) {
            const HxDbObjectPointer<HxDbBlockTableRecord> block(steps->getRecordId(), HxDb::kForRead);
            const HxDbObjectId id = steps->getRecordId();
            if (block && block->isLayout() && id != active && id != database.modelSpaceId()) {
                addFloating(id, ids);
            }
        }
    }
    table->close();
    return ids;
}

}  // namespace korvex
