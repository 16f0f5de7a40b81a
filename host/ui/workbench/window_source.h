// The user before the window as a source of answers.
#pragma once

#include "host/editor/input_source.h"
#include "host/ui/workbench/dialogue.h"

#include <QPointer>

namespace korvex {

/// Lies below all scripts and is never dry while the window lives.
class WindowSource : public InputSource {
public:
    explicit WindowSource(Dialogue* dialogue) : m_dialogue(dialogue) {}

    bool next(const InputRequest& request, Token& token) override;
    bool isDry() const override { return m_dialogue.isNull(); }
    bool isInteractive() const override { return true; }
    void interrupt() override;

private:
    QPointer<Dialogue> m_dialogue;
};

}  // namespace korvex
