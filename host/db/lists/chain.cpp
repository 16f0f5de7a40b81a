// Chains: one node at a time, comparing values by their kind.
#include "host/db/lists/chain.h"

#include <algorithm>
#include <cstring>
#include <new>

namespace korvex {

namespace {

/// Equal also for not-a-numbers, so that what was only read counts as unchanged.
bool sameReals(const double* a, const double* b, std::size_t count) {
    return std::equal(a, a + count, b, [](double x, double y) { return x == y || (x != x && y != y); });
}

bool sameChunks(const zds_binary& a, const zds_binary& b) {
    return a.clen == b.clen && (a.clen <= 0 || (a.buf && b.buf && std::equal(a.buf, a.buf + a.clen, b.buf)));
}

}  // namespace

Chain newNode(int restype) {
    Chain node(hxutNewRb(restype));
    if (!node) {
        throw std::bad_alloc();
    }
    return node;
}

Chain textNode(int restype, std::wstring_view text) {
    Chain node = newNode(restype);
    node->resval.rstring = hxutNewString(std::wstring(text).c_str());
    if (!node->resval.rstring) {
        throw std::bad_alloc();
    }
    return node;
}

Chain nameNode(int restype, const zds_name name) {
    Chain node = newNode(restype);
    std::copy_n(name, 2, node->resval.rlname);
    return node;
}

std::wstring_view textOf(const resbuf& node) {
    return node.resval.rstring ? std::wstring_view(node.resval.rstring) : std::wstring_view();
}

bool sameNode(const resbuf& a, const resbuf& b) {
    if (a.restype != b.restype) {
        return false;
    }
    switch (valueKind(a.restype)) {
    case ValueKind::none: return true;
    case ValueKind::real: return sameReals(&a.resval.rreal, &b.resval.rreal, 1);
    case ValueKind::point: return sameReals(a.resval.rpoint, b.resval.rpoint, 3);
    case ValueKind::int16: return a.resval.rint == b.resval.rint;
    case ValueKind::int32: return a.resval.rlong == b.resval.rlong;
    case ValueKind::int64: return a.resval.mnInt64 == b.resval.mnInt64;
    case ValueKind::text: return textOf(a) == textOf(b);
    case ValueKind::name: return std::equal(a.resval.rlname, a.resval.rlname + 2, b.resval.rlname);
    case ValueKind::chunk: return sameChunks(a.resval.rbinary, b.resval.rbinary);
    }
    return false;
}

void ChainBuilder::add(Chain chain) {
    if (!chain) {
        return;
    }
    resbuf* first = chain.release();
    (m_last ? m_last->rbnext : first->rbnext) = m_last ? first : first->rbnext;
    if (!m_last) {
        m_chain.reset(first);
    }
    for (m_last = first; m_last->rbnext; m_last = m_last->rbnext) {
    }
}

}  // namespace korvex
