// Sending a notification to reactors that may add and remove themselves and others meanwhile.
#pragma once

#include <algorithm>
#include <vector>

namespace korvex {

/// Calls every reactor that is in the list when the sending begins and still there when its turn comes.
template <class Reactor, class Call>
void notifyAll(const std::vector<Reactor*>& list, Call call) {
    if (list.empty()) {
        return;
    }
    // NOLINTNEXTLINE(performance-unnecessary-copy-initialization): the list may change meanwhile
    const std::vector<Reactor*> now = list;
    for (Reactor* reactor : now) {
        if (std::find(list.begin(), list.end(), reactor) != list.end()) {
            call(*reactor);
        }
    }
}

template <class Reactor>
void addOnce(std::vector<Reactor*>& list, Reactor* reactor) {
    if (reactor && std::find(list.begin(), list.end(), reactor) == list.end()) {
        list.push_back(reactor);
    }
}

template <class Reactor>
void removeFrom(std::vector<Reactor*>& list, const Reactor* reactor) {
    list.erase(std::remove(list.begin(), list.end(), reactor), list.end());
}

}  // namespace korvex
