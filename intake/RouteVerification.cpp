#include "intake/RouteVerification.h"

#include <algorithm>
#include <array>

#include "core/Text.h"

namespace quillon {
namespace {

constexpr std::array<std::string_view, 6> kDefaultTracks = {"europe1.trk", "europe2.trk", "japan1.trk",
                                                            "japan2.trk",  "usa1.trk",    "usa2.trk"};

}  // namespace

void RouteVerification::Run() {
  state_.ListofRouteZips.clear();
  const auto zips = state_.DownloadedZips();
  std::size_t done = 0;
  for (const auto& zip : zips) {
    state_.progress.Detail(done++, zips.size(), "zips");
    state_.program.Step("Verifying " + zip + ".zip");
    state_.progress.Caption("Verifying... " + zip + ".zip");
    if (HoldsRoute(zip))
      state_.ListofRouteZips.push_back(zip);
    else
      Reject(zip);
    state_.progress.Yield();
  }
}

bool RouteVerification::HoldsRoute(const std::string& zip) {
  ArchiveReader unzip1 = state_.Reader();
  unzip1.InputFile = state_.Download(zip);
  unzip1.ReadDirectory();
  bool found = false;
  std::string lastName;
  for (int i = 0; i < unzip1.EntryCount() && !found; ++i) {
    const std::string entry = unzip1.LowerName(i);
    lastName = FileNameOf(entry);
    found = Contains(entry, ".trk");
  }
  const bool packedByUs = zip.starts_with("QNPacked");
  const bool isDefault =
      std::find(kDefaultTracks.begin(), kDefaultTracks.end(), lastName) != kDefaultTracks.end();
  return found && (packedByUs || !isDefault);
}

void RouteVerification::Reject(const std::string& zip) {
  state_.record.PatchOrOther(zip);
  state_.journal.TakeOriginalBack(zip);
  state_.MoveOver(state_.Download(zip), state_.InNotInstalled(zip));
  state_.SetAside(zip);
}

}  // namespace quillon
