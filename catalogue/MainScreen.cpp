#include "catalogue/MainScreen.h"

#include <algorithm>
#include <array>
#include <utility>

#include "catalogue/CatalogueCheck.h"
#include "catalogue/DefaultFileScan.h"
#include "catalogue/GameFolders.h"
#include "catalogue/LoadMark.h"
#include "catalogue/Playable.h"
#include "catalogue/RouteRemoval.h"
#include "catalogue/StartUp.h"
#include "catalogue/Strangers.h"
#include "core/text/Text.h"

namespace quillon {
namespace {

constexpr int kListTop = 4, kListBottom = 70;  // pixels: beyond them the open list scrolls

constexpr std::array<std::string_view, 12> kInfoPatterns = {"*.txt", "*.rtf",  "*.doc", "*.diz",
                                                            "*.nfo", "*.html", "*.htm", "*.pdf",
                                                            "*.gif", "*.jpg",  "*.mp3", "*.png"};

}  // namespace

MainScreen::MainScreen(Program& program) : Screen(program, "frmMain"), catalogue_(program) {}

void MainScreen::Activate() { StartUp(program_, *this).Run(); }

void MainScreen::ShowPreview(const std::string& path) {
  if (!program_.files.FileExists(path)) throw RunTimeError(ErrorNumber::FileNotFound, path);
  imgRoute = path;
}

bool MainScreen::ShowsSentinel() const {
  return lblRouteName.text == kNoRouteLoaded || lblRouteName.text == kAddSomeRoutes;
}

void MainScreen::SetLoadedLabel(std::string_view name) {
  const bool loaded = catalogue_.IsLoaded(name) && !ShowsSentinel();
  ShowLoaded(loaded);
}

void MainScreen::ShowLoaded(bool loaded) {
  SetLabel("lblLoaded", lblLoaded, loaded ? "Currently loaded route" : "", true);
  const auto playable = loaded ? PlayableOf(program_, catalogue_.Loaded()) : std::nullopt;
  SetLabel("lblPlayable", lblPlayable, playable ? playable->Text() : "", playable.has_value());
}

/// A route that was judged before it was loaded is judged once more, for there is no page of it.
void MainScreen::lblPlayableClick() {
  if (!lblPlayable.visible) return;
  const std::string zip = catalogue_.Loaded();
  if (EqualNoCase(RouteOfPage(program_), zip))
    return program_.shell.OpenInShell(program_.app.CausesOfLoaded());
  program_.shared.RoutesToJudge = {zip};
  program_.shared.ShowReportWhenDone = true;
  program_.stage.ShowModal("frmActivityCheck");
  SetLoadedLabel(lblRouteName.text);
}

void MainScreen::ResetButtonImages() {
  btnManage.picture = "manageoff";
  btnLoad.picture = "loadoff";
  btnRouteList.picture = "downoff";
  btnOptions.picture = "optionsoff";
  program_.shared.FlashTarget.clear();
}

void MainScreen::HideLists() {
  for (List* list : {&toolsListHeader, &toolsList, &ListRoutes, &infoList})
    list->visible = list->enabled = false;
  for (Button* button : {&btnLoad, &btnExit}) button->visible = true;
  EnableButtons(true);
}

void MainScreen::EnableButtons(bool enabled) {
  for (Button* button : {&btnLoad, &btnExit, &btnManage, &btnRouteList, &btnOptions, &btnInfo, &btnTimetable})
    button->enabled = enabled;
}

std::string MainScreen::Hint() const {
  const std::string& target = program_.shared.FlashTarget;
  if (!program_.shared.HealedNote.empty()) return program_.shared.HealedNote;
  if (hasGaps_ && target != "options" && target != "manage")
    return "Some routes lack their entry or their picture. Click All routes, then Verify.";
  if (target == "options")
    return "Train Simulator was not found in\n" + program_.shared.TrainSimPath +
           "\nClick Options and say where it is.";
  if (target == "manage")
    return "There are no routes yet. Drop route zips on this window, then click Route manager.";
  if (target == "down") return "Click the arrow above and choose a route.";
  return target == "load" ? "Click Load route to put the chosen route into Train Simulator." : "";
}

void MainScreen::btnRouteListClick() {
  program_.Step("Listing the routes");
  program_.shared.HealedNote.clear();
  lblRightClick.visible = true;
  for (Button* button : {&btnExit, &btnLoad}) button->visible = button->enabled = false;
  ListRoutes.enabled = ListRoutes.visible = true;
  auto list = catalogue_.BuildList();
  ListRoutes.rows = std::move(list.rows);
  ListRoutes.current = -1;
  ListRoutes.top = 0;
  ListZips = std::move(list.zips);
  program_.shared.FlashTarget.clear();
}

void MainScreen::ListRoutesHover(int row, int y) {
  TimerDown.enabled = y > kListBottom;
  TimerUp.enabled = y < kListTop;
  if (row < 0 || row >= static_cast<int>(ListRoutes.rows.size()) || row == ListRoutes.current) return;
  ListRoutes.current = row;
  ListRoutesClick();
}

void MainScreen::TimerDownTick() {
  if (ListRoutes.rows.size() > 1) ++ListRoutes.top;
}

void MainScreen::TimerUpTick() {
  if (ListRoutes.top != 0) --ListRoutes.top;
}

void MainScreen::ListRoutesClick() {
  Timer1.enabled = true;
  SelectedRouteName = NameOfRow(ListRoutes.rows.at(static_cast<std::size_t>(ListRoutes.current)));
  std::string& zip = program_.shared.SelectedZip;
  zip = catalogue_.ZipOf(SelectedRouteName, kNoData);
  PreviewPath = zip == kNoData ? program_.app.DefaultPicture() : program_.app.Preview(zip);
  catalogue_.Select(SelectedRouteName, zip);
  SetLoadedLabel(SelectedRouteName);
}

void MainScreen::ListRoutesLeftPress() {
  program_.Step("Selecting " + SelectedRouteName);
  program_.shared.FlashTarget.clear();
  catalogue_.Select(SelectedRouteName, program_.shared.SelectedZip);
  SetLabel("lblRouteName", lblRouteName, SelectedRouteName, true);
  SetLoadedLabel(SelectedRouteName);
  ShowPreview(PreviewPath);
  TimerWait.enabled = true;
  ListRoutes.enabled = ListRoutes.visible = false;
  lblRightClick.visible = false;
}

void MainScreen::ListRoutesRightPress() {
  program_.Step("Opening the menu of a route");
  PermanentMode = false;
  program_.shared.FlashTarget.clear();
  const std::string row = ListRoutes.rows.at(static_cast<std::size_t>(ListRoutes.current));
  if (row == kAddSomeRoutes) return;
  catalogue_.Select(SelectedRouteName, program_.shared.SelectedZip);
  SetLabel("lblRouteName", lblRouteName, catalogue_.ReadCurrent("Temp", kNoRouteLoaded), true);
  SetLoadedLabel(lblRouteName.text);
  Timer1.enabled = true;
  HideLists();
  ListRoutes.enabled = false;
  RightClickName = ReplaceAll(row, "(Loaded)", "");
  if (Trim(RightClickName).empty()) {
    ListRoutes.enabled = true;
    return;
  }
  FillTools(row);
  ShowToolsState();
  for (List* list : {&toolsListHeader, &toolsList}) list->enabled = list->visible = true;
}

void MainScreen::FillTools(const std::string& row) {
  const std::string zip = catalogue_.ZipOf(RightClickName, "Current");
  PermanentMode = catalogue_.IsLoaded(RightClickName);
  toolsListHeader.rows = {"Route Name: " + row, "Zipfile Name: " + zip};
  toolsList.rows = {PermanentMode ? " Make this route permanent?" : " Remove this route from Quillon?",
                    " Yes", " No"};
  toolsList.current = -1;
}

void MainScreen::ShowToolsState() {
  ListRoutes.visible = true;
  ListRoutes.enabled = false;
  EnableButtons(false);
}

/// True when the user agreed and it was done.
bool MainScreen::AskAndAct() {
  program_.Step(PermanentMode ? "Making a route permanent" : "Removing a route");
  if (PermanentMode && LoadMark(program_).Stands()) {
    program_.boxes.Tell("Make route permanent?",
                        "A load was cut short, and the working route is only half built.\r\n"
                        "Load the route again first.");
    program_.Refuse();
    return false;
  }
  const std::string title = PermanentMode ? "Make route permanent?" : "Remove route?";
  const std::string question =
      PermanentMode ? RouteRemoval::PermanentQuestion(RightClickName)
                    : "Are you sure you want to completely remove " + RightClickName + " from Quillon?";
  if (!program_.boxes.AskYesNo(title, question)) {
    program_.Refuse();
    return false;
  }
  HideLists();
  const std::string selected = RightClickName;
  if (PermanentMode)
    RouteRemoval(program_, selected).MakeRoutePermanent();
  else
    RouteRemoval(program_, selected).RemoveRoute();
  ShowAfterRemoval();
  if (PermanentMode) program_.stage.ShowModal("frmCleanUp");
  return true;
}

void MainScreen::ShowAfterRemoval() {
  const std::string loaded = Trim(catalogue_.Loaded());
  if (program_.files.FileExists(program_.app.RoutesIni())) {
    const std::string name = catalogue_.NameOf(loaded, kNoRouteLoaded);
    const bool none = loaded == kNoData;
    ShowPreview(none ? program_.app.DefaultPicture() : program_.app.Preview(loaded));
    SetLabel("lblRouteName", lblRouteName, none ? std::string(kNoRouteLoaded) : name, true);
    ShowLoaded(!none);
    if (!none) catalogue_.Select(name, loaded);
  }
  PreviewPath = program_.app.Preview(loaded);
  Timer1.enabled = true;
  HideLists();
}

void MainScreen::toolsListHover(int row) {
  // The question itself can't be chosen.
  if (row > 0 && row < static_cast<int>(toolsList.rows.size())) toolsList.current = row;
}

void MainScreen::infoListHover(int row) {
  if (row >= 0 && row < static_cast<int>(infoList.rows.size())) infoList.current = row;
}

void MainScreen::toolsListLeftPress() {
  if (toolsList.current == 1 && AskAndAct()) {
    lblRightClick.visible = false;
    return;
  }
  if (toolsList.current == 1 || toolsList.current == 2) {
    SetLoadedLabel(lblRouteName.text);
    Timer1.enabled = true;
    HideLists();
  }
  lblRightClick.visible = false;
}

void MainScreen::CloseList() {
  program_.Step("Closing the list of routes");
  lblRightClick.visible = false;
  ResetButtonImages();
  SetLabel("lblRouteName", lblRouteName, catalogue_.ReadCurrent("Temp", kNoRouteLoaded), true);
  SetLoadedLabel(lblRouteName.text);
  if (lblRouteName.text == kNoData) ShowLoaded(false);
  std::string& zip = program_.shared.SelectedZip;
  zip = catalogue_.ReadCurrent("Zip", kNoRouteLoaded);
  const bool noPreview =
      zip == kNoRouteLoaded || lblRouteName.text == kAddSomeRoutes || lblRouteName.text == kNoData;
  PreviewPath = noPreview ? program_.app.DefaultPicture() : program_.app.Preview(zip);
  if (lblRouteName.text == kNoData) SetLabel("lblRouteName", lblRouteName, std::string(kAddSomeRoutes), true);
  if (lblRouteName.text == kAddSomeRoutes) {
    program_.shared.FlashTarget = "manage";
    ShowLoaded(false);
  }
  Timer1.enabled = true;
  HideLists();
}

Button* MainScreen::FlashingButton() {
  const std::string& target = program_.shared.FlashTarget;
  if (target == "manage") return &btnManage;
  if (target == "load") return &btnLoad;
  if (target == "down") return &btnRouteList;
  return target == "options" ? &btnOptions : nullptr;
}

void MainScreen::TimerFlashOnTick() {
  if (std::exchange(looksForGaps_, false))
    hasGaps_ = CatalogueHasGaps(program_);  // when the screen is on view
  TimerFlashOff.enabled = true;
  TimerFlashOn.enabled = false;
  Button* flashing = FlashingButton();
  if (flashing == nullptr) return;
  const std::string target = program_.shared.FlashTarget;
  ResetButtonImages();
  program_.shared.FlashTarget = target;
  flashing->picture = target + "over";
}

void MainScreen::TimerFlashOffTick() {
  TimerFlashOn.enabled = true;
  TimerFlashOff.enabled = false;
  if (Button* flashing = FlashingButton()) flashing->picture = program_.shared.FlashTarget + "off";
}

void MainScreen::TimerCheckerTick() {
  if (catalogue_.Loaded() == kNoData && catalogue_.AnyRoute() && program_.shared.FlashTarget.empty())
    program_.shared.FlashTarget = "load";
}

void MainScreen::TimerWaitTick() {
  for (Button* button : {&btnLoad, &btnExit}) button->visible = button->enabled = true;
  if (lblRouteName.text == kAddSomeRoutes) {
    if (program_.shared.FlashTarget != "options") program_.shared.FlashTarget = "manage";
    ShowLoaded(false);
  }
  TimerWait.enabled = false;
}

void MainScreen::Timer1Tick() {
  program_.Step("Showing the picture of the selected route");
  Timer1.enabled = false;
  ShowPreview(PreviewPath);
}

void MainScreen::btnInfoClick() {
  program_.Step("Listing the documents of " + lblRouteName.text);
  if (ShowsSentinel() || lblRouteName.text == kRunCleanup) {
    program_.Refuse();
    return;
  }
  SelectedRouteName = lblRouteName.text;
  const std::string zip = catalogue_.ZipOf(SelectedRouteName, kNoData);
  infoListPath = zip == kNoData ? "" : program_.app.RouteInfo(zip) + "\\";
  infoList = {};
  if (!infoListPath.empty()) {
    for (auto& name : program_.files.ListFiles(infoListPath + "*.*")) {
      const auto matches = [&](std::string_view pattern) { return MatchesPattern(name, pattern); };
      if (std::any_of(kInfoPatterns.begin(), kInfoPatterns.end(), matches))
        infoList.rows.push_back(std::move(name));
    }
  }
}

void MainScreen::infoListLeftPress(int row) {
  program_.shell.OpenInShell(infoListPath + infoList.rows.at(static_cast<std::size_t>(row)));
  infoList.enabled = infoList.visible = false;
  TimerWait.enabled = true;
}

void MainScreen::btnTimetableClick() {
  program_.Step("Opening the timetable");
  program_.shared.HealedNote.clear();
  if (ListRoutes.visible || infoList.visible) CloseList();
  wish_ = Wish::Nothing;
  program_.stage.ShowModal("frmTimetable");
  hasGaps_ = CatalogueHasGaps(program_);
  const Wish wish = std::exchange(wish_, Wish::Nothing);
  if (program_.stage.Ended() || wish == Wish::Nothing || !PickRow(wishedRoute_)) return;
  if (wish == Wish::Load) {
    ListRoutesLeftPress();
    TimerWaitTick();
    return btnLoadClick();
  }
  ListRoutesRightPress();
  if (!PermanentMode) return CloseList();
  toolsListHover(1);
  toolsListLeftPress();
}

/// Opens the list with the pointer on the route's row. False when the route has gone.
bool MainScreen::PickRow(const std::string& name) {
  btnRouteListClick();
  const auto& rows = ListRoutes.rows;
  const auto at =
      std::find_if(rows.begin(), rows.end(), [&](const auto& row) { return NameOfRow(row) == Trim(name); });
  if (at == rows.end()) {
    CloseList();
    return false;
  }
  ListRoutesHover(static_cast<int>(at - rows.begin()));
  return true;
}

bool MainScreen::WorkingRouteIsMissing() const {
  return TrainExeFound && !program_.files.FileExists(program_.BelowGame(kWorkingShapes));
}

void MainScreen::SendToWelcome() {
  TimerChecker.enabled = false;
  ResetButtonImages();
  program_.stage.ShowModal("frmWelcome");
}

void MainScreen::btnManageClick() {
  program_.Step("Opening the route manager");
  program_.shared.HealedNote.clear();
  // A clean-up that was cut short is finished by another one, which stands behind this door.
  if (WorkingRouteIsMissing() && !LoadMark(program_).CleanUpWasCut()) {
    program_.Refuse();
    SendToWelcome();
    return;
  }
  if (!GameWasFound(program_)) {
    TimerChecker.enabled = false;
    return;
  }
  ResetButtonImages();
  TimerFlashOn.enabled = TimerFlashOff.enabled = false;
  program_.stage.Unload("frmMain");
  program_.shared.TSPathField = program_.shared.TrainSimPath;
  program_.stage.Show("frmRoutes");
}

void MainScreen::btnOptionsClick() {
  program_.Step("Opening the options");
  program_.stage.Unload("frmMain");
  program_.shared.TSPathField = program_.shared.TrainSimPath;
  program_.stage.Show("frmOptions");
}

void MainScreen::btnHelpClick() { program_.shell.ShowHelp(program_.app.HelpFile(), "TOC"); }

void MainScreen::btnExitClick() { program_.stage.ShutDown(false); }

bool MainScreen::HasActivity(const std::string& zip) const {
  const auto anyIn = [&](const std::string& folder) {
    return !program_.files.ListFiles(folder + zip + "\\*.*").empty();
  };
  return anyIn(program_.app.Activities("")) || anyIn(program_.app.DefaultActivities() + "\\activities\\");
}

void MainScreen::LoadSelectedRoute() {
  btnLoad.picture = "loadoff";
  program_.shared.HealedNote.clear();
  if (!GameWasFound(program_)) {
    TimerChecker.enabled = false;
    return;
  }
  if (!PrepareGameFolders(program_)) return;
  program_.Step("Loading the selected route");
  if (ShowsSentinel()) {
    const bool choose = lblRouteName.text == kNoRouteLoaded && catalogue_.AnyRoute();
    SetLabel("lblRouteName", lblRouteName, std::string(kNoRouteLoaded), true);
    ShowLoaded(false);
    program_.shared.FlashTarget = choose ? "down" : "manage";
    program_.Refuse();
    return;
  }
  std::string& zip = program_.shared.LoadZip;
  zip = catalogue_.ReadCurrent("Zip", kNoData);
  program_.shared.LoadRouteName = catalogue_.ReadCurrent("Temp", kNoData);
  if (!FinishCleanUp() || !GoesOnBesideStrangers(program_)) return;
  if (!HasActivity(zip)) {
    program_.stage.ShowModal("frmNoAct");
    return;
  }
  if (WorkingRouteIsMissing()) {
    program_.Refuse();
    SendToWelcome();
    return;
  }
  TimerChecker.enabled = false;
  btnLoad.picture = "loadoff";
  zip = catalogue_.ReadCurrent("Zip", kNoData);
  program_.shared.FlashTarget.clear();
  program_.stage.ShowModal("frmLoad");
}

/// Nothing can be loaded into a half-built working route. False when it stayed so.
bool MainScreen::FinishCleanUp() {
  const LoadMark mark(program_);
  if (!mark.CleanUpWasCut()) return true;
  const std::string name = program_.shared.LoadRouteName;
  const std::string zip = program_.shared.LoadZip;
  program_.shared.CleanUpDone = false;
  program_.stage.ShowModal("frmCleanUp");
  // Start-up has run since and may have changed the selection.
  program_.shared.LoadRouteName = name;
  program_.shared.LoadZip = zip;
  catalogue_.Select(name, zip);
  return !mark.CleanUpWasCut();
}

void MainScreen::Command1Click() { DefaultFileScan(program_).Run(); }

}  // namespace quillon
