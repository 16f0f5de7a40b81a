// Long work tells how far it is, and learns that the user gives it up.
#include "host/base/progress.h"

#include <algorithm>

namespace korvex {

namespace {

constexpr long long kReports = 400;  // of a piece of work whose size is known

ProgressListener* g_listener = nullptr;
ProgressScope* g_innermost = nullptr;
bool g_isCancelled = false;

}  // namespace

ProgressListener* setProgressListener(ProgressListener* listener) {
    std::swap(g_listener, listener);
    return listener;
}

ProgressScope::ProgressScope(std::wstring label, long long total, bool canCancel)
    : m_outer(g_innermost), m_total(total), m_canCancel(canCancel),
      m_isHeard(m_outer ? m_outer->m_isHeard : g_listener != nullptr) {
    g_innermost = this;
    if (!m_isHeard) {
        return;
    }
    m_next = std::numeric_limits<long long>::min();
    if (!m_outer) {
        g_isCancelled = false;
        g_listener->begin(label, canCancel);
    }
}

ProgressScope::~ProgressScope() {
    g_innermost = m_outer;
    if (m_isHeard && !m_outer) {
        g_isCancelled = false;
        if (g_listener) {
            g_listener->end();
        }
    } else if (m_outer) {
        m_outer->m_part = 0;
        if (m_isHeard && g_isCancelled) {
            m_outer->m_next = std::numeric_limits<long long>::min();  // it learns of that at its next step
        }
    }
}

bool ProgressScope::isCancelled() const { return m_canCancel && g_isCancelled; }

/// What is done of the outermost piece when `part` of this one is.
double ProgressScope::overall(double part) const {
    if (!m_outer) {
        return part;
    }
    const auto total = static_cast<double>(m_outer->m_total);
    const double done = static_cast<double>(m_outer->m_done) +
                        static_cast<double>(m_outer->m_part) * std::clamp(part, 0.0, 1.0);
    return m_outer->overall(total > 0 ? std::min(done / total, 1.0) : -1);
}

bool ProgressScope::report(long long done) {
    if (!g_listener) {
        m_next = kNever;
        return true;
    }
    m_done = done;
    const double part =
        m_total > 0 ? std::clamp(static_cast<double>(done) / static_cast<double>(m_total), 0.0, 1.0) : -1;
    g_isCancelled = !g_listener->step(overall(part)) || g_isCancelled;
    m_next = isCancelled() ? std::numeric_limits<long long>::min()
                           : done + std::max(1LL, m_total > 0 ? m_total / kReports : 1);
    return !isCancelled();
}

}  // namespace korvex
