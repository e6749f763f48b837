// A program put together: the stores of one installation, its variables, its screens.
#pragma once

#include <cstdint>
#include <memory>
#include <optional>
#include <string>

#include "core/Program.h"
#include "core/host/Desktop.h"
#include "core/host/ProfileFunctions.h"
#include "stage/OpenScreens.h"

namespace quillon {

/// Everything that a front end stands for.
class FrontEnd : public Boxes, public Shell, public Watcher, public Presenter, public CopyMeter {};

/// The model of the screen with this name; `program` outlives it.
std::unique_ptr<Screen> MakeScreen(Program& program, std::string_view name);

/// Owns what a Program refers to. Several may live in one process.
class RunningProgram {
 public:
  /// `appFolder` is a host path without a closing separator. `frontEnd` outlives the object. `files` stands
  /// in for the host's file system when it is given.
  RunningProgram(std::string appFolder, FrontEnd& frontEnd, std::optional<std::uint32_t> seed = {},
                 std::unique_ptr<FileSystem> files = {});

  /// Tells the program whether it is the only one on its installation; holds the lock from then on.
  void TakeLock();
  /// After TakeLock has found another: asks it to show its window; false when it has none.
  bool CallOther();
  /// Where other starts on the installation are heard of; null where they can't be.
  std::unique_ptr<StartCalls> HearOthers();

  Program& Get() { return program_; }
  OpenScreens& Screens() { return screens_; }

 private:
  std::string LockFile();

  const Installation app_;
  std::unique_ptr<FileSystem> host_;
  std::unique_ptr<ProfileFunctions> profiles_;
  std::unique_ptr<Registry> registry_;
  std::unique_ptr<InstanceLock> lock_;
  Random random_;
  Files files_;
  ProfileStore ini_;
  SharedState shared_;
  OpenScreens screens_;
  Program program_;
};

}  // namespace quillon
