// The user of layer states in tests.
#pragma once

#include "layer_states/file/layer_state_questions.h"

namespace korvex::test {

/// Answers as it is set, and writes down what it was asked and told: "overwrite A,B".
class RecordingQuestions : public LayerStateQuestions {
public:
    Overwrite mayOverwrite(const Names& states) override {
        add(L"overwrite", states);
        return overwrite;
    }
    bool mayRestore(const CStdStr<wchar_t>& state) override {
        add(L"restore", {state});
        return false;
    }
    void tellMissingLinetypes(const Names& linetypes) override { add(L"linetypes", linetypes); }
    void tellUnusablePlotStyles(const Names& plotStyles) override { add(L"plot styles", plotStyles); }
    void tellPlotStylesLeftOut(const Names& plotStyles) override { add(L"left out", plotStyles); }
    void tellChangedNames(const Names& names) override { add(L"changed", names); }
    void tellNotImported(const CStdStr<wchar_t>&, const KvLasFailure& failure) override {
        add(L"not imported", {std::to_wstring(failure.line)});
        kind = failure.kind;
    }
    void tellNotExported(const CStdStr<wchar_t>&, const CStdStr<wchar_t>& reason) override {
        add(reason.empty() ? L"not exported without a reason" : L"not exported", {});
    }
    void tellBrokenName(const CStdStr<wchar_t>& name) override { add(L"broken", {name}); }
    void tellNoStates(const CStdStr<wchar_t>&, const CStdStr<wchar_t>& reason) override {
        add(reason.empty() ? L"no states" : L"unreadable", {});
    }

    std::vector<std::wstring> log;
    Overwrite overwrite = Overwrite::yes;
    KvLasFailure::Kind kind = KvLasFailure::none;

private:
    void add(const std::wstring& what, const Names& names) {
        std::wstring line = what;
        for (const CStdStr<wchar_t>& name : names) {
            line += (line == what ? L" " : L",") + name;
        }
        log.push_back(line);
    }
};

}  // namespace korvex::test
