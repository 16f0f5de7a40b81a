// The log's hook and the messages that wait for one.
#include "host/base/log.h"

#include <deque>
#include <mutex>
#include <utility>

namespace korvex {
namespace {

constexpr std::size_t kMostWaiting = 100;

struct Log {
    std::mutex mutex;
    LogHook hook;
    std::deque<std::pair<Severity, std::wstring>> waiting;
};

Log& theLog() {
    static Log& log = *new Log;  // messages may come while the process ends
    return log;
}

}  // namespace

void log(Severity severity, const std::wstring& message) {
    Log& log = theLog();
    LogHook hook;
    {
        const std::lock_guard<std::mutex> lock(log.mutex);
        hook = log.hook;
        if (!hook) {
            log.waiting.emplace_back(severity, message);
            if (log.waiting.size() > kMostWaiting) {
                log.waiting.pop_front();
            }
        }
    }
    if (hook) {
        hook(severity, message);
    }
}

void setLogHook(const LogHook& hook) {
    Log& log = theLog();
    std::deque<std::pair<Severity, std::wstring>> waiting;
    {
        const std::lock_guard<std::mutex> lock(log.mutex);
        log.hook = hook;
        if (hook) {
            waiting.swap(log.waiting);
        }
    }
    for (const auto& [severity, message] : waiting) {
        hook(severity, message);
    }
}

}  // namespace korvex
