// What would end a load halfway, found out before its first change.
#pragma once

#include <cstdint>
#include <string>
#include <unordered_set>
#include <vector>

#include "catalogue/LoadLists.h"
#include "catalogue/RouteMap.h"
#include "core/Program.h"
#include "core/archive/ArchiveReader.h"

namespace quillon {

/// Raises the RunTimeError that the load would meet later. Changes nothing.
class LoadPreflight {
 public:
  LoadPreflight(Program& program, const std::string& workingRoute, const ArchiveReader& archive,
                const RouteMap& map, const LoadLists& lists)
      : program_(program),
        files_(program.files),
        WorkingRoute(workingRoute),
        archive_(archive),
        map_(map),
        lists_(lists) {}

  void Run();
  /// After Run: what the load needs of each disk, and what is free there, when a disk is nearly full; else
  /// empty.
  std::string TightRoom() const { return tightRoom_; }
  /// After Run: which files of the route will cover one, in the order of its map.
  const std::vector<bool>& Covered() const { return covered_; }

 private:
  void RequireFolders();
  void ReadLists();
  void RefuseReadOnlyBackups();
  void RequireRoom();
  std::uint64_t RoomOfFiles(const std::string& pattern) const;
  std::uint64_t RoomOfRoute() const;
  std::uint64_t RoomOfPuttingAway() const;
  std::uint64_t RoomFreed() const;
  void RequireTextureFolders();
  bool GoesBeforehand(const std::string& upperPath) const;
  void RequireWritablePlaces();
  std::vector<std::string> StoresAndLists();
  bool BringsNewConsist();
  void RefuseImpossiblePaths();
  void RefuseTakenBackups();
  bool StandsAfterwards(const std::string& path);
  bool StandsAfterwards(const std::string& path, bool standsNow);

  Program& program_;
  Files& files_;
  const std::string& WorkingRoute;
  const ArchiveReader& archive_;
  const RouteMap& map_;
  const LoadLists& lists_;
  std::string tightRoom_;
  std::vector<bool> covered_;
  std::unordered_set<std::string> removed_;   // paths that the load deletes first, upper case
  std::vector<std::string> coveredFiles_;     // lines of default.tsl whose file is there
  std::vector<std::string> lostBackups_;      // backups that go because something stands in their old place
  std::unordered_set<std::string> restored_;  // paths of default files that it gives back, upper case
};

}  // namespace quillon
