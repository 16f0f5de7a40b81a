// The change journal: the one way back for undo, redo, aborted transactions and undo inside a command.
#pragma once

#include "host/db/kernel/stub.h"
#include "sdk/hxdbdatabase.h"

namespace korvex {

/// Records of every object and header value the state before its first change since the last mark. Rolling
/// back to a mark restores the states in reverse order and sends the notifications that such changes send.
class Journal {
public:
    explicit Journal(HxDbDatabase& database) : m_database(database) {}

    /// A place to roll back to. Valid until something before it is rolled back.
    using Mark = std::size_t;
    Mark putMark();
    /// Takes back everything since the mark, for good.
    void rollbackTo(Mark mark);

    /// Begins an undo step; groups nest, the outermost counts. A group without changes vanishes.
    void beginGroup(const std::wstring& name);
    void endGroup();
    int nesting() const { return m_nesting; }

    /// Whole steps, newest first. eNoUndo when there is none; eInvalidContext inside a group.
    Hx::ErrorStatus undo();
    Hx::ErrorStatus redo();
    std::size_t undoCount() const;
    std::size_t redoCount() const { return m_redo.size(); }
    /// Names of the next step to undo or redo; empty when there is none.
    std::wstring undoName() const;
    std::wstring redoName() const;
    /// A new change was made: what was undone cannot be redone.
    void clearRedo() { m_redo.clear(); }
    /// Forgets all steps (after reading a drawing).
    void clear();
    /// What the drawing is now is what its file holds: coming back here by undo or redo makes it unmodified.
    void markSaved();

    /// Changes while it lives are steps like any other but leave the drawing unmodified: which space is
    /// looked at. They are saved with the next real change.
    class Looking {
    public:
        explicit Looking(const HxDbDatabase& database);
        ~Looking();
        Looking(const Looking&) = delete;
        Looking& operator=(const Looking&) = delete;

    private:
        Journal& m_journal;
    };
    bool isLooking() const { return m_looking > 0; }

    // Called by the kernel, before the change.
    void recordChange(HxDbStub& stub);
    void recordAppend(HxDbStub& stub);
    void recordHeader(const std::string& name);
    /// Takes back the recording of an object if it is the last one and was made at `size` or later.
    void forgetLast(HxDbStub& stub, std::size_t size);

    std::size_t size() const { return m_entries.size(); }
    std::uint32_t segment() const { return m_segment; }
    /// Recording is off while a drawing is being read.
    bool recording = false;

private:
    enum class Kind : std::uint8_t { changed, appended, header };
    struct Entry {
        Kind kind = Kind::changed;
        HxDbStub* stub = nullptr;
        Blob blob;
        bool erased = false;
        bool unappended = false;
        bool implicit = false;
        bool looking = false;
        std::string headerName;
    };
    struct Group {
        std::wstring name;
        std::size_t first;
    };
    struct Redo {
        std::wstring name;
        std::vector<Entry> entries;  ///< newest state first
    };

    Entry stateOf(const Entry& like) const;
    static Entry stateOf(Kind kind, HxDbStub& stub);
    void beginRestoring(const std::vector<HxDbStub*>& stubs);
    void endRestoring(const std::vector<HxDbStub*>& stubs);
    void restore(const Entry& entry);
    void restoreObject(const Entry& entry);
    void restoreHeader(const Entry& entry);
    std::vector<Entry> rollback(std::size_t first);
    void push(Entry entry);
    void closeLooseGroup();
    void dropEmptyGroups();
    void updateModified();
    bool differsFromSaved() const;
    bool undoneIsLooking() const;

    HxDbDatabase& m_database;
    std::vector<Entry> m_entries;
    std::vector<Group> m_groups;
    std::vector<Redo> m_redo;
    int m_nesting = 0;
    int m_looking = 0;
    bool m_loose = false;  ///< the last group was begun by a change outside of any
    std::uint32_t m_segment = 1;
    std::size_t m_saved = 0;  ///< entries when the drawing was saved; kNeverSaved when there is no way back
    static constexpr std::size_t kNeverSaved = static_cast<std::size_t>(-1);
};

Journal& journal(const HxDbDatabase& database);

}  // namespace korvex
