// Undo by marks of the change journal.
#include "host/editor/undo_controller.h"

#include "host/editor/editor.h"

HX_DEFINE_MEMBERS(VrexUndoController, HxRxObject)

namespace korvex {

namespace {

/// Repeats one step of the journal.
template <class Step, class Name>
Hx::ErrorStatus repeat(std::size_t count, std::vector<std::wstring>& names, Step step, Name name) {
    names.clear();
    for (std::size_t i = 0; i < count; ++i) {
        const std::wstring next = name();
        const Hx::ErrorStatus status = step();
        if (status != Hx::eOk) {
            return names.empty() ? status : Hx::eOk;
        }
        names.push_back(next);
    }
    return Hx::eOk;
}

}  // namespace

void UndoController::putSubCommandKnote() {
    if (m_inCommand) {
        m_knotes.push_back(journal(m_database).putMark());
    }
}

Hx::ErrorStatus UndoController::undoInCommand(int count, bool quiet) {
    if (m_knotes.empty() || count == 0) {
        return Hx::eNoUndo;
    }
    const std::size_t wanted = count < 0 ? 1 : static_cast<std::size_t>(count);
    const std::size_t steps = std::min(wanted, m_knotes.size());
    const Journal::Mark mark = m_knotes[m_knotes.size() - steps];
    m_knotes.resize(m_knotes.size() - steps);
    journal(m_database).rollbackTo(mark);
    if (!quiet) {
        editor().console().message(steps == 1
                                       ? L"The last step is undone."
                                       : L"The last " + std::to_wstring(steps) + L" steps are undone.");
    }
    return Hx::eOk;
}

Hx::ErrorStatus UndoController::undo(std::size_t count, std::vector<std::wstring>& names) {
    Journal& steps = journal(m_database);
    const Hx::ErrorStatus status = repeat(
        count, names, [&] { return steps.undo(); }, [&] { return steps.undoName(); });
    dropStaleMarks();
    return status;
}

Hx::ErrorStatus UndoController::redo(std::size_t count, std::vector<std::wstring>& names) {
    Journal& steps = journal(m_database);
    return repeat(
        count, names, [&] { return steps.redo(); }, [&] { return steps.redoName(); });
}

std::size_t UndoController::undoCount() const { return journal(m_database).undoCount(); }
std::size_t UndoController::redoCount() const { return journal(m_database).redoCount(); }

void UndoController::dropStaleMarks() {
    while (!m_marks.empty() && m_marks.back() > undoCount()) {
        m_marks.pop_back();
    }
}

void UndoController::putMark() { m_marks.push_back(undoCount()); }

Hx::ErrorStatus UndoController::undoToMark(std::vector<std::wstring>& names) {
    names.clear();
    if (m_marks.empty()) {
        return Hx::eKeyNotFound;
    }
    const Hx::ErrorStatus status = undo(undoCount() - m_marks.back(), names);
    if (status == Hx::eOk) {
        m_marks.pop_back();
    }
    return status;
}

bool UndoController::beginUserGroup() {
    if (m_userGroup) {
        return false;
    }
    journal(m_database).beginGroup(L"GROUP");
    return m_userGroup = true;
}

bool UndoController::endUserGroup() {
    if (!m_userGroup) {
        return false;
    }
    journal(m_database).endGroup();
    m_userGroup = false;
    return true;
}

}  // namespace korvex
