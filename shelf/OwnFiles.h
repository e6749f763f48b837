// Which files of the working route are the user's own work: what the system put there is held elsewhere, too.
#pragma once

#include <list>
#include <string>
#include <string_view>
#include <vector>

#include "core/archive/ArchiveIndex.h"
#include "shelf/PlacedRecord.h"
#include "shelf/Rescue.h"

namespace quillon {

class OwnFiles {
 public:
  /// `zips` are the routes whose files may stand in the working route: one, or two after a load that was cut
  /// short, which may have left a file half written.
  OwnFiles(Program& program, std::vector<std::string> zips);

  /// Whether nothing but the file at `path`, in the working route, holds its bytes. False for links, folders
  /// and what the game makes again by itself.
  bool IsOwn(const std::string& path);
  void KeepIfOwn(Rescue& rescue, const std::string& path) {
    if (IsOwn(path)) rescue.Keep(path);
  }
  /// What lies among the saved activities of the working route and in no store.
  void KeepSaves(Rescue& rescue);
  /// All own files below a folder; `each` is called after every file there, own or not.
  void KeepBelow(Rescue& rescue, const std::string& folder, const Files::Each& each = {});

 private:
  bool IsHeldElsewhere(const std::string& path, const FileSystem::Stamp& stamp);
  bool IsHeldAs(const std::string& below, const std::string& path);
  bool IsInAStore(const std::string& below, const std::string& path);
  bool IsOfTheGame(const std::string& below, const std::string& path);

  Program& program_;
  Files& files_;
  const std::string route_;  // the working route
  const std::vector<std::string> zips_;
  std::list<ArchiveIndex> archives_;
  const PlacedRecord placed_;
};

}  // namespace quillon
