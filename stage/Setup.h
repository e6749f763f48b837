// What the installer does.
#pragma once

#include <optional>
#include <string>

#include "core/Program.h"

namespace quillon {

/// Lays the delivered tree under the application folder, never over a file that is there, and makes the
/// registry's keys. `deliveredTree` is the host folder that holds `resources`.
void LayDelivered(Program& program, const std::string& deliveredTree);

/// LayDelivered, and the shortcut in the programs menu. With `game` stores the game's folder and derives
/// the lists of default files from it.
void SetUp(Program& program, const std::string& deliveredTree, const std::optional<std::string>& game);

/// Lays the delivered tree, as SetUp does, when the application folder has none yet.
void SetUpIfNeeded(Program& program);

/// The host folder of the delivered tree, found from the running program; empty when there is none.
std::string DeliveredTree();

}  // namespace quillon
