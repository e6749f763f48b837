#include "loading/LoadRoute.h"

#include "catalogue/CustomFolders.h"
#include "catalogue/LoadMark.h"
#include "catalogue/RouteChecks.h"
#include "catalogue/RouteDates.h"
#include "catalogue/RouteStores.h"
#include "loading/CustomScript.h"
#include "loading/LoadPreflight.h"
#include "loading/Materialisation.h"
#include "loading/TerrainCache.h"
#include "shelf/PlacedRecord.h"

namespace quillon {
namespace {

std::string_view SizeMessage(int entryCount) {
  if (entryCount >= 1999)
    return "Due to the massive size of this particular route file, it's going to take a LONG time to load.";
  if (entryCount > 1700)
    return "Due to the huge size of this particular route file, it will take a lot longer to load than "
           "others.";
  if (entryCount > 800)
    return "Due to the large size of this particular route file, it may take a bit longer to load than "
           "others.";
  return {};
}

}  // namespace

LoadRoute::LoadRoute(Program& program, Progress& progress, LoadTexts& texts)
    : program_(program),
      progress_(progress),
      texts_(texts),
      catalogue_(program),
      unzip1_(program.files),
      LoadZip(program.shared.LoadZip) {}

void LoadRoute::Run() {
  const FileSystem::Pass pass(program_.files.Host());
  ClearFlags();
  OpenRoute();
  SetSizeMessage();
  RefuseWhatWouldFail();
  RefuseDamage();
  PutAwayPreviousRoute();
  RemovePreviousFiles();
  ExchangeTerrain();
  PlaceRoute();
  CopySavesBack();
  LayOverTheRest();
  RunCustomScript();
  RecordLoad();
  Finish();
}

void LoadRoute::ClearFlags() {
  program_.shared.CustomConsistsAdded = program_.shared.CustomMessagePending = program_.shared.CheckTrains =
      false;
  progress_.Maximum(100);
  progress_.Value(0);
  program_.shared.TrainSimPath =
      program_.ini.ReadIni("TrainSim", "Path", kNoData, program_.app.SettingsIni());
  WorkingRoute = program_.BelowGame("\\Routes\\Quillon-route");
}

void LoadRoute::OpenRoute() {
  program_.Step("Reading the route file of " + LoadZip);
  unzip1_.InputFile = program_.app.RouteFile(LoadZip);
  unzip1_.KeepFolders = false;
  unzip1_.ReadDirectory();
  map_ = MapRoute(unzip1_);
}

void LoadRoute::SetSizeMessage() { texts_.SetFirstMessage(SizeMessage(unzip1_.EntryCount())); }

void LoadRoute::RefuseWhatWouldFail() {
  program_.Step("Making sure that the route can be loaded");
  previous_.emplace(program_, progress_, WorkingRoute, LoadZip);
  LoadPreflight preflight(program_, WorkingRoute, unzip1_, map_, previous_->Lists());
  preflight.Run();
  texts_.SetRoom(preflight.TightRoom());
  covered_ = preflight.Covered();
  // After a run that was cut short default files may stand where a list expects the route's.
  if (previous_->WasPutAway()) covered_.assign(covered_.size(), true);
}

/// A file that is found to be damaged halfway through would leave no route at all.
void LoadRoute::RefuseDamage() { RouteChecks(program_).Require(LoadZip, unzip1_, map_, progress_); }

void LoadRoute::PutAwayPreviousRoute() {
  program_.Step("Putting the previous route away");
  previous_->PutAway();
  previous_->EmptyActivityFolders();
}

void LoadRoute::RemovePreviousFiles() {
  program_.Step("Removing the files of the previous route");
  previous_->RemoveLoadedFiles();
  program_.Step("Giving back the default files");
  previous_->GiveBackDefaultFiles();
  previous_->RescueOwnTiles();
}

void LoadRoute::ExchangeTerrain() {
  TerrainCache cache(program_, progress_, texts_, WorkingRoute);
  program_.Step("Gathering the terrain files of the previous route");
  // After a load that was cut short the terrain may be another route's.
  if (!previous_->WasPutAway()) cache.Gather(catalogue_.Loaded());
  texts_.SetTerrainInfo({}, false);
  texts_.ShowRoute();
  program_.Step("Exchanging the terrain files");
  cache.Clear();
  cache.Restore(LoadZip);
  progress_.Caption("Initializing parameters...");
}

void LoadRoute::PlaceRoute() {
  Materialisation material(program_, progress_, WorkingRoute, LoadZip);
  program_.Step("Listing the files of the route");
  material.WriteLists(map_, covered_);
  MakeCustomFolders(program_, LoadZip);
  progress_.Caption("Transferring route data...");
  program_.Step("Extracting the route");
  material.PlaceRouteFiles(unzip1_, map_);
  progress_.Caption("Transferring activity data...");
  program_.Step("Copying the activities");
  material.CopyActivities();
  progress_.Value(100);
  progress_.Caption("Transferring path data...");
  program_.Step("Copying the consists");
  material.CopyConsists();
}

void LoadRoute::CopySavesBack() {
  program_.Step("Copying the saved activities");
  program_.files.MakeFolderIfMissing(program_.BelowGame(kWorkingSaves));
  CopyFromStore(program_, program_.app.Saves(LoadZip) + "\\", program_.BelowGame(kWorkingSaves) + "\\",
                "*.sav");
}

void LoadRoute::LayOverTheRest() {
  Materialisation material(program_, progress_, WorkingRoute, LoadZip);
  program_.Step("Copying the track textures");
  material.CopyTrackTextures();
  program_.Step("Copying extras and custom files");
  material.CopyExtras();
  material.CopyCustomFiles();
  material.SpreadCustomAndStuffed();
}

void LoadRoute::RunCustomScript() {
  progress_.Caption("Processing custom instructions...");
  program_.Step("Running the route's custom script");
  CustomScript(program_, WorkingRoute).Run(LoadZip);
}

void LoadRoute::RecordLoad() {
  program_.Step("Recording the load");
  PlacedRecord(program_).LoadEnds();
  program_.files.Flush(WorkingRoute);
  program_.files.Flush(program_.app.CurrentList());
  LoadMark(program_).Commit(LoadZip);
  RouteDates(program_).NoteLoaded(LoadZip);
  if (!previous_->Healed().empty()) program_.TellHealed(previous_->Healed());
}

void LoadRoute::Finish() {
  const std::string& name = program_.shared.LoadRouteName;
  texts_.ShowResult(
      name +
      " is now loaded into Train Simulator.\r\n\r\n"
      "Click 'Exit' to close Quillon, and then start Train Simulator to drive the route.\r\n\r\n" +
      name +
      " will remain as a drivable route in Train Simulator until you decide to load another route with "
      "Quillon.");
  progress_.Value(100);
  progress_.Colour(kGreen);
  progress_.Caption("Finished loading route!");
}

}  // namespace quillon
