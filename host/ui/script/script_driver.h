// Modal dialogs, message boxes and menus in scripts: the script's next lines act on them.
#pragma once

namespace korvex {

/// Has an eye on windows that wait for the user from now on: while the answers come from a script, its next
/// lines act on the topmost one, a line whenever the event loop has nothing else to do. Windows that are left
/// when the script ends are closed as by Esc, which counts as a failure. Where a user sits before the command
/// line it does nothing. Again changes nothing; needs a QApplication.
void watchModalLoops();

/// Nobody sits before this run: a window that waits while there is no script is closed, too. Else it is left
/// to whoever opened it.
void setUnattended(bool unattended);

}  // namespace korvex
