// The consists, services and activities of a game.
#pragma once

#include <cstdint>
#include <memory>
#include <string>
#include <string_view>
#include <vector>

#include "core/Program.h"

namespace quillon {

/// One file, as its folder's listing tells of it.
struct GameFile {
  std::shared_ptr<const std::string> folder;  // with its closing backslash, in lower case below the game
  std::string shown;                          // as the disk spells it, from where the listing began
  std::uint64_t size = 0;                     // bytes
  std::int64_t modified = 0;                  // nanoseconds since 1970

  /// In lower case.
  std::string Name() const;
  std::string Path() const { return *folder + Name(); }
};

/// The files of one folder, which is given with its closing backslash; `extension` with its point.
std::vector<GameFile> ListGameFiles(Program& program, const std::string& folder, std::string_view extension);

/// Adds those of `more` whose paths are not among `files`. Both are, and stay, in the order of a listing.
void AddAsListed(std::vector<GameFile>& files, std::vector<GameFile> more);

/// By full paths, sorted without regard to case: each route's files come together.
struct RouteFileLists {
  std::vector<GameFile> lstServices, lstAllActivities;
};

/// Walks all route folders once, through links, too.
RouteFileLists WalkRoutes(Program& program);

/// One file of a route, taken apart.
struct FileOfRoute {
  std::string folder;  // with its closing backslash
  std::string name;    // with extension
  std::string route;   // what lies between the folder of the routes and `kind`
};

/// `kind` is the folder that the files lie in, between backslashes.
FileOfRoute TakeApart(const Program& program, const std::string& path, std::string_view kind);

}  // namespace quillon
