#include "catalogue/GameFolders.h"

#include "core/text/Text.h"

namespace quillon {
namespace {

void FullInstallRefused(Program& program) {
  program.boxes.Tell(
      "Quillon",
      "You must have a FULL installation of Train Simulator in order to use this program.\r\n\r\n"
      "Quillon will now close.  Please install the full version of Train Simulator.");
  program.Refuse();
}

}  // namespace

bool CheckFullInstall(Program& program) {
  bool whole = true;
  for (const auto route : kDefaultRoutes) {
    if (program.files.FileExists(program.BelowGame(route))) continue;
    FullInstallRefused(program);
    whole = false;
  }
  // All boxes first, then the end: nothing else runs after the refusal.
  if (!whole) program.stage.ShutDown(false);
  return whole;
}

bool PrepareGameFolders(Program& program) {
  program.Step("Preparing the game's folders");
  program.shared.TrainSimPath = program.ini.ReadIni("TrainSim", "Path", "", program.app.SettingsIni());
  if (!CheckFullInstall(program)) return false;
  program.files.MakeFolderIfMissing(program.BelowGame(kSaves));
  program.files.MakeFolderIfMissing(program.BelowGame(kWorkingSaves));
  MakeExtras(program);
  return true;
}

void MakeExtras(Program& program) {
  if (program.files.FileExists(program.BelowGame(kExtras))) return;
  for (const auto folder : kExtrasFolders) program.files.MakeFolderIfMissing(program.BelowGame(folder));
}

namespace {

/// Names that differ in case may be two folders here.
bool IsSameFolder(FileSystem& host, const std::string& a, const std::string& b) {
  FileSystem::Stamp one, other;
  return a == b || (EqualNoCase(a, b) && host.GetStamp(a, one) == FileCode::Ok &&
                    host.GetStamp(b, other) == FileCode::Ok && one.inode == other.inode &&
                    host.DiskOf(a).name == host.DiskOf(b).name);
}

}  // namespace

std::string TextOfHostPath(Program& program, const std::string& path) {
  FileSystem& host = program.files.Host();
  const std::string& game = program.shared.TrainSimPath;
  const std::string hostGame = host.HostPath(game), hostPath = host.HostPath(path);
  if (hostGame.empty() || !IsSameFolder(host, hostPath.substr(0, hostGame.size()), hostGame)) return hostPath;
  return game + ReplaceAll(hostPath.substr(hostGame.size()), "/", "\\");
}

std::string MissingRights(Program& program, const std::string& folder) {
  Files& files = program.files;
  const std::string game = CutBackslash(folder);
  if (!files.FileExists(game + std::string(kTrainExe))) return {};
  const auto isShut = [&](const std::string& path) {
    return files.IsPathAFolder(path) && !files.Host().MayWrite(path);
  };
  const auto tell = [&](const std::string& path, const std::string& named, const std::string& what) {
    const bool guarded = Contains(UpperCase(files.Host().HostPath(path)), "PROGRAM FILES");
    return "You may not write into " + named + ". Give yourself the right to, or install " + what +
           (guarded ? " elsewhere, outside Program Files." : " elsewhere.");
  };
  for (const std::string below : {"", "\\Routes", "\\Routes\\Quillon-route", "\\Trains\\Consists"})
    if (isShut(game + below))
      return tell(game, below.empty() ? "this folder" : "its folder " + below.substr(1), "the game");
  return isShut(program.app.App()) ? tell(program.app.App(), "Quillon's own folder", "Quillon") : "";
}

bool StoreGameFolder(Program& program, const std::string& path) {
  program.shared.TrainSimPath = CutBackslash(path);
  if (!program.files.IsPathAFolder(path)) {
    program.boxes.Tell("Quillon", "Please select the correct Train Simulator folder!");
    program.Refuse();
    return false;
  }
  const std::string& folder = program.shared.TrainSimPath;
  const bool found = program.files.FileExists(program.BelowGame(kTrainExe));
  // The registry seeds other installations: only a folder with the game goes there.
  if (found) program.registry.RegSetValue(RegRoot::LocalMachine, kLarkmoorKey, "TrainSimPath", folder);
  program.ini.WriteIni("TrainSim", "Path", folder, program.app.SettingsIni());
  program.ini.WriteIni("TrainSim", "Train.exe", found ? "Yes" : "No", program.app.SettingsIni());
  return true;
}

bool GameWasFound(Program& program) {
  if (program.ini.ReadIni("TrainSim", "Train.exe", "No", program.app.SettingsIni()) != "No") return true;
  program.boxes.Tell("Train Simulator not found!",
                     "You must enter the correct path to Train Simulator on the Quillon Options screen.");
  program.shared.FlashTarget = "options";
  program.Refuse();
  return false;
}

}  // namespace quillon
