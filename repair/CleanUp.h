// Clean-up: throws the working route away and builds it again from the game's own files.
#pragma once

#include "catalogue/Catalogue.h"
#include "core/Program.h"
#include "core/Progress.h"
#include "shelf/Rescue.h"

namespace quillon {

class CleanUp {
 public:
  CleanUp(Program& program, Progress& progress)
      : program_(program), files_(program.files), progress_(progress), catalogue_(program) {}

  void Run();

 private:
  void RequireSources();
  void FillEmptyLists();
  void RequireWritablePlaces();
  void RequireRemovable(const std::string& folder);
  void RequireRoom();
  std::uint64_t RoomOf(const std::string& path);
  std::uint64_t RoomNeeded();
  void PutLoadedRouteAway();
  void RescueOwnWork(Rescue& rescue, const std::string& loaded, const std::string& cut);
  void RemoveWorkingRoute();
  void MakeFolders();
  void CopyGameFolders();
  void CopyDefaultFiles();
  bool IsThere(const std::string& source);
  void MakeWritable(const std::string& folder);
  void ResetLists();
  void RecordCleanUp();

  Program& program_;
  Files& files_;
  Progress& progress_;
  Catalogue catalogue_;
  std::string healed_;  // what became of a run that was cut short
  bool roomIsTight_ = false;
  std::uint64_t filesThere_ = 0;  // in the working route
  std::uint64_t roomFreed_ = 0;   // bytes that the working route gives back; only counted when room is tight
};

}  // namespace quillon
