// Building and keeping chains of result buffers.
#pragma once

#include "host/db/lists/value_kind.h"
#include "sdk/hxads.h"

#include <memory>
#include <string>
#include <string_view>

namespace korvex {

struct ReleaseChain {
    void operator()(resbuf* chain) const { hxutRelRb(chain); }
};
/// A chain that is released with its keeper.
using Chain = std::unique_ptr<resbuf, ReleaseChain>;

// Single nodes; std::bad_alloc when memory runs out.
Chain newNode(int restype);
Chain textNode(int restype, std::wstring_view text);
Chain nameNode(int restype, const zds_name name);

/// The text of a node that may have none.
std::wstring_view textOf(const resbuf& node);

/// Same restype and value, a null text being an empty one.
bool sameNode(const resbuf& a, const resbuf& b);

/// Appends nodes and chains at the end.
class ChainBuilder {
public:
    /// The node, or a chain's first; nothing for null.
    void add(Chain chain);
    resbuf* release() { return m_chain.release(); }

private:
    Chain m_chain;
    resbuf* m_last = nullptr;
};

}  // namespace korvex
