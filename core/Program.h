// One running program: its roots, its stores, its variables, and the ports to the world outside.
#pragma once

#include <string>
#include <string_view>

#include "core/Files.h"
#include "core/Installation.h"
#include "core/Ports.h"
#include "core/ProfileStore.h"
#include "core/Random.h"
#include "core/SharedState.h"
#include "core/host/Registry.h"

namespace quillon {

/// Handed to every model and pipeline by reference; owned by the program's main or by a test. Several may
/// live in one process.
struct Program {
  const Installation& app;
  Files& files;
  ProfileStore& ini;
  Registry& registry;
  Random& random;
  SharedState& shared;
  Boxes& boxes;
  Shell& shell;
  Stage& stage;
  Watcher& watcher;

  /// Another process works on the same installation.
  bool otherInstanceRuns = false;
  /// What is being done, for the report of a run-time error.
  std::string step;
  /// A gate, a check or a cancelled screen kept the last command from being carried out.
  bool refused = false;

  void Step(std::string_view name) { step = name; }
  void Refuse() { refused = true; }
  /// Something that was cut short has been finished or taken back.
  void TellHealed(const std::string& text) {
    shared.HealedNote += (shared.HealedNote.empty() ? "" : "\n") + text;
    watcher.LabelChanged("frmMain", "lblHint", Label{text});
  }

  /// `path` below the Train Simulator folder.
  std::string BelowGame(std::string_view path) const { return shared.TrainSimPath + std::string(path); }
};

}  // namespace quillon
