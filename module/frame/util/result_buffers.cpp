// Single values out of entity lists and out of the chain of containers of a nested pick.
#include "result_buffers.h"

#include "hxtypes.h"

#include <algorithm>
#include <cwchar>
#include <memory>

namespace {

constexpr int kBlockName = 2;
constexpr int kFlags = 70;
constexpr int kXrefFlag = 4;

const resbuf* findGroup(const resbuf* list, int code) {
    while (list && list->restype != code) {
        list = list->rbnext;
    }
    return list;
}

struct CodeRange {
    int first, last;
};

constexpr CodeRange kShortCodes[] = {{60, 79},   {170, 179},   {270, 299},        {370, 389},
                                     {400, 409}, {1060, 1070}, {RTSHORT, RTSHORT}};
constexpr CodeRange kLongCodes[] = {{90, 99}, {420, 429}, {440, 459}, {1071, 1071}, {RTLONG, RTLONG}};
constexpr CodeRange kTextCodes[] = {{0, 9},     {100, 102}, {105, 105},  {300, 309},   {410, 419},
                                    {430, 439}, {470, 479}, {999, 1003}, {1005, 1009}, {RTSTR, RTSTR}};

template <std::size_t N>
bool isOneOf(const CodeRange (&ranges)[N], int code) {
    return std::any_of(std::begin(ranges), std::end(ranges),
                       [code](const CodeRange& range) { return code >= range.first && code <= range.last; });
}

bool readInt(const resbuf& node, int& value) {
    if (isOneOf(kShortCodes, node.restype)) {
        value = node.resval.rint;
    } else if (isOneOf(kLongCodes, node.restype)) {
        value = node.resval.rlong;
    } else {
        return false;
    }
    return true;
}

void copyName(zds_name target, const zds_name source) { std::copy_n(source, 2, target); }

const resbuf* firstName(const resbuf* containers) { return findGroup(containers, RTENAME); }

bool isReferenceToXref(const zds_name reference) {
    wchar_t name[kNameBufferSize] = {};
    if (GetEntString(reference, kBlockName, name, kNameBufferSize) != RTNORM) return false;
    const ListPtr block(hxdbTblSearch(L"BLOCK", name, 0));
    return isXrefBlock(block.get());
}

}  // namespace

int kv_Associate(resbuf* list, int code, resbuf** found) {
    while (list && list->restype != code) {
        list = list->rbnext;
    }
    if (found) *found = list;
    return list ? 0 : -1;
}

resbuf* get_rb_tail(resbuf* list) {
    while (list && list->rbnext) {
        list = list->rbnext;
    }
    return list;
}

int GetEntInt(const zds_name entity, int code, int& value) {
    return GetBufInt(ListPtr(hxdbEntGet(entity)).get(), code, value);
}

int GetEntString(const zds_name entity, int code, wchar_t* buffer, std::size_t size) {
    return GetBufString(ListPtr(hxdbEntGet(entity)).get(), code, buffer, size);
}

int GetBufInt(const resbuf* list, int code, int& value) {
    if (!list) return RTERROR;
    if (const resbuf* const node = findGroup(list, code)) readInt(*node, value);
    return RTNORM;
}

int GetBufString(const resbuf* list, int code, wchar_t* buffer, std::size_t size) {
    if (!list) return RTERROR;
    const resbuf* const node = findGroup(list, code);
    if (!node || !buffer || size == 0 || !isOneOf(kTextCodes, code)) return RTNORM;
    const wchar_t* const text = node->resval.rstring ? node->resval.rstring : L"";
    const std::size_t length = std::min(std::wcslen(text), size - 1);
    std::wmemcpy(buffer, text, length);
    buffer[length] = 0;
    return RTNORM;
}

int GetFirstNameInBuf(const resbuf* containers, zds_name first) {
    const resbuf* const node = firstName(containers);
    if (!node) return RTERROR;
    copyName(first, node->resval.rlname);
    return RTNORM;
}

int GetTopBlkNameInBuf(const resbuf* containers, zds_name top) {
    const resbuf* last = nullptr;
    for (const resbuf* node = firstName(containers); node; node = firstName(node->rbnext)) {
        last = node;
    }
    if (!last) return RTERROR;
    copyName(top, last->resval.rlname);
    return RTNORM;
}

int GetBufFirstAndRefNames(const resbuf* containers, zds_name first, zds_name reference) {
    for (const resbuf* node = firstName(containers); node; node = firstName(node->rbnext)) {
        if (!isReferenceToXref(node->resval.rlname)) continue;
        copyName(reference, node->resval.rlname);
        return GetFirstNameInBuf(containers, first);
    }
    return RTERROR;
}

bool isXrefBlock(const resbuf* block) {
    int flags = 0;
    return GetBufInt(block, kFlags, flags) == RTNORM && (flags & kXrefFlag) != 0;
}
