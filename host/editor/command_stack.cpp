// Registers commands and finds them by name.
#include "host/editor/command_stack.h"

#include "host/db/kernel/text_fold.h"

#include <algorithm>

HX_DEFINE_MEMBERS(HxEdCommandStack, HxRxObject)

namespace korvex {

const wchar_t* const kHostCommandGroup = L"KORVEX_HOST";

namespace {

bool isEmpty(const wchar_t* text) { return !text || !*text; }

/// How many characters must be changed, added, dropped or swapped with their neighbour to make one word of
/// the other.
std::size_t distance(const std::wstring& a, const std::wstring& b) {
    std::vector<std::vector<std::size_t>> d(a.size() + 1, std::vector<std::size_t>(b.size() + 1));
    for (std::size_t i = 0; i <= a.size(); ++i) {
        for (std::size_t j = 0; j <= b.size(); ++j) {
            if (i == 0 || j == 0) {
                d[i][j] = i + j;
                continue;
            }
            d[i][j] = std::min(
                {d[i - 1][j] + 1, d[i][j - 1] + 1, d[i - 1][j - 1] + (a[i - 1] == b[j - 1] ? 0 : 1)});
            if (i > 1 && j > 1 && a[i - 1] == b[j - 2] && a[i - 2] == b[j - 1]) {
                d[i][j] = std::min(d[i][j], d[i - 2][j - 2] + 1);
            }
        }
    }
    return d[a.size()][b.size()];
}

}  // namespace

CommandStack::Group* CommandStack::group(std::wstring_view name) {
    const auto found = std::find_if(m_groups.begin(), m_groups.end(),
                                    [name](const Group& g) { return equalNames(g.name, name); });
    return found == m_groups.end() ? nullptr : &*found;
}

Hx::ErrorStatus CommandStack::addCommand(const wchar_t* groupName, const wchar_t* globalName,
                                         const wchar_t* localName, int flags, HxCommandFunction function,
                                         void* uiContext, int functionCode, void* resourceHandle) {
    if (isEmpty(groupName) || isEmpty(globalName) || !function) {
        return Hx::eInvalidInput;
    }
    Group* into = group(groupName);
    if (!into) {
        m_groups.push_back({groupName, {}});
        into = &m_groups.back();
    }
    for (const Command& command : into->commands) {
        if (equalNames(command.global, globalName)) {
            return Hx::eDuplicateKey;
        }
    }
    into->commands.push_back({globalName, isEmpty(localName) ? globalName : localName, flags, function,
                              uiContext, functionCode, resourceHandle});
    return Hx::eOk;
}

Hx::ErrorStatus CommandStack::removeCmd(const wchar_t* groupName, const wchar_t* globalName) {
    Group* from = isEmpty(groupName) || isEmpty(globalName) ? nullptr : group(groupName);
    if (!from) {
        return Hx::eKeyNotFound;
    }
    const auto found =
        std::find_if(from->commands.begin(), from->commands.end(),
                     [globalName](const Command& c) { return equalNames(c.global, globalName); });
    if (found == from->commands.end()) {
        return Hx::eKeyNotFound;
    }
    from->commands.erase(found);
    return Hx::eOk;
}

Hx::ErrorStatus CommandStack::removeGroup(const wchar_t* groupName) {
    Group* gone = isEmpty(groupName) ? nullptr : group(groupName);
    if (!gone) {
        return Hx::eKeyNotFound;
    }
    m_groups.erase(m_groups.begin() + (gone - m_groups.data()));
    return Hx::eOk;
}

bool CommandStack::lookupCmd(const wchar_t* name, CStdStr<wchar_t>* globalName) const {
    const Command* found = isEmpty(name) ? nullptr : find(name);
    if (found && globalName) {
        *globalName = found->global;
    }
    return found != nullptr;
}

void CommandStack::addAlias(const wchar_t* alias, const wchar_t* globalName) {
    m_aliases.push_back({alias, globalName});
}

const Command* CommandStack::find(std::wstring_view typed) const {
    bool globalOnly = false;
    bool hostOnly = false;
    while (!typed.empty() && (typed.front() == L'_' || typed.front() == L'.')) {
        (typed.front() == L'_' ? globalOnly : hostOnly) = true;
        typed.remove_prefix(1);
    }
    for (auto g = m_groups.rbegin(); g != m_groups.rend(); ++g) {
        if (hostOnly && g->name != kHostCommandGroup) {
            continue;
        }
        for (const Command& command : g->commands) {
            if (equalNames(command.global, typed) || (!globalOnly && equalNames(command.local, typed))) {
                return &command;
            }
        }
    }
    for (const Alias& alias : m_aliases) {
        if (!globalOnly && equalNames(alias.name, typed)) {
            return find(alias.global);
        }
    }
    return nullptr;
}

std::vector<std::wstring> CommandStack::names() const {
    std::vector<std::wstring> names;
    for (const Group& g : m_groups) {
        for (const Command& command : g.commands) {
            names.push_back(command.local);
        }
    }
    std::sort(names.begin(), names.end());
    names.erase(std::unique(names.begin(), names.end()), names.end());
    return names;
}

std::wstring CommandStack::suggestion(std::wstring_view typed) const {
    if (typed.size() > 64) {
        return {};
    }
    const std::wstring word = foldName(typed.substr(std::min(typed.find_first_not_of(L"'_."), typed.size())));
    std::size_t least = word.size() < 4 ? 1 : 2;
    std::wstring best;
    for (const Group& g : m_groups) {
        for (const Command& command : g.commands) {
            const std::size_t away = distance(word, foldName(command.local));
            if (away < least || (away == least && best.empty())) {
                least = away;
                best = command.local;
            }
        }
    }
    return best;
}

}  // namespace korvex
