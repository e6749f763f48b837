// What a route's user has made, and where it is kept while the route is not loaded: saved activities,
// activities, paths, services and traffic.
#pragma once

#include <string>

#include "core/Program.h"
#include "shelf/Rescue.h"

namespace quillon {

/// Copies what matches `pattern` from a store to `game`, both with a closing backslash, and records which
/// files did not come through.
void CopyFromStore(Program& program, const std::string& store, const std::string& game,
                   const std::string& pattern);

/// Makes a store equal to what the game has. What it held before and holds no longer goes to the shelf first.
/// The game's files stay. Raises the RunTimeError of a file that can't be copied: the game's are the only
/// ones then.
class RouteStores {
 public:
  /// `rescue` outlives the object, and is the caller's to close.
  RouteStores(Program& program, std::string zip, Rescue& rescue);

  /// The saved activities of the working route.
  void RenewSaves();
  /// Activities, paths, services and traffic of the working route.
  void RenewActivities();
  /// After a load of this route that was cut short: saves that the game has, and that neither this store nor
  /// that of `putAway` holds, are added. Nothing is deleted. Returns how many.
  int AddSaves(const std::string& putAway);
  /// A game that was installed anew has lost its saves: those of the store go to the shelf and come back.
  /// False, and nothing is done, when the game has any.
  bool KeepSavesOfLostGame();

 private:
  void Renew(const std::string& source, const std::string& store, const char* pattern, bool makeAlways);

  Program& program_;
  Files& files_;
  const std::string zip_, gameSaves_;
  Rescue& rescue_;
};

}  // namespace quillon
