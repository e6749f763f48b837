// What a running intake has done to the downloads and their originals, line by line, for the case that it is
// cut short.
#pragma once

#include <memory>
#include <string>
#include <string_view>
#include <utility>
#include <vector>

#include "core/Program.h"

namespace quillon {

/// Tells a work folder of ours from a user's route; holds the path of the download that it is for.
inline constexpr const char* kWorkFolderMark = "\\quillon-work-folder";

class IntakeJournal {
 public:
  explicit IntakeJournal(Program& program) : program_(program) {}

  /// An intake begins, unless one goes on.
  void Begin();
  /// A folder among the game's routes is about to be made, with kWorkFolderMark in it.
  void WorkFolderComes(const std::string& folder);
  /// The download `zip` is about to be copied to `Installed`. An older original of that name is set aside.
  void OriginalComes(const std::string& zip);
  /// The rebuilt zip of `zip` is whole and about to get its name: from then on the download is no longer
  /// needed.
  void RebuiltComes(const std::string& zip);
  /// The zip `zip` was made of the download `file`, of another format, and is about to get its name: the file
  /// goes to Installed.
  void ConversionComes(const std::string& zip, const std::string& file);
  /// The zips that were made so in this intake, each with a file that it was made of; and the downloads that
  /// were rebuilt.
  std::vector<std::pair<std::string, std::string>> Converted() const;
  std::vector<std::string> Rebuilt() const;
  /// What the stores of a route alone hold is about to go to the rescue in this folder.
  void OwnWorkGoesTo(const std::string& folder);
  /// The stores of the route `zip` are about to be emptied and filled from its new zip; what they alone hold
  /// is safe.
  void StoresAreRenewed(const std::string& zip);
  /// A file of this name is about to come to Installed: the one that is there waits until the intake ends.
  void SetOlderAside(const std::string& file);
  bool OlderWaits(const std::string& file) const { return program_.files.FileExists(Older(file)); }
  /// The intake does not take the file: the one that waits comes back. False when none waits, or its place is
  /// taken.
  bool BringOlderBack(const std::string& file);
  /// The intake does not take `zip`: its copy in `Installed` goes, and an older original comes back.
  void TakeOriginalBack(const std::string& zip);
  /// All went well: older originals go.
  void End();

  /// At the next start.
  void TakeBackWhatWasCutShort();

 private:
  std::string Original(const std::string& file) const { return program_.app.Installed() + "\\" + file; }
  std::string Older(const std::string& file) const { return Original(file) + ".older~"; }
  /// The older original goes to the shelf, if one waits.
  void KeepOlder(const std::string& file);
  std::string Download(const std::string& zip) const {
    return program_.app.DownloadedRoutes() + "\\" + zip + ".zip";
  }
  void Note(const char* what, const std::string& name);
  std::vector<std::string> Noted(std::string_view what) const;
  void RemoveWorkFolder(const std::string& folder);
  void FinishRebuilt(const std::string& zip);
  void TakeBackRebuilt(const std::string& zip);
  std::vector<std::string> MadeOf(std::string zip) const;
  void TakeBackConversions();
  void FinishStores(const std::string& zip);
  void BringBack(const std::string& rescue);
  void FinishRouteFile(const std::string& zip);
  bool FinishOriginal(const std::string& zip);

  Program& program_;
  std::unique_ptr<ListFile> list_;
  std::vector<std::string> workFolders_;  // of this intake
};

}  // namespace quillon
