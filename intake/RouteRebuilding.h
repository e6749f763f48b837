// The passes that turn a zip inside a zip into one flat archive.
#pragma once

#include <string>
#include <vector>

#include "core/archive/ArchiveWriter.h"
#include "intake/IntakeState.h"

namespace quillon {

class RouteRebuilding {
 public:
  explicit RouteRebuilding(IntakeState& state)
      : state_(state), outer_(state.Reader()), inner_(SilentReader()) {}

  /// Brings what an intake that died while it rebuilt has left to an end: a whole new zip gets the place of
  /// the download that is gone already, and the work folders go.
  void FinishLeftOvers();
  /// Rebuilds each zip of ListofRouteZips that holds an inner zip as `Quillon-<zip>.zip` in
  /// `downloaded_routes`.
  void RebuildInnerZips();
  /// Repacks zips without a folder above `tiles`. Works on an item only when a file of its bare name stands
  /// in the process's current folder, so normally on none. Clears ListofRouteZips.
  void RepackTopLevelRoutes();

 private:
  ArchiveReader SilentReader();
  void Rebuild(const std::string& zip);
  bool FindInnerZip(const std::string& zip);
  void OpenInnerZip();
  void FindStripPrefix();
  void CreatePaths();
  void AddWholeRoute(ArchiveWriter& writer);
  void AddSubArchive(ArchiveWriter& writer);
  void DropDamaged(const std::string& zip);
  void WriteRebuilt(const std::string& zip);
  void Repack(const std::string& zip);
  bool HasTilesFolder();
  std::string ZipOfLeftOver(const std::string& folder);
  void KeepIfWhole(const std::string& left, const std::string& zip);
  void MakeWorkFolder(const std::string& zip);
  std::string InnerZipPath() const { return workFolder_ + "\\" + InsideZip; }

  IntakeState& state_;
  ArchiveReader outer_, inner_;
  std::string workFolder_;

  std::string InsideZip;  // lower-cased stored path; the last one seen
  int insideIndex_ = -1;
  bool SpecialZip = false;  // the inner zip is one folder of a route
  std::string StripPrefix;  // what comes before the route's own folders; stays from zip to zip
  std::vector<std::string> lstRouteStrippedPath;  // the path that a file of the inner zip shall have
  std::vector<int> lstUnzipThese;                 // its entry, at the same index
  std::vector<int> outerDamage_, innerDamage_;    // entries that can't be unpacked, in rising order
};

}  // namespace quillon
