#include "stage/RunningProgram.h"

#include <stdexcept>
#include <utility>

#include "catalogue/MainScreen.h"
#include "catalogue/Notices.h"
#include "catalogue/OptionsScreen.h"
#include "catalogue/ShelfScreen.h"
#include "catalogue/TimetableScreen.h"
#include "checkup/CheckupScreens.h"
#include "intake/InitProgScreen.h"
#include "intake/RoutesScreen.h"
#include "intake/WhyScreen.h"
#include "intake/ZipCheckScreen.h"
#include "loading/LoadScreen.h"
#include "repair/CleanUpScreen.h"
#include "repair/PackScreens.h"

namespace quillon {
std::unique_ptr<Screen> MakeScreen(Program& program, std::string_view name) {
  if (name == "frmMain") return std::make_unique<MainScreen>(program);
  if (name == "frmOptions") return std::make_unique<OptionsScreen>(program);
  if (name == "frmWelcome") return std::make_unique<WelcomeScreen>(program);
  if (name == "frmNoAct") return std::make_unique<NoActScreen>(program);
  if (name == "frmRoutes") return std::make_unique<RoutesScreen>(program);
  if (name == "frmZipCheck") return std::make_unique<ZipCheckScreen>(program);
  if (name == "frmInitProg") return std::make_unique<InitProgScreen>(program);
  if (name == "frmWhy") return std::make_unique<WhyScreen>(program);
  if (name == "frmShelf") return std::make_unique<ShelfScreen>(program);
  if (name == "frmTimetable") return std::make_unique<TimetableScreen>(program);
  if (name == "frmLoad") return std::make_unique<LoadScreen>(program);
  if (name == "frmCleanUpNotice") return std::make_unique<CleanUpNoticeScreen>(program);
  if (name == "frmCleanUp") return std::make_unique<CleanUpScreen>(program);
  if (name == "frmPack") return std::make_unique<PackScreen>(program);
  if (name == "frmPackConfirm") return std::make_unique<PackConfirmScreen>(program);
  if (name == "frmReportOptions") return std::make_unique<ReportOptionsScreen>(program);
  if (name == "frmActivityCheck") return std::make_unique<ActivityCheckScreen>(program);
  if (name == "frmCustomConsist") return std::make_unique<CustomConsistScreen>(program);
  if (name == "frmCustomMessage") return std::make_unique<CustomMessageScreen>(program);
  throw std::logic_error("no such screen: " + std::string(name));
}

RunningProgram::RunningProgram(std::string appFolder, FrontEnd& frontEnd, std::optional<std::uint32_t> seed,
                               std::unique_ptr<FileSystem> files)
    : app_(std::move(appFolder)),
      host_(files ? std::move(files) : MakeHostFileSystem()),
      profiles_(MakeProfileFunctions(*host_)),
      registry_(MakeRegistry(*profiles_, app_.Below("\\registry.ini"))),
      random_(seed ? Random(*seed) : Random()),
      files_(*host_, random_, frontEnd),
      ini_(*profiles_),
      screens_(frontEnd, [this](std::string_view name) { return MakeScreen(program_, name); }),
      program_{app_, files_, ini_, *registry_, random_, shared_, frontEnd, frontEnd, screens_, frontEnd} {
  host_->SetIdle([&frontEnd] { frontEnd.Yield(); });
}

std::string RunningProgram::LockFile() { return host_->HostPath(app_.Below("\\quillon.lock")); }

void RunningProgram::TakeLock() {
  lock_ = TakeInstanceLock(LockFile());
  program_.otherInstanceRuns = lock_ == nullptr;
}

bool RunningProgram::CallOther() { return CallRunningInstance(LockFile()); }

std::unique_ptr<StartCalls> RunningProgram::HearOthers() { return HearStartCalls(LockFile()); }

}  // namespace quillon
