// REGEN and REDRAW: the screen is drawn anew.
#include "host/editor/commands/command_support.h"
#include "host/editor/commands/host_commands.h"

namespace korvex {

void regenCommand() {
    say(L"Regenerating the drawing.");
    hxedRedraw(nullptr, 1);
}

void redrawCommand() { hxedRedraw(nullptr, 1); }

}  // namespace korvex
