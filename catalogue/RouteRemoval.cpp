#include "catalogue/RouteRemoval.h"

#include <utility>

#include "core/Text.h"
#include "core/archive/ArchiveNames.h"

namespace quillon {
namespace {

constexpr int kMostVersions = 50;

}  // namespace

RouteRemoval::RouteRemoval(Program& program, std::string rightClickName)
    : program_(program),
      files_(program.files),
      catalogue_(program),
      RightClickName(ReplaceAll(rightClickName, "(Loaded)", "")),
      zip_(catalogue_.ZipOf(RightClickName, "Current")) {}

void RouteRemoval::RemoveRoute() {
  program_.Step("Removing " + Trim(RightClickName));
  // A catalogue that someone edited may name what leads elsewhere, or all routes at once.
  if (IsUsableStem(zip_)) DeleteBelongings();
  std::string& name = program_.shared.RemovedRouteName;
  name = catalogue_.NameOf(zip_, kNoData);
  if (!program_.shared.MakingPermanent)
    program_.boxes.Tell("Quillon", name + " has been removed from Quillon.");
  // The closing message of Make permanent has the name without its version.
  for (int i = 1; i <= kMostVersions; ++i) name = ReplaceAll(name, "(" + std::to_string(i) + ")", "");
  ForgetSelection();
}

void RouteRemoval::DeleteBelongings() {
  const Installation& app = program_.app;
  files_.KillIfThere(app.RouteFile(zip_));
  DeleteFolder(app.Saves(zip_));
  files_.KillIfThere(app.Preview(zip_));
  files_.KillIfThere(app.TerrainCache(zip_));
  DeleteFolder(app.Activities(zip_));
  DeleteFolder(app.Consists(zip_));
  DeleteFolder(app.Custom(zip_));
  DeleteFolder(app.Paths(zip_));
  DeleteFolder(app.RouteInfo(zip_));
  DeleteFolder(app.RoutePics(zip_));
  DeleteFolder(app.Services(zip_));
  DeleteFolder(app.Traffic(zip_));
}

void RouteRemoval::DeleteFolder(const std::string& path) {
  if (files_.FileExists(path)) files_.DelTree(path);
}

void RouteRemoval::ForgetSelection() {
  if (catalogue_.ReadCurrent("Zip", kNoData) == zip_) {
    catalogue_.WriteCurrent("Zip", kNoData);
    catalogue_.WriteCurrent("Temp", kNoData);
  }
  program_.ini.DeleteIniSection(RightClickName, program_.app.RoutesIni());
  program_.ini.DeleteIniSection(zip_, program_.app.RoutesIni());
  if (!program_.shared.MakingPermanent) return;
  catalogue_.WriteCurrent("Loaded", kNoData);
  catalogue_.WriteCurrent("Temp", kNoData);
}

void RouteRemoval::MakeRoutePermanent() {
  program_.Step("Installing " + Trim(RightClickName) + " permanently");
  program_.shared.MakingPermanent = true;
  const std::string route = program_.BelowGame(kWorkingRoute);
  files_.BackupSweep(route + "\\*.*");
  const std::string selected = catalogue_.ReadCurrent("Zip", "Route");
  if (files_.FileExists(program_.app.Preview(selected)))
    files_.FileCopy(program_.app.Preview(selected), route + "\\ts" + selected + ".jpg");
  files_.MakeFolderIfMissing(route + "\\ENVFILES");
  files_.CopyAllFiles(program_.app.EnvDefaults() + "\\", route + "\\EnvFiles\\", "*.*");
  if (files_.FileExists(route)) files_.Rename(route, FreeRouteFolder());
  files_.DelTree(program_.BelowGame(kWorkingSaves));
  files_.MakeFolderIfMissing(program_.BelowGame(kWorkingSaves));
  program_.shared.CleanUpDone = false;
  RemoveRoute();
}

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
