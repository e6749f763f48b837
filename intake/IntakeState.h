// What the passes of one intake hand to each other.
#pragma once

#include <functional>
#include <map>
#include <set>
#include <string>
#include <vector>

#include "catalogue/IntakeJournal.h"
#include "core/Program.h"
#include "core/Progress.h"
#include "core/archive/ArchiveReader.h"
#include "intake/IntakeRecord.h"
#include "intake/Verdicts.h"

namespace quillon {

/// The lists and flags of the intake, by their names, and what every pass needs. Lists keep the order of
/// insertion.
struct IntakeState {
  IntakeState(Program& runningProgram, Progress& screen)
      : program(runningProgram),
        progress(screen),
        record(runningProgram),
        journal(runningProgram),
        verdicts(runningProgram) {}

  Program& program;
  Progress& progress;
  IntakeRecord record;
  IntakeJournal journal;
  Verdicts verdicts;

  /// Zip names still in the running, those whose information was extracted, and those set aside.
  std::vector<std::string> ListofRouteZips, ListFinal, ListBadFiles;
  /// A fault of the archive reader; what comes after classification leaves it alone.
  bool BadZipFlag = false;
  /// Zips that were made of downloads of other formats in this intake, each with the file that it was made
  /// of.
  std::map<std::string, std::string> converted;
  /// Zips that were packed here from data that were checked.
  std::set<std::string> sound;
  /// Entries that a load needs and that are damaged, by zip name.
  std::map<std::string, std::string> damage;
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
  /// The step that comes next, and the download that it is about.
  void Step(const std::string& step, const std::string& zip) const;
  /// Puts a zip out of the running; its copies are the caller's business.
  void SetAside(const std::string& zip);
  /// Copies the download to Installed, with its place in the journal. What was another format is kept as
  /// that.
  void KeepOriginal(const std::string& zip);
  /// Takes the download `zip` to a folder of the originals, with the parts of a split zip.
  void MoveAside(const std::string& zip, const std::string& folder) const;
  /// Copies, also over a read-only file.
  void CopyOver(const std::string& from, const std::string& to) const;
  /// Takes a download to its place among the originals, over a file of that name. The disk need not be waited
  /// for: the file itself moves.
  void MoveOver(const std::string& from, const std::string& to) const;
  /// A reader whose faults set BadZipFlag, with the true measure of long extractions on the screen.
  ArchiveReader Reader();
};

}  // namespace quillon
