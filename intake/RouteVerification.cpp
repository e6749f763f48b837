#include "intake/RouteVerification.h"

#include <algorithm>
#include <array>

#include "core/text/Text.h"
#include "intake/ForeignDownloads.h"

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
    state_.Step("Verifying " + zip + ".zip", zip);
    state_.progress.Caption("Verifying... " + zip + ".zip");
    if (const std::string reason = ReasonAgainst(zip); reason.empty())
      state_.ListofRouteZips.push_back(zip);
    else
      Reject(zip, reason);
    state_.progress.Yield();
  }
}

std::string RouteVerification::ReasonAgainst(const std::string& zip) {
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
  if (!found) return "it is no route: there is no track file (.trk) in it";
  return packedByUs || !isDefault ? "" : "it holds a route of the game's own: " + lastName;
}

void RouteVerification::Reject(const std::string& zip, const std::string& reason) {
  state_.record.PatchOrOther(zip);
  state_.journal.TakeOriginalBack(zip);
  ForeignDownloads(state_).MoveOriginalAside(zip, state_.program.app.NotInstalled());
  state_.MoveAside(zip, state_.program.app.NotInstalled());
  state_.SetAside(zip);
  state_.verdicts.Give(zip, "MSC", reason);
}

}  // namespace quillon
