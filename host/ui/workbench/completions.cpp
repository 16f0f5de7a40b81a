// Collects command names, system variables and keywords.
#include "host/ui/workbench/completions.h"

#include "host/editor/command_stack.h"
#include "host/editor/editor.h"
#include "host/editor/system_variables.h"
#include "host/ui/workbench/prompt_text.h"

#include <algorithm>

namespace korvex {

namespace {

void addNames(const QString& typed, const QString& prefix, std::vector<Completion>& out) {
    for (const std::wstring& name : editor().commands().names()) {
        const QString word = QString::fromStdWString(name);
        if (word.startsWith(typed, Qt::CaseInsensitive)) {
            out.push_back({prefix + word, false});
        }
    }
    for (const SystemVariable* variable : systemVariables()) {
        const QString word = QString::fromWCharArray(variable->name);
        const auto hasWord = [&](const Completion& other) { return other.word == prefix + word; };
        if (word.startsWith(typed, Qt::CaseInsensitive) && std::none_of(out.begin(), out.end(), hasWord)) {
            out.push_back({prefix + word, true});
        }
    }
}

}  // namespace

std::vector<Completion> completionsOf(const QString& typed, const InputRequest& request) {
    std::vector<Completion> out;
    const bool isTransparent = typed.startsWith('\'');
    if (isTransparent || request.wants == InputRequest::Wants::command) {
        addNames(isTransparent ? typed.mid(1) : typed, isTransparent ? "'" : "", out);
        return out;
    }
    for (const QString& keyword : promptKeywords(request)) {
        if (keyword.startsWith(typed, Qt::CaseInsensitive)) {
            out.push_back({keyword, false});
        }
    }
    return out;
}

QString commonBeginning(const std::vector<Completion>& completions) {
    if (completions.empty()) {
        return {};
    }
    QString common = completions.front().word;
    for (const Completion& completion : completions) {
        while (!completion.word.startsWith(common, Qt::CaseInsensitive)) {
            common.chop(1);
        }
    }
    return common;
}

}  // namespace korvex
