#include "catalogue/RouteRemoval.h"

#include <utility>

#include "catalogue/Playable.h"
#include "catalogue/RouteDates.h"
#include "catalogue/Unfinished.h"
#include "core/archive/ArchiveNames.h"
#include "core/text/Text.h"
#include "shelf/OwnFiles.h"

namespace quillon {
namespace {

constexpr int kMostVersions = 50;
constexpr const char *kRemove = "Remove", *kPermanent = "Permanent";  // acts that may stay unfinished

}  // namespace

RouteRemoval::RouteRemoval(Program& program, std::string rightClickName)
    : RouteRemoval(program, ReplaceAll(rightClickName, "(Loaded)", ""), {}) {}

RouteRemoval::RouteRemoval(Program& program, std::string name, std::string zip)
    : program_(program),
      files_(program.files),
      catalogue_(program),
      RightClickName(std::move(name)),
      zip_(zip.empty() ? catalogue_.ZipOf(RightClickName, "Current") : std::move(zip)) {}

void RouteRemoval::RemoveRoute(bool tell) {
  program_.Step("Removing " + Trim(RightClickName));
  std::string& name = program_.shared.RemovedRouteName;
  name = catalogue_.NameOf(zip_, kNoData);
  // A catalogue that someone edited may name what leads elsewhere, or all routes at once.
  if (IsUsableStem(zip_)) {
    const Wait wait(program_.watcher, "Removing " + Trim(RightClickName) + "...");
    Rescue rescue(program_, zip_, Trim(RightClickName) + " was removed from Quillon.");
    rescue.NoteRoute(name);
    Unfinished(program_).Begin(kRemove,
                               {{"Zip", zip_}, {"Name", RightClickName}, {"Shelf", rescue.Folder()}});
    MoveBelongings(rescue);
  }
  if (tell && !program_.shared.MakingPermanent)
    program_.boxes.Tell("Quillon", name + " has been removed from Quillon.");
  // The closing message of Make permanent has the name without its version.
  for (int i = 1; i <= kMostVersions; ++i) name = ReplaceAll(name, "(" + std::to_string(i) + ")", "");
  ForgetSelection();
  Unfinished(program_).End(kRemove);
}

void RouteRemoval::FinishRemoval(Program& program) {
  const Unfinished unfinished(program);
  if (!unfinished.HasBegun(kRemove)) return;
  RouteRemoval removal(program, unfinished.Fact(kRemove, "Name"), unfinished.Fact(kRemove, "Zip"));
  Rescue rescue(program, removal.zip_, "");
  rescue.Resume(unfinished.Fact(kRemove, "Shelf"));
  removal.MoveBelongings(rescue);
  removal.ForgetSelection();
  unfinished.End(kRemove);
  program.TellHealed("The removal of " + Trim(removal.RightClickName) +
                     " that was cut short has been finished.");
}

std::vector<std::string> RouteRemoval::BelongingsOf(const Installation& app, const std::string& zip) {
  return {app.RouteFile(zip),  app.Saves(zip),     app.Preview(zip),  app.TerrainCache(zip),
          app.Activities(zip), app.Consists(zip),  app.Custom(zip),   app.Paths(zip),
          app.RouteInfo(zip),  app.RoutePics(zip), app.Services(zip), app.Traffic(zip)};
}

void RouteRemoval::MoveBelongings(Rescue& rescue) {
  const auto belongings = BelongingsOf(program_.app, zip_);
  for (const auto& path : belongings)
    if (files_.FileExists(path)) rescue.Keep(path);
  rescue.Close();
  // A copy leaves its original; whether a folder could go is nobody's concern.
  for (const auto& path : belongings) {
    if (files_.IsPathAFolder(path))
      files_.DelTree(path);
    else
      files_.KillIfThere(path);
  }
  files_.Host().Delete(program_.app.Thumbnail(zip_));  // nobody misses it, nor minds it
}

void RouteRemoval::ForgetSelection() {
  DeleteEntry();
  if (catalogue_.NameOf(zip_, kNoData) != kNoData)
    throw RunTimeError(ErrorNumber::PathFileAccessError, program_.app.RoutesIni(), kNoPermission);
}

/// One write: no half of an entry is ever read.
void RouteRemoval::DeleteEntry() {
  const auto batch = program_.ini.Batch();
  if (catalogue_.ReadCurrent("Zip", kNoData) == zip_) {
    catalogue_.WriteCurrent("Zip", kNoData);
    catalogue_.WriteCurrent("Temp", kNoData);
  }
  program_.ini.DeleteIniSection(RightClickName, program_.app.RoutesIni());
  program_.ini.DeleteIniSection(zip_, program_.app.RoutesIni());
  RouteDates(program_).Forget(zip_);
  ForgetPlayable(program_, zip_);
  if (!program_.shared.MakingPermanent) return;
  catalogue_.WriteCurrent("Loaded", kNoData);
  catalogue_.WriteCurrent("Temp", kNoData);
}

void RouteRemoval::MakeRoutePermanent() {
  program_.Step("Installing " + Trim(RightClickName) + " permanently");
  program_.shared.MakingPermanent = true;
  const std::string route = program_.BelowGame(kWorkingRoute);
  const std::string selected = catalogue_.ReadCurrent("Zip", "Route"), folder = FreeRouteFolder();
  {
    const Wait wait(program_.watcher, "Installing " + Trim(RightClickName) + " permanently...");
    TurnIntoRoute(route, selected, folder);
  }
  program_.shared.CleanUpDone = false;
  RemoveRoute();
}

void RouteRemoval::TurnIntoRoute(const std::string& route, const std::string& selected,
                                 const std::string& folder) {
  RescueBackups(route);
  Unfinished(program_).Begin(
      kPermanent, {{"Zip", zip_}, {"Name", RightClickName}, {"Preview", selected}, {"Folder", folder}});
  // First of all: until then nothing has changed, and from then on it can be finished.
  if (files_.FileExists(route)) files_.Rename(route, folder);
  FurnishFolder(folder, selected);
}

/// Covered files that are the user's own; the others come from the game.
void RouteRemoval::RescueBackups(const std::string& route) {
  OwnFiles own(program_, {zip_});
  Rescue rescue(program_, zip_,
                "Making the route permanent would have deleted this file, which a load had covered.");
  files_.Walk(route + "\\*.*", [&](const std::string& place, const std::string& name) {
    if (IsBackup(name)) own.KeepIfOwn(rescue, place + name);
  });
  rescue.Close();
}

void RouteRemoval::FurnishFolder(const std::string& folder, const std::string& selected) {
  if (files_.IsPathAFolder(folder)) {
    files_.BackupSweep(folder + "\\*.*");
    if (files_.FileExists(program_.app.Preview(selected)))
      files_.FileCopy(program_.app.Preview(selected), folder + "\\ts" + selected + ".jpg");
    files_.MakeFolderIfMissing(folder + "\\ENVFILES");
    files_.CopyAllFiles(program_.app.EnvDefaults() + "\\", folder + "\\EnvFiles\\", "*.*");
  }
  Rescue rescue(program_, zip_, "The route was made permanent, which empties its saved activities.");
  const std::string saves = program_.BelowGame(kWorkingSaves);
  files_.Walk(saves + "\\*.*",
              [&](const std::string& place, const std::string& name) { rescue.Keep(place + name); });
  rescue.Close();
  files_.DelTree(saves);
  files_.MakeFolderIfMissing(saves);
}

bool RouteRemoval::FinishPermanent(Program& program) {
  const Unfinished unfinished(program);
  if (!unfinished.HasBegun(kPermanent)) return false;
  const std::string folder = unfinished.Fact(kPermanent, "Folder");
  RouteRemoval removal(program, unfinished.Fact(kPermanent, "Name"), unfinished.Fact(kPermanent, "Zip"));
  const bool isCatalogued = removal.catalogue_.NameOf(removal.zip_, kNoData) != kNoData;
  if (isCatalogued && program.files.FileExists(program.BelowGame(kWorkingRoute))) {
    unfinished.End(kPermanent);  // nothing had changed yet
    return false;
  }
  SharedState& shared = program.shared;
  shared.MakingPermanent = true;
  if (unfinished.HasBegun(kRemove) || !isCatalogued) {
    FinishRemoval(program);
    shared.RemovedRouteName = Trim(removal.RightClickName);
  } else {
    removal.FurnishFolder(folder, unfinished.Fact(kPermanent, "Preview"));
    removal.RemoveRoute();
  }
  shared.CleanUpDone = false;
  return true;
}

void RouteRemoval::PermanentIsDone(Program& program) { Unfinished(program).End(kPermanent); }

/// One try only: a second name that is taken, too, ends in an error, and nothing is overwritten.
std::string RouteRemoval::FreeRouteFolder() {
  std::string name = catalogue_.ReadCurrent("Zip", "Route");
  name = ReplaceAll(ReplaceAll(name, "Quillon-", ""), "QNPacked-", "");
  const std::string folder = program_.BelowGame("\\ROUTES\\") + name;
  return files_.FileExists(folder) ? folder + " " + std::to_string(program_.random.Whole(20)) : folder;
}

std::string RouteRemoval::PermanentQuestion(const std::string& rightClickName) {
  return "A route may be made permanent for one of two reasons:\r\n\r\n"
         "1. To allow updating and subsequent 'packing' back into Quillon.\r\n"
         "2. To avoid the need to be loaded from Quillon in order to drive it.\r\n\r\n"
         "Please note that routes made permanent will no longer benefit from the space saving\r\n"
         "features of Quillon, although as mentioned above they can later be 'packed'\r\n"
         "in which case they will benefit once again.  By making a route permanent you will\r\n"
         "also lose any saved activities (up to this point) associated with the route.\r\n\r\n"
         "Please see 'Help' for more information.\r\n\r\n"
         "Are you sure you want to permanently install " +
         rightClickName + " into Train Simulator?";
}

}  // namespace quillon
