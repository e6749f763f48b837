// Pack Route: an installed route becomes a zip among the downloads, without the game's own files.
#pragma once

#include <functional>
#include <string>
#include <unordered_set>

#include "core/Program.h"
#include "core/Progress.h"
#include "core/archive/ArchiveWriter.h"

namespace quillon {

class PackRoute {
 public:
  /// `PackParent` is the folder that holds the route's folder `PackName`; neither has a closing backslash.
  PackRoute(Program& program, Progress& progress, std::string PackParent, std::string PackName);

  /// Leaves "QNPacked-" and the name as a zip in downloaded_routes. The route itself is not touched.
  void Run();

 private:
  void DeleteOldArchives();
  void ReadDefaultFiles();
  void SkipScan();
  void AddScan();
  void Zip();
  void MakeSavesFolder();
  void TellProgress();

  std::string ArchivePath(const char* extension) const;

  Program& program_;
  Files& files_;
  Progress& progress_;
  const std::string PackParent, PackName, route_;
  ArchiveWriter xzipper1_;
  std::unordered_set<std::string> PackSkipList;  // full paths, lower case
};

}  // namespace quillon
