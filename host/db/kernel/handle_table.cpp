// Objects by handle: a sorted array, since drawings bring their handles in rising order but for a few.
#include "host/db/kernel/database_imp.h"

namespace korvex {

namespace {

bool byHandle(const std::pair<std::uint64_t, HxDbStub*>& a, const std::pair<std::uint64_t, HxDbStub*>& b) {
    return a.first < b.first;
}

}  // namespace

void HandleTable::add(std::uint64_t handle, HxDbStub* stub) {
    if (handle == 0) {
        m_without.push_back(stub);
        return;
    }
    stub->handle = handle;
    m_sorted.emplace_back(handle, stub);
    m_next = std::max(m_next, handle + 1);
    passReserved();
}

void HandleTable::reserve(std::vector<std::uint64_t> named) {
    m_reserved = std::move(named);
    m_passed = 0;
    passReserved();
}

void HandleTable::passReserved() {
    for (; m_passed < m_reserved.size() && m_reserved[m_passed] <= m_next; ++m_passed) {
        m_next += m_reserved[m_passed] == m_next ? 1 : 0;
    }
}

std::uint64_t HandleTable::next() {
    const std::uint64_t handle = m_next++;
    passReserved();
    return handle;
}

void HandleTable::settle() {
    if (!std::is_sorted(m_sorted.begin(), m_sorted.end(), byHandle)) {
        std::stable_sort(m_sorted.begin(), m_sorted.end(), byHandle);
    }
    const auto taken = [this](std::size_t i) { return i > 0 && m_sorted[i].first == m_sorted[i - 1].first; };
    for (std::size_t i = 0; i < m_sorted.size(); ++i) {
        if (taken(i)) {
            m_without.push_back(m_sorted[i].second);
        }
    }
    const auto last = std::unique(m_sorted.begin(), m_sorted.end(),
                                  [](const auto& a, const auto& b) { return a.first == b.first; });
    m_sorted.erase(last, m_sorted.end());
    for (HxDbStub* stub : m_without) {
        stub->handleInFile = false;
        stub->handle = next();
        m_sorted.emplace_back(stub->handle, stub);
    }
    m_without.clear();
}

HxDbStub* HandleTable::find(std::uint64_t handle) const {
    const auto found = std::lower_bound(m_sorted.begin(), m_sorted.end(),
                                        std::make_pair(handle, static_cast<HxDbStub*>(nullptr)), byHandle);
    return found != m_sorted.end() && found->first == handle ? found->second : nullptr;
}

}  // namespace korvex
