#include "intake/InformationExtraction.h"

#include "catalogue/CustomFolders.h"
#include "core/archive/ArchiveIndex.h"
#include "shelf/Rescue.h"

namespace quillon {

void InformationExtraction::Run() {
  std::size_t done = 0;
  for (const auto& zip : state_.ListofRouteZips) {
    state_.progress.Detail(done++, state_.ListofRouteZips.size(), "routes");
    state_.Step("Extracting info from " + zip + ".zip", zip);
    ExtractRoute(zip);
    state_.progress.Value(100);
    state_.progress.Caption("Optimizing route compression...");
    GivePagesTheirPictures(zip);
    state_.CopyOver(state_.program.app.NoImagePicture(), state_.program.app.Preview(zip));
    state_.ListFinal.push_back(zip);
    state_.progress.Value(0);
  }
}

void InformationExtraction::ExtractRoute(const std::string& zip) {
  const Installation& app = state_.program.app;
  const std::string what = " from " + zip + ".zip";
  MakeCustomFolders(state_.program, zip);
  RescueOwnWork(zip);
  state_.journal.StoresAreRenewed(zip);
  unzip_.InputFile = state_.Download(zip);
  unzip_.ReadDirectory();
  unzip_.KeepFolders = false;
  ExtractInto(app.RouteInfo(zip),
              {"*.txt", "*.diz", "*.nfo", "*.trk", "*.rtf", "*.doc", "*.html", "*.htm", "*.pdf", "*.gif",
               "*.jpg", "*.mp3", "*.png"},
              "Extracting info" + what);
  ExtractInto(app.Activities(zip), {"*.act", "*.asv"}, "Extracting activities" + what);
  ExtractInto(app.Services(zip), {"*.srv"}, "Extracting activity services" + what);
  ExtractInto(app.Paths(zip), {"*.pat"}, "Extracting activity paths" + what);
  ExtractInto(app.Traffic(zip), {"*.trf"}, "Extracting activity traffic" + what);
  ExtractInto(app.Consists(zip), {"*.con"}, "Extracting consists" + what);
  ExtractInto(app.RoutePics(zip), {"*.bmp", "*.gif", "*.jpg", "*.pcx"}, "Extracting images" + what);
}

/// What a user has added to a route that comes once more; the rest is in its zip.
void InformationExtraction::RescueOwnWork(const std::string& zip) {
  const Installation& app = state_.program.app;
  ArchiveIndex archive(state_.program.files, state_.Download(zip));
  std::vector<std::string> own;
  for (const auto& store :
       {app.Activities(zip), app.Services(zip), app.Paths(zip), app.Traffic(zip), app.Consists(zip)})
    state_.program.files.Walk(store + "\\*.*", [&](const std::string& folder, const std::string& name) {
      if (!archive.Holds(name, folder + name)) own.push_back(folder + name);
    });
  if (own.empty()) return;
  Rescue rescue(state_.program, zip, "The route was added again, and its zip does not hold this.");
  state_.journal.OwnWorkGoesTo(rescue.Open());
  for (const auto& path : own) rescue.Keep(path);
  rescue.Close();
}

void InformationExtraction::ExtractInto(const std::string& folder,
                                        std::initializer_list<std::string_view> filters,
                                        const std::string& caption) {
  state_.progress.Caption(caption);
  // Nothing of an earlier route of the same name survives.
  state_.program.files.DelTree(folder);
  unzip_.OutputFolder = folder + "\\";
  unzip_.ClearFilters();
  for (const auto filter : filters) unzip_.AddFilter(filter);
  unzip_.Extract();
  state_.progress.Yield();
}

void InformationExtraction::GivePagesTheirPictures(const std::string& zip) {
  const std::string info = state_.program.app.RouteInfo(zip) + "\\";
  const auto holds = [&](const char* pattern) { return state_.program.files.FileExists(info + pattern); };
  if (holds("*.html") || holds("*.shtml") || holds("*.htm"))
    state_.program.files.CopyAllFiles(state_.program.app.RoutePics(zip) + "\\", info, "*.*");
}

}  // namespace quillon
