// Undo inside a running command, and the whole undo steps of a drawing.
#pragma once

#include "host/db/kernel/journal.h"
#include "sdk/hxdoc.h"

#include <string>
#include <vector>

namespace korvex {

/// Marks of the running command, and marks that the user sets between commands.
class UndoController : public VrexUndoController {
public:
    explicit UndoController(HxDbDatabase& database) : m_database(database) {}

    void putSubCommandKnote() override;
    int subCommandKnoteCount() const override { return static_cast<int>(m_knotes.size()); }
    Hx::ErrorStatus undoInCommand(int count, bool quiet) override;

    /// A command starts or ends. Marks are set inside of commands only and go with them.
    void beginCommand() { m_inCommand = true; }
    void endCommand() {
        m_inCommand = false;
        m_knotes.clear();
    }

    /// Takes back, or does again, up to `count` whole steps, and gives their names, first done first. eNoUndo
    /// when there was none, eInvalidContext while a group is open; then nothing was done.
    Hx::ErrorStatus undo(std::size_t count, std::vector<std::wstring>& names);
    Hx::ErrorStatus redo(std::size_t count, std::vector<std::wstring>& names);
    std::size_t undoCount() const;
    std::size_t redoCount() const;

    /// A mark between steps, for undoToMark.
    void putMark();
    /// Takes back all steps since the last mark, and the mark. Without a mark eKeyNotFound.
    Hx::ErrorStatus undoToMark(std::vector<std::wstring>& names);

    /// Groups that the user opens over several commands.
    bool beginUserGroup();
    bool endUserGroup();
    bool isUserGroupOpen() const { return m_userGroup; }

private:
    void dropStaleMarks();

    HxDbDatabase& m_database;
    std::vector<Journal::Mark> m_knotes;
    std::vector<std::size_t> m_marks;  ///< number of steps below each
    bool m_inCommand = false;
    bool m_userGroup = false;
};

}  // namespace korvex
