// The game's folder as the system needs it: a full installation, and the folders beside the routes.
#pragma once

#include <string>

#include "core/Program.h"

namespace quillon {

/// The gate before intake and load. Reads `TrainSimPath` from the settings, tests the default routes, makes
/// what is missing. False when the game is not whole: the user has been told, and the program is ending.
bool PrepareGameFolders(Program& program);
/// The tree of the shared extras. An existing folder is taken as complete.
void MakeExtras(Program& program);

/// A box for each default route that is missing; then the program ends. True when none is.
bool CheckFullInstall(Program& program);

/// `[TrainSim]` "Train.exe" is "No": the user is sent to the options. True when the game was found.
bool GameWasFound(Program& program);

/// A path that a picker gave, as a text of the system: what lies in the game's folder gets that folder's text
/// in front and backslashes behind it.
std::string TextOfHostPath(Program& program, const std::string& path);

/// What is wrong, and what to do about it, when the user may not change what has to be changed in the
/// application folder, or in the game at `folder`; empty when all is well or there is no game.
std::string MissingRights(Program& program, const std::string& folder);

/// Keeps `path` as the game's folder in the stores, as the options do on OK. False, with a box, when it is no
/// folder.
bool StoreGameFolder(Program& program, const std::string& path);

}  // namespace quillon
