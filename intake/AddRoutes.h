// The add-routes driver: from the zips in `downloaded_routes` to catalogued route files.
#pragma once

#include <functional>

#include "intake/IntakeState.h"

namespace quillon {

/// What the bar says when there is nothing to add.
inline constexpr const char* kNothingFound = "No new routes found.";

class AddRoutes {
 public:
  /// `cancelCheckpoint` is asked twice on the way; whatever it does, the intake runs to its end.
  AddRoutes(Program& program, Progress& progress, std::function<void()> cancelCheckpoint)
      : state_(program, progress), cancelCheckpoint_(std::move(cancelCheckpoint)) {}

  void Run();

 private:
  bool NothingToAdd();
  void PrepareDownloads();
  void RequireMasters();
  void RefuseEqualNames();
  void Classify();
  void Rebuild();
  void RemoveWorkingZips();
  void RemoveRebuiltOriginals();
  void KeepOlderOriginals();
  void TellResult();

  IntakeState state_;
  const std::function<void()> cancelCheckpoint_;
};

}  // namespace quillon
