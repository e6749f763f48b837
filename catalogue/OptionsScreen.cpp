#include "catalogue/OptionsScreen.h"

#include "catalogue/GameFolders.h"
#include "core/Version.h"
#include "core/text/Text.h"
#include "desktop/Shortcut.h"

namespace quillon {

OptionsScreen::OptionsScreen(Program& program) : Screen(program, "frmOptions") {
  SetTSPath(program.shared.TSPathField);
}

void OptionsScreen::Activate() {
  atActivation_ = path_;
  SetLabel("lblVersion", lblVersion, std::string("Quillon BETA Version ") + kVersion, true);
  const std::string state = program_.ini.ReadIni("Shortcut", "State", "on", program_.app.SettingsIni());
  if (state == "on") chkShortcut = true;
  if (state == "off") chkShortcut = false;
  if (program_.shared.FlashTarget == "options") program_.shared.FlashTarget = "locate";
}

void OptionsScreen::SetTSPath(const std::string& path) {
  const std::string before = std::exchange(path_, path.empty() ? beforeBrowse_ : path);
  // To find out takes several calls, and this one comes with every letter.
  if (path_ != before) rights_ = MissingRights(program_, path_);
}

std::string OptionsScreen::btnLocateClick() {
  program_.shared.FlashTarget.clear();
  beforeBrowse_ = path_;
  return CutBackslash(path_);
}

void OptionsScreen::btnOKClick() {
  program_.Step("Changing the settings");
  // The choice of the shortcut holds even when the path is refused.
  if (chkShortcut)
    MakeDesktopShortcut(program_.files);
  else
    RemoveDesktopShortcut(program_.files);
  program_.ini.WriteIni("Shortcut", "State", chkShortcut ? "on" : "off", program_.app.SettingsIni());
  if (StoreGameFolder(program_, path_)) BackToMain();
}

void OptionsScreen::btnCancelClick() {
  program_.Step("Putting the settings back");
  SetTSPath(atActivation_);
  program_.shared.TrainSimPath = CutBackslash(path_);
  program_.registry.RegSetValue(RegRoot::LocalMachine, kLarkmoorKey, "TrainSimPath",
                                program_.shared.TrainSimPath);
  program_.ini.WriteIni("TrainSim", "Path", program_.shared.TrainSimPath, program_.app.SettingsIni());
  BackToMain();
}

std::string OptionsScreen::Hint() const {
  if (!program_.files.IsPathAFolder(CutBackslash(path_))) return "There is no such folder.";
  const bool found = program_.files.FileExists(CutBackslash(path_) + std::string(kTrainExe));
  return found ? "" : "There is no train.exe in this folder.";
}

void OptionsScreen::TimerFlashOnTick() {
  TimerFlashOff.enabled = true;
  TimerFlashOn.enabled = false;
  if (program_.shared.FlashTarget == "locate") btnLocate.picture = "locateover";
}

void OptionsScreen::TimerFlashOffTick() {
  TimerFlashOn.enabled = true;
  TimerFlashOff.enabled = false;
  btnLocate.picture = "locateoff";
}

void OptionsScreen::BackToMain() {
  program_.stage.Unload(Name());
  program_.stage.Show("frmMain");
}

}  // namespace quillon
