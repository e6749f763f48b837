#include "intake/CompressionAndCatalogue.h"

#include "catalogue/Catalogue.h"
#include "catalogue/RouteChecks.h"
#include "catalogue/RouteDates.h"
#include "catalogue/RouteName.h"
#include "intake/NewRoutes.h"

namespace quillon {

void CompressionAndCatalogue::Run() {
  MakeRouteFiles();
  NoteWhatCanBePlayed(state_);
  for (const auto& zip : state_.ListFinal) EnterRoute(zip);
}

void CompressionAndCatalogue::MakeRouteFiles() {
  state_.progress.Value(100);
  state_.progress.Caption("Creating compressed route files...");
  // Only what was verified: a zip that has come since then waits for the next intake.
  if (state_.ListofRouteZips.empty()) state_.progress.Caption("No new routes found.");
  state_.RoutesCopied = 0;
  for (const auto& zip : state_.ListofRouteZips) {
    state_.Step("Creating the compressed route file of " + zip, zip);
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
  RouteChecks(state_.program).Note(zip, state_.damage[zip]);
  state_.record.Stands(zip);
}

void CompressionAndCatalogue::EnterRoute(const std::string& zip) {
  state_.Step("Entering " + zip + " into the catalogue", zip);
  const std::string RouteName = StoredRouteName(state_.program, zip);
  state_.program.ini.WriteIni(zip, "Script", RouteName, state_.program.app.ScriptsIni());
  const std::string name = Catalogue(state_.program).Add(zip, RouteName);
  if (!name.empty()) {
    state_.record.Added(zip);
    RouteDates(state_.program).NoteAdded(zip);
  }
  state_.verdicts.Give(
      zip, "ADD", name.empty() ? "its route was known, and has the new file now" : "taken in as " + name);
}

}  // namespace quillon
