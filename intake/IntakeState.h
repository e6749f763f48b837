// What the passes of one intake hand to each other.
#pragma once

#include <functional>
#include <string>
#include <vector>

#include "catalogue/IntakeJournal.h"
#include "core/Program.h"
#include "core/Progress.h"
#include "core/archive/ArchiveReader.h"
#include "intake/IntakeRecord.h"

namespace quillon {

/// The lists and flags of the intake, by their names, and what every pass needs. Lists keep the order of
/// insertion.
struct IntakeState {
  IntakeState(Program& runningProgram, Progress& screen)
      : program(runningProgram), progress(screen), record(runningProgram), journal(runningProgram) {}

  Program& program;
  Progress& progress;
  IntakeRecord record;
  IntakeJournal journal;

  /// Zip names still in the running, those whose information was extracted, and those set aside.
  std::vector<std::string> ListofRouteZips, ListFinal, ListBadFiles;
  /// A fault of the archive reader; what comes after classification leaves it alone.
  bool BadZipFlag = false;
  /// Zips copied into `routes`.
  int RoutesCopied = 0;

  std::string Download(const std::string& zip) const {
    return program.app.DownloadedRoutes() + "\\" + zip + ".zip";
  }
  std::string InInstalled(const std::string& zip) const {
    return program.app.Installed() + "\\" + zip + ".zip";
  }
  std::string InNotInstalled(const std::string& zip) const {
    return program.app.NotInstalled() + "\\" + zip + ".zip";
  }

  /// The zip names in `downloaded_routes`, in directory order.
  std::vector<std::string> DownloadedZips() const;
  /// Puts a zip out of the running; its copies are the caller's business.
  void SetAside(const std::string& zip);
  /// Copies, also over a read-only file.
  void CopyOver(const std::string& from, const std::string& to) const;
  /// Takes a download to its place among the originals, over a file of that name. The disk need not be waited
  /// for: the file itself moves.
  void MoveOver(const std::string& from, const std::string& to) const;
  /// A reader whose faults set BadZipFlag, with the true measure of long extractions on the screen.
  ArchiveReader Reader();
};

}  // namespace quillon
