// What the bodies of the host's commands share: the drawing, messages, making entities.
#pragma once

#include "host/editor/ask.h"
#include "sdk/hxads.h"
#include "sdk/hxdbdatabase.h"

#include <string>
#include <vector>

namespace korvex {

/// The drawing of the running command.
HxDbDatabase& drawing();

/// A message on a line of its own.
void say(const std::wstring& message);
/// What was asked for could not be done: a message, and the command counts as failed.
void refuse(const std::wstring& message);
/// "(eWasOpenForRead: others have it open for read)" for the end of a message.
std::wstring because(Hx::ErrorStatus status);
std::wstring quoted(const std::wstring& name);
/// Filled with blanks to the width of a column, one at least.
std::wstring column(std::wstring text, std::size_t width);

/// One of a command's options.
struct CommandOption {
    const wchar_t* keyword;
    void (*run)();
};
/// Asks for options and runs them until there is no keyword any more.
void runOptions(const std::vector<CommandOption>& options);

/// A new entity of the current space, with the current layer, linetype, colour and lineweight.
class NewEntity {
public:
    explicit NewEntity(const wchar_t* type);
    ~NewEntity();
    NewEntity(const NewEntity&) = delete;
    NewEntity& operator=(const NewEntity&) = delete;

    NewEntity& text(short code, const std::wstring& value);
    NewEntity& point(short code, const HxGePoint3d& value);
    NewEntity& real(short code, double value);
    NewEntity& integer(short code, short value);
    /// False, with a message, when the drawing does not take it.
    bool make();

private:
    resbuf* add(short code);

    std::wstring m_type;
    resbuf* m_first = nullptr;
    resbuf* m_last = nullptr;
};

/// The floating viewports of the active layout, or of all layouts.
std::vector<HxDbObjectId> floatingViewports(HxDbDatabase& database, bool ofAllLayouts);

}  // namespace korvex
