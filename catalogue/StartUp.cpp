#include "catalogue/StartUp.h"

#include <array>
#include <utility>

#include "catalogue/LoadMark.h"
#include "catalogue/Unfinished.h"
#include "core/text/Text.h"
#include "desktop/FileTypes.h"

namespace quillon {
namespace {

struct Master {
  std::string_view name, target;
};

// Copied over a user's changes at each start.
constexpr std::array<Master, 5> kCopiedMasters = {{
    {"PLEASE_READ_THIS!.html", "\\original_zips\\PLEASE_READ_THIS!.html"},
    {"installed_info.html", "\\original_zips\\Installed\\installed_info.html"},
    {"not_installed_info.html", "\\original_zips\\Not_Installed\\not_installed_info.html"},
    {"bad_files_info.html", "\\original_zips\\bad_zip_files\\bad_files_info.html"},
    {"tsnone.jpg", "\\routes\\tsno data!.jpg"},
}};

}  // namespace

void StartUp::Run() {
  program_.Step("Starting up");
  if (RefuseSecondInstance()) return;
  TidyAndShow();
  FinishPermanentInstall();
  WelcomeNewUser();
}

void StartUp::TidyAndShow() {
  const FileSystem::Pass pass(program_.files.Host());
  DropStaleCatalogue();
  ForgetErrorSelection();
  program_.shared.ZipsSetAside = false;
  RegisterFileTypesOnce();
  FindTrainSim();
  ShowLoadedRoute();
  MakeFolders();
  SeedFiles();
  FinishWhatWasCut();
  RememberPreview();
  ChooseFlashTarget();
  main_.looksForGaps_ = true;
}

/// Without the game nothing can be finished in it.
void StartUp::FinishWhatWasCut() {
  try {
    FinishInTheGame();
  } catch (const RunTimeError& error) {
    // The program must come up all the same; the next start tries again.
    program_.TellHealed("What was cut short could not be finished yet: " + error.text() + ": " +
                        program_.files.Host().HostPath(error.path()));
  }
}

void StartUp::FinishInTheGame() {
  for (const std::string& folder :
       {CutBackslash(FolderOf(program_.app.RoutesIni())), program_.app.Routes(), program_.app.MiscInfo()})
    program_.files.KillIfThere(folder + "\\*" + std::string(kPartMark));
  if (!main_.TrainExeFound) return;
  if (FinishWhatWasCutShort(program_)) cleanUpFollows_ = true;
  if (!program_.shared.HealedNote.empty()) ShowLoadedRoute();
}

void StartUp::FinishPermanentInstall() {
  if (!cleanUpFollows_) return;
  program_.stage.ShowModal("frmCleanUp");
  TidyAndShow();
}

bool StartUp::RefuseSecondInstance() {
  if (!program_.otherInstanceRuns) return false;
  program_.boxes.Tell("Quillon", "Quillon is already running.");
  program_.Refuse();
  program_.stage.ShutDown(true);
  return true;
}

void StartUp::DropStaleCatalogue() {
  // The only route file may be on its way.
  if (!catalogue_.AnyRoute() && !program_.files.FileExists(program_.app.IntakeJournal()))
    catalogue_.Discard();
}

void StartUp::ForgetErrorSelection() {
  if (catalogue_.ReadCurrent("Temp", "You'll need to add some routes!") == kRunCleanup)
    catalogue_.WriteCurrent("Temp", kNoRouteLoaded);
}

void StartUp::RegisterFileTypesOnce() {
  const auto associated = program_.registry.RegGetText(RegRoot::LocalMachine, kQuillonKey, "Associated");
  if (associated.starts_with("Yes")) return;
  RegisterFileTypes(program_.registry, program_.app.App());
  program_.registry.RegSetValue(RegRoot::LocalMachine, kQuillonKey, "Associated", std::string("Yes"));
}

void StartUp::FindTrainSim() {
  const std::string settings = program_.app.SettingsIni();
  std::string& path = program_.shared.TrainSimPath;
  std::string seed = program_.registry.RegGetText(RegRoot::LocalMachine, kLarkmoorKey, "TrainSimPath");
  if (seed.empty()) seed = kDefaultGameFolder;
  path = program_.ini.ReadIni("TrainSim", "Path", kNoData, settings);
  if (path == kNoData) path = std::move(seed);

  main_.TrainExeFound = program_.files.FileExists(program_.BelowGame(kTrainExe));
  program_.ini.WriteIni("TrainSim", "Path", path, settings);
  program_.ini.WriteIni("TrainSim", "Train.exe", main_.TrainExeFound ? "Yes" : "No", settings);
  program_.shared.FlashTarget = main_.TrainExeFound ? "" : "options";
}

void StartUp::ShowLoadedRoute() {
  if (!program_.files.FileExists(program_.app.RoutesIni())) {
    BeginCatalogue();
    return;
  }
  std::string loaded = catalogue_.Loaded();
  std::string name = catalogue_.NameOf(loaded, kNoRouteLoaded);
  if (loaded == kNoData) {
    main_.ShowPreview(program_.app.DefaultPicture());
    main_.SetLabel("lblRouteName", main_.lblRouteName, std::string(kNoRouteLoaded), true);
    main_.ShowLoaded(false);
    return;
  }
  ShowRouteOrNothing(std::move(name), std::move(loaded));
}

void StartUp::ShowRouteOrNothing(std::string name, std::string loaded) {
  const bool there = program_.files.FileExists(program_.app.RouteFile(loaded));
  main_.ShowPreview(there ? program_.app.Preview(loaded) : program_.app.DefaultPicture());
  if (!there) name = loaded = kNoRouteLoaded;  // its file was deleted by hand
  main_.SetLabel("lblRouteName", main_.lblRouteName, name, true);
  main_.ShowLoaded(there);
  catalogue_.Select(name, loaded);
}

void StartUp::BeginCatalogue() {
  main_.ShowPreview(program_.app.DefaultPicture());
  catalogue_.WriteCurrent("Loaded", kNoData);
  catalogue_.WriteCurrent("Temp", kNoData);
  catalogue_.WriteCurrent("ZIP", kAddSomeRoutes);
}

void StartUp::MakeFolders() {
  program_.Step("Making the folders of the installation");
  for (const auto folder : kApplicationFolders)
    program_.files.MakeFolderIfMissing(program_.app.Below(folder));
}

void StartUp::SeedFiles() {
  program_.Step("Copying the delivered files");
  const std::string masters = program_.app.MiscInfo() + "\\";
  const auto seedWhenMissing = [&](const std::string& target, const char* name) {
    if (!program_.files.FileExists(target)) program_.files.FileCopy(masters + name, target);
  };
  seedWhenMissing(program_.app.CurrentList(), "current.tsl");
  seedWhenMissing(program_.app.DefaultList(), "default.tsl");
  for (const auto& [name, target] : kCopiedMasters)
    program_.files.FileCopy(masters + std::string(name), program_.app.Below(target));
}

void StartUp::RememberPreview() {
  const std::string loaded = catalogue_.Loaded();
  if (loaded != kNoData) main_.PreviewPath = program_.app.Preview(loaded);
}

void StartUp::ChooseFlashTarget() {
  std::string& target = program_.shared.FlashTarget;
  const bool wrongFolder = target == "options";
  if (main_.ShowsSentinel()) {
    if (!wrongFolder) target = "down";
    main_.ShowLoaded(false);
  }
  if (!catalogue_.AnyRoute()) {
    if (!wrongFolder) target = "manage";
    main_.ShowLoaded(false);
  }
}

void StartUp::WelcomeNewUser() {
  const bool halfBuilt = main_.TrainExeFound && LoadMark(program_).CleanUpWasCut();
  if (halfBuilt && program_.shared.HealedNote.empty())
    program_.TellHealed(
        "A clean-up was cut short. Load a route, or click Route manager and then Clean, to finish it.");
  if ((!main_.WorkingRouteIsMissing() && !halfBuilt) || program_.shared.WelcomeSeen) return;
  main_.SendToWelcome();
}

}  // namespace quillon
