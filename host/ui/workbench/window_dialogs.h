// The dialogs of the host's commands, before the workbench.
#pragma once

#include "host/editor/user_dialogs.h"

class QWidget;

namespace korvex {

class WindowDialogs : public UserDialogs {
public:
    /// `parent` outlives it.
    explicit WindowDialogs(QWidget* parent) : m_parent(parent) {}

    YesNoCancel askToSave(const std::wstring& title) override;
    std::vector<std::wstring> askFilesToOpen() override;
    std::wstring askFileToSave(const std::wstring& current) override;
    void tellFailure(const std::wstring& text) override;

private:
    QWidget* m_parent;
};

}  // namespace korvex
