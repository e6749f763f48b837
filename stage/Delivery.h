// What the program brings along: laid below the application folder, and renewed by another version.
#pragma once

#include <string>

#include "core/Program.h"

namespace quillon {

/// Lays what is missing of the delivered tree, renews what another version has laid, and removes what this
/// one no longer has; goes on where an earlier call was cut short. A list beside the laid files holds the sum
/// of each as it was delivered: what still has it is the program's and follows the versions, all else is the
/// user's own and stays. So do settings, and in an installation without the list all that differs; only the
/// help is nobody's but the program's. `tree` is the host folder that holds `resources`.
void LayDeliveredFiles(Program& program, const std::string& tree);

/// What the list says at its beginning.
struct DeliveryNote {
  std::string release;  // that has laid the files; empty without a list, and when the laying was cut short
  std::string folder;   // the host path of the application folder
};
DeliveryNote ReadDeliveryNote(Program& program);

/// Notes that the application folder has moved to where it is.
void NoteAppFolder(Program& program);

}  // namespace quillon
