// What the installer does.
#pragma once

#include <optional>
#include <string>

#include "core/Program.h"

namespace quillon {

/// Lays the delivered tree under the application folder, as LayDeliveredFiles has it, and makes the
/// registry's keys. `deliveredTree` is the host folder that holds `resources`; one that the application
/// folder overlaps is refused.
void LayDelivered(Program& program, const std::string& deliveredTree);

/// LayDelivered, and the shortcut in the programs menu. With `game` stores the game's folder and derives
/// the lists of default files from it.
void SetUp(Program& program, const std::string& deliveredTree, const std::optional<std::string>& game);

/// Raises an error, with nothing changed, unless the application folder is one.
void RequireSetUp(Program& program);

/// The same for a program that lays it out by itself: unless it is one or can become one.
void RequireLayable(Program& program);

/// Lays the delivered tree, as SetUp does, when the application folder has none yet; else Renew.
void SetUpOrRenew(Program& program);

/// At the start of a program that is set up: renews what another version has laid, and the shortcuts when the
/// application folder has moved. Reads one small file when there is nothing to do.
void Renew(Program& program, const std::string& deliveredTree);

/// The host folder of the delivered tree, found from the running program; empty when there is none.
std::string DeliveredTree();

}  // namespace quillon
