#include "intake/CompressionAndCatalogue.h"

#include "catalogue/Catalogue.h"
#include "core/Text.h"
#include "intake/RouteName.h"

namespace quillon {
namespace {

constexpr std::uint64_t kTrackHead = 4u << 20;  // bytes: the name stands near the top of a track file

}  // namespace

void CompressionAndCatalogue::Run() {
  MakeRouteFiles();
  for (const auto& zip : state_.ListFinal) EnterRoute(zip);
}

void CompressionAndCatalogue::MakeRouteFiles() {
  state_.progress.Value(100);
  state_.progress.Caption("Creating compressed route files...");
  // Only what was verified: a zip that has come since then waits for the next intake.
  if (state_.ListofRouteZips.empty()) state_.progress.Caption("No new routes found.");
  state_.RoutesCopied = 0;
  for (const auto& zip : state_.ListofRouteZips) {
    state_.program.Step("Creating the compressed route file of " + zip);
    state_.progress.Detail(static_cast<std::uint64_t>(state_.RoutesCopied), state_.ListofRouteZips.size(),
                           "routes");
    MakeRouteFile(zip);
    ++state_.RoutesCopied;
    state_.progress.Yield();
  }
}

void CompressionAndCatalogue::MakeRouteFile(const std::string& zip) {
  Files& files = state_.program.files;
  const std::string copy = state_.program.app.Routes() + "\\" + zip + ".zip";
  const std::string routeFile = state_.program.app.RouteFile(zip);
  state_.CopyOver(state_.Download(zip), copy);
  state_.program.files.KillIfThere(routeFile);
  state_.program.files.KillIfThere(state_.program.app.TerrainCache(zip));
  files.SetAttributes(copy, kArchive);
  files.Rename(copy, routeFile);
  state_.record.Stands(zip);
}

std::string CompressionAndCatalogue::RouteNameOf(const std::string& zip) const {
  const std::string folder = state_.program.app.RouteInfo(zip) + "\\";
  const auto tracks = state_.program.files.ListFiles(folder + "*.trk");
  if (tracks.empty()) return zip;
  const std::string path = folder + tracks.front();
  const std::string name =
      RouteNameFrom(DecodeGameText(state_.program.files.ReadAll(path, kTrackHead)), path);
  return name.empty() ? zip : name;
}

void CompressionAndCatalogue::EnterRoute(const std::string& zip) {
  state_.program.Step("Entering " + zip + " into the catalogue");
  const std::string RouteName = RouteNameOf(zip);
  state_.program.ini.WriteIni(zip, "Script", RouteName, state_.program.app.ScriptsIni());
  const bool isNew = !Catalogue(state_.program).Add(zip, RouteName).empty();
  if (isNew) state_.record.Added(zip);
}

}  // namespace quillon
