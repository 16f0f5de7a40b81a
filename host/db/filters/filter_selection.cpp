// Extended data "ACAD" with the selected filter's name.
#include "host/db/filters/filter_selection.h"

#include "host/db/kernel/write_access.h"
#include "host/db/lists/chain.h"
#include "host/db/tables/layer_values.h"

namespace korvex {

namespace {

constexpr wchar_t kApplication[] = L"ACAD";
constexpr int kApplicationCode = 1001;
constexpr int kTextCode = 1000;

resbuf* nameNode(resbuf* chain) {
    while (chain && chain->restype != kTextCode) {
        chain = chain->rbnext;
    }
    return chain;
}

Chain selectionData(HxDbStub& holder) {
    const HxDbObject* object = materialise(holder);
    return Chain(object ? object->xData(kApplication) : nullptr);
}

/// The data with the name in them.
Chain withName(Chain data, const std::wstring& name) {
    if (resbuf* node = nameNode(data.get())) {
        Chain fresh = textNode(kTextCode, name);
        std::swap(node->resval.rstring, fresh->resval.rstring);
        return data;
    }
    ChainBuilder out;
    out.add(data ? std::move(data) : textNode(kApplicationCode, kApplication));
    out.add(textNode(kTextCode, name));
    return Chain(out.release());
}

}  // namespace

bool readSelection(HxDbStub& holder, std::wstring& name) {
    const Chain data = selectionData(holder);
    const resbuf* node = nameNode(data.get());
    if (!node) {
        return false;
    }
    name = textOf(*node);
    return true;
}

Hx::ErrorStatus writeSelection(HxDbStub& holder, const std::wstring& name) {
    std::wstring present;
    if (readSelection(holder, present) && present == name) {
        return Hx::eOk;
    }
    Hx::ErrorStatus status = registerApplication(*holder.database, kApplication);
    const WriteAccess open(holder);
    if (status == Hx::eOk) {
        status = open.status();
    }
    return status == Hx::eOk ? open.object()->setXData(withName(selectionData(holder), name).get()) : status;
}

}  // namespace korvex
