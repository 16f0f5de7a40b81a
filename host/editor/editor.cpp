// Makes the editor.
#include "host/editor/editor.h"

#include "host/editor/command_processor.h"
#include "host/editor/command_stack.h"
#include "host/editor/commands/host_commands.h"
#include "host/editor/documents.h"
#include "host/editor/system_variables.h"

namespace korvex {

Editor::Editor()
    : m_commands(std::make_unique<CommandStack>()), m_documents(std::make_unique<DocumentManager>()),
      m_processor(std::make_unique<CommandProcessor>(*this)) {
    registerHostCommands(*m_commands);
    hxrxSysRegistry()->atPut(L"VREX_REGISTERED_COMMANDS", m_commands.get());
    m_console.setQuiet(hxedIsQuiet);
}

Editor::~Editor() { hxrxSysRegistry()->remove(L"VREX_REGISTERED_COMMANDS"); }

InitGet Editor::takeInitGet() {
    InitGet init = std::move(m_initGet);
    m_initGet = InitGet();
    return init;
}

Editor& editor() {
    static Editor theEditor;
    return theEditor;
}

}  // namespace korvex
