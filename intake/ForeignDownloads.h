// Downloads of other formats than zip: each becomes a plain zip before anything looks at the zips.
#pragma once

#include <string>
#include <string_view>
#include <vector>

#include "intake/IntakeState.h"

namespace quillon {

class ForeignDownloads {
 public:
  explicit ForeignDownloads(IntakeState& state) : state_(state) {}

  /// Rebuilds each as `<stem>.zip`; the original goes to Installed, or to bad_zip_files when it can't be
  /// read. A stem that is taken is error 58 before any change.
  void Run();

  /// Whether a file of this name may be such a download, or a part of one.
  static bool IsOne(std::string_view name);
  /// Whether all data of such a download are checked while it becomes a zip; from zips they travel as they
  /// are.
  static bool IsCheckedByRebuild(std::string_view name);
  /// The file name of the zip that such a download becomes.
  static std::string ZipOf(std::string_view name);
  /// Takes the download whose first file this is, with all its parts, to a folder of the originals.
  void MoveAside(const std::string& file, const std::string& folder) const;
  /// Takes to the shelf what Installed holds of earlier downloads of that name: `zip` was made of another
  /// format and taken in.
  void KeepOlderOriginals(const std::string& zip) const;
  /// Takes what the zip `zip`, which is no route's, was made of in this intake, if it was, out of Installed
  /// to another folder of the originals; an older original of that name comes back.
  void MoveOriginalAside(const std::string& zip, const std::string& folder) const;

 private:
  /// One download; more than one file when it comes in parts.
  struct Download {
    std::string zip;                 // the name of the zip to be
    std::vector<std::string> files;  // names, in the order of the parts
    enum class Kind { Archive, Program, ZipParts } kind = Kind::Archive;
  };

  std::vector<Download> Find() const;
  void RefuseTakenNames(const std::vector<Download>& downloads) const;
  void Rebuild(const Download& download);
  void WriteZip(const Download& download, const std::string& target);
  void JoinParts(const Download& download, const std::string& target);
  void StripProgram(const std::string& program, const std::string& target);
  void SetAside(const Download& download, const std::string& reason);
  /// The files that `zip` was rebuilt from in this intake.
  std::vector<std::string> OriginalsOf(const std::string& zip) const;
  std::vector<std::string> PathsOf(const Download& download) const;

  IntakeState& state_;
};

}  // namespace quillon
