// The shortcut to the downloads folder on the user's desktop.
#pragma once

#include "core/Files.h"

namespace quillon {

/// Copies the shortcut of the programs menu to the desktop; one that is missing is passed over.
void MakeDesktopShortcut(Files& files);

/// Deletes the shortcut from the desktop, if it is there.
void RemoveDesktopShortcut(Files& files);

/// What the installer does: the shortcut in the programs menu, to the host folder `target`.
void MakeProgramsShortcut(Files& files, const std::string& target);

/// Makes the shortcuts that are there anew when they lead to the host folder `target` in another version's
/// way, or to `former`, where nothing is any more: the application folder has moved. Those of another one stay.
void RenewShortcuts(Files& files, const std::string& target, const std::string& former);

}  // namespace quillon
