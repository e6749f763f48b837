// Lists the files that the game's default routes share: the raw material of the delivered lists.
#pragma once

#include <functional>
#include <string>
#include <string_view>

#include "core/Program.h"

namespace quillon {

/// Walks TEMPLATE and the six default routes and finds each file once by its place in a route, the folders
/// left out in which every route has files of its own.
class DefaultFileScan {
 public:
  explicit DefaultFileScan(Program& program) : program_(program) {}

  /// Appends the full path of each file to stuff.tsl.
  void Run();

  /// Fills copyfiles.tsl and filelist.tsl from the user's game, each only while it is an empty master.
  void DeriveLists();

 private:
  struct DefaultFile {
    std::string_view source;   // such as "\\Routes\\USA2", below the game
    std::string folder, name;  // full folder with closing backslash, below the source in lower case
    std::string place;         // within a route, with a leading backslash, in lower case
  };
  void ForEachFile(const std::function<void(const DefaultFile&)>& action);
  static bool BelongsToOneRoute(const DefaultFile& file);

  Program& program_;
};

}  // namespace quillon
