// What would end a load halfway, found out before its first change.
#pragma once

#include <cstdint>
#include <string>
#include <unordered_set>
#include <vector>

#include "core/Program.h"
#include "core/archive/ArchiveReader.h"
#include "loading/RouteMap.h"

namespace quillon {

/// Raises the RunTimeError that the load would meet later. Changes nothing.
class LoadPreflight {
 public:
  LoadPreflight(Program& program, const std::string& workingRoute, const ArchiveReader& archive,
                const RouteMap& map)
      : program_(program), files_(program.files), WorkingRoute(workingRoute), archive_(archive), map_(map) {}

  void Run();

 private:
  void RequireFolders();
  void ReadLists();
  void RefuseReadOnlyBackups();
  void RequireRoom();
  void RequireWritablePlaces();
  std::vector<std::string> StoresAndLists();
  bool BringsNewConsist();
  void RefuseImpossiblePaths();
  void RefuseTakenBackups();
  bool StandsAfterwards(const std::string& path);

  Program& program_;
  Files& files_;
  const std::string& WorkingRoute;
  const ArchiveReader& archive_;
  const RouteMap& map_;
  std::unordered_set<std::string> removed_;   // paths that the load deletes first, upper case
  std::vector<std::string> loadedFiles_;      // lines of current.tsl
  std::vector<std::string> coveredFiles_;     // lines of default.tsl whose file is there
  std::vector<std::string> lostBackups_;      // backups that go because something stands in their old place
  std::unordered_set<std::string> restored_;  // paths of default files that it gives back, upper case
};

}  // namespace quillon
