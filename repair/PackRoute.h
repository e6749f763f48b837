// Pack Route: an installed route becomes a zip among the downloads, without the game's own files.
#pragma once

#include <functional>
#include <optional>
#include <string>
#include <unordered_map>
#include <unordered_set>
#include <vector>

#include "core/FolderWay.h"
#include "core/Program.h"
#include "core/Progress.h"
#include "core/archive/ArchiveWriter.h"
#include "shelf/Rescue.h"

namespace quillon {

class PackRoute {
 public:
  /// `PackParent` is the folder that holds the route's folder `PackName`; neither has a closing backslash.
  /// `folder` is that folder as the disk spells it.
  PackRoute(Program& program, Progress& progress, std::string PackParent, std::string PackName,
            std::string folder);

  /// Leaves "QNPacked-" and the name as a zip in downloaded_routes, and makes sure that it holds all that was
  /// to be packed. The route itself is not touched. Raises RunTimeErrors for what can't be packed. False when
  /// the user has given it up: all is as before then.
  bool Run();
  /// After Run: takes the folder and its saved activities out of the game. What the zip has not, and nothing
  /// else holds, goes to the shelf. False when the folder, or a part of it, could not go.
  bool RemoveFolder();

 private:
  using FileAction = std::function<void(const std::string& folder, const std::string& name)>;

  void Pack();
  void TakeBack();
  void SetOldArchiveAside();
  void WalkRoute(const FileAction& action);
  void WalkFolder(const std::string& folder, bool link, FolderWay& way, const FileAction& action);
  void Add(const std::string& folder, const std::string& name);
  void RequireComplete();
  void DropOldArchiveIfContained();
  bool IsGamesOwn(const std::string& path);
  bool IsHeld(const std::string& folder, const std::string& name);
  void ReadDefaultFiles();
  void SkipScan();
  void AddScan();
  void Zip();
  void FinishZip();
  void MakeSavesFolder();
  void TellProgress();

  std::string ArchivePath(const char* extension) const;
  std::string Log() const { return program_.app.TrainRecord("packedup.log"); }

  Program& program_;
  Files& files_;
  Progress& progress_;
  const std::string PackParent, PackName, route_, folder_;
  ArchiveWriter xzipper1_;
  std::unordered_set<std::string> PackSkipList;                // full paths, lower case
  std::unordered_map<std::string, FileSystem::Stamp> packed_;  // by stored name, lower case
  std::optional<Rescue> aside_;                                // holds an older zip
  std::string oldArchive_;                                     // the rescue's folder
  std::optional<std::uint64_t> logSize_;
  std::uint64_t filesSeen_ = 0;
};

}  // namespace quillon
