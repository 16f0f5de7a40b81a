// Result buffers of the SDK: making, filling from an argument list, releasing.
#include "host/db/groups/group_types.h"
#include "host/db/lists/chain.h"
#include "sdk/hxed.h"

#include <algorithm>
#include <cstdarg>
#include <cwchar>
#include <new>

using namespace korvex;

namespace {

constexpr int kEndOfList = 0;
constexpr int kXDataMarker = -3;

bool isListable(int restype) {
    const bool group = restype > 0 && restype <= kLastGroupCode;
    return restype == kXDataMarker ||
           (group ? isKnownGroupCode(restype) : valueKind(restype) != ValueKind::none);
}

bool copyChunk(const zds_binary* from, zds_binary& to) {
    if (!from || from->clen <= 0 || !from->buf) {
        return true;
    }
    to.buf = new (std::nothrow) char[static_cast<std::size_t>(from->clen)];
    if (!to.buf) {
        return false;
    }
    to.clen = from->clen;
    std::copy_n(from->buf, from->clen, to.buf);
    return true;
}

bool copyText(const wchar_t* from, wchar_t*& to) {
    to = hxutNewString(from);
    return to || !from;
}

/// Takes the value of a node from the arguments.
bool takeValue(resbuf& node, va_list& arguments) {
    switch (valueKind(node.restype)) {
    case ValueKind::none: return true;
    case ValueKind::real: node.resval.rreal = va_arg(arguments, double); return true;
    case ValueKind::point:
        if (const double* point = va_arg(arguments, const double*)) {
            std::copy_n(point, 3, node.resval.rpoint);
        }
        return true;
    case ValueKind::int16: node.resval.rint = static_cast<short>(va_arg(arguments, int)); return true;
    case ValueKind::int32:
        node.resval.rlong = static_cast<std::int32_t>(va_arg(arguments, long));
        return true;
    case ValueKind::int64: node.resval.mnInt64 = va_arg(arguments, std::int64_t); return true;
    case ValueKind::text: return copyText(va_arg(arguments, const wchar_t*), node.resval.rstring);
    case ValueKind::name:
        if (const std::int64_t* name = va_arg(arguments, const std::int64_t*)) {
            std::copy_n(name, 2, node.resval.rlname);
        }
        return true;
    case ValueKind::chunk: return copyChunk(va_arg(arguments, const zds_binary*), node.resval.rbinary);
    }
    return false;
}

/// Frees what the node owns, and the node.
void release(resbuf* node) {
    switch (valueKind(node->restype)) {
    case ValueKind::text: hxutFreeString(node->resval.rstring); break;
    case ValueKind::chunk: delete[] node->resval.rbinary.buf; break;
    default: break;
    }
    delete node;
}

}  // namespace

resbuf* hxutNewRb(int restype) {
    auto* node = new (std::nothrow) resbuf{};
    if (node) {
        node->restype = static_cast<short>(restype);
        std::fill_n(node->resval.rpoint, 3, 0.0);  // the largest member
    }
    return node;
}

int hxutRelRb(resbuf* chain) {
    while (chain) {
        resbuf* next = chain->rbnext;
        release(chain);
        chain = next;
    }
    return RTNORM;
}

wchar_t* hxutNewString(const wchar_t* text) {
    if (!text) {
        return nullptr;
    }
    const std::size_t size = std::wcslen(text) + 1;
    auto* copy = new (std::nothrow) wchar_t[size];
    if (copy) {
        std::copy_n(text, size, copy);
    }
    return copy;
}

void hxutFreeString(wchar_t* text) { delete[] text; }

resbuf* hxutBuildList(int restype, ...) {
    Chain chain;
    resbuf** end = nullptr;
    va_list arguments;
    va_start(arguments, restype);
    bool good = true;
    for (int type = restype; good && type != kEndOfList && type != RTNONE; type = va_arg(arguments, int)) {
        resbuf* node = isListable(type) ? hxutNewRb(type) : nullptr;
        good = node && takeValue(*node, arguments);
        if (!node) {
            break;
        }
        if (type == RTDXF0) {
            node->restype = 0;
        }
        if (end) {
            *end = node;
        } else {
            chain.reset(node);
        }
        end = &node->rbnext;
    }
    va_end(arguments);
    return good ? chain.release() : nullptr;
}
