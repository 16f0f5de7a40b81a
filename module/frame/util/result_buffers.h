// Single values out of entity lists and out of the chain of containers of a nested pick.
#pragma once

#include "hxads.h"

#include <memory>

struct ReleaseList {
    void operator()(resbuf* list) const { hxutRelRb(list); }
};
/// A list that is released at the end.
using ListPtr = std::unique_ptr<resbuf, ReleaseList>;

/// Room for a layer's or block's name.
constexpr std::size_t kNameBufferSize = 500;

/// The first node of a group code: 0, or -1 with null when there is none.
int kv_Associate(resbuf* list, int code, resbuf** found);
/// The last node; null for null.
resbuf* get_rb_tail(resbuf* list);

// Each returns RTNORM, or RTERROR when there is nothing to read. A list without the group is RTNORM and
// leaves the output as it is. Texts are cut to `size` with their null.

/// An integer or text group of an entity; RTERROR when the entity cannot be read.
int GetEntInt(const zds_name entity, int code, int& value);
int GetEntString(const zds_name entity, int code, wchar_t* buffer, std::size_t size);
/// The same of a list in hand; RTERROR for a null list. Group codes of other kinds than the wanted count as
/// absent.
int GetBufInt(const resbuf* list, int code, int& value);
int GetBufString(const resbuf* list, int code, wchar_t* buffer, std::size_t size);

// The chain of containers: block references around a picked object, innermost first, as name nodes. RTERROR,
// with the names unchanged, for a chain that holds no name.

/// The innermost container.
int GetFirstNameInBuf(const resbuf* containers, zds_name first);
/// The outermost container.
int GetTopBlkNameInBuf(const resbuf* containers, zds_name top);
/// The innermost container and the first, going outwards, whose block is an external reference; RTERROR too
/// when there is none of those.
int GetBufFirstAndRefNames(const resbuf* containers, zds_name first, zds_name reference);

/// Whether a block's list is that of an external reference.
bool isXrefBlock(const resbuf* block);
