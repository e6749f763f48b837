// The model of frmMain, the start screen from which everything else is opened.
#pragma once

#include <string>
#include <utility>
#include <vector>

#include "catalogue/Catalogue.h"
#include "core/Controls.h"
#include "core/Screen.h"

namespace quillon {

class MainScreen : public Screen {
 public:
  static constexpr int kListMiddle = 40;  // pixels from the top of ListRoutes: no scrolling there

  explicit MainScreen(Program& program);

  Label lblRouteName{"No route loaded."}, lblLoaded{""},
      lblRightClick{"Right click a route for options >", false};
  /// How many activities of the loaded route can be played, while its name is on view; empty until a Checkup
  /// has looked. A click opens the page of causes at it.
  Label lblPlayable{"", false};
  /// Path of the picture on view.
  std::string imgRoute;
  List ListRoutes{.enabled = false, .visible = false}, infoList{.enabled = false, .visible = false};
  /// The action menu of a route: a question, Yes and No.
  List toolsListHeader{.enabled = false, .visible = false}, toolsList{.enabled = false, .visible = false};
  std::vector<std::string> ListZips;
  Button btnManage{"manageoff"}, btnLoad{"loadoff"}, btnRouteList{"downoff"}, btnOptions{"optionsoff"};
  Button btnInfo, btnHelp, btnExit;
  /// All routes, in frmTimetable.
  Button btnTimetable;
  Timer TimerChecker{50, true}, TimerFlashOn{500, true}, TimerFlashOff{500}, TimerWait{700}, TimerUp{2},
      TimerDown{2}, Timer1{100};

  bool TrainExeFound = false;
  std::string SelectedRouteName, PreviewPath;
  /// The row of the route whose menu is open, without "(Loaded)".
  std::string RightClickName;
  /// The menu asks for Make permanent.
  bool PermanentMode = false;
  /// Folder of the files in infoList, closing backslash; empty without a route.
  std::string infoListPath;

  /// Start-up.
  void Activate() override;

  void btnRouteListClick();
  /// The pointer is over a row, or the row was made the current one by key: hovering is selecting. `y` in
  /// pixels from the list's top: near its edges it scrolls.
  void ListRoutesHover(int row, int y = kListMiddle);
  /// Left press on the current row, or the Enter key.
  void ListRoutesLeftPress();
  /// Right press on the current row: its action menu.
  void ListRoutesRightPress();
  void toolsListHover(int row);
  /// Left press on the current row of the menu.
  void toolsListLeftPress();
  void infoListHover(int row);
  /// A click on the hint or on the background.
  void CloseList();

  void lblPlayableClick();

  void btnInfoClick();
  /// Left press on a row of infoList.
  void infoListLeftPress(int row);

  /// Opens the timetable, and does what it was closed for.
  void btnTimetableClick();
  /// What the timetable wants done once it has gone: all acts on routes are this screen's.
  enum class Wish { Nothing, Load, MakePermanent };
  void WishFor(Wish wish, std::string name) {
    wish_ = wish;
    wishedRoute_ = std::move(name);
  }
  /// The selection falls back to the loaded route.
  void ShowAfterRemoval();

  void btnManageClick();
  void btnOptionsClick();
  void btnHelpClick();
  void btnExitClick();
  void btnLoadClick() { LoadSelectedRoute(); }

  /// The action of the hidden button "Make List".
  void Command1Click();

  void TimerFlashOnTick();
  void TimerFlashOffTick();
  void TimerUpTick();
  void TimerDownTick();
  void TimerCheckerTick();
  void TimerWaitTick();
  void Timer1Tick();

  /// The seven buttons that start something, all at once.
  void EnableButtons(bool enabled);
  /// What to do next, for the empty board; empty when nothing flashes.
  std::string Hint() const;

  /// Off pictures everywhere, and nothing flashes.
  void ResetButtonImages();

 private:
  void ListRoutesClick();
  void LoadSelectedRoute();
  bool WorkingRouteIsMissing() const;
  void SendToWelcome();
  bool FinishCleanUp();
  bool HasActivity(const std::string& zip) const;
  void ShowPreview(const std::string& path);
  /// "Currently loaded route" when `name` is the loaded one and the label shows a route.
  void SetLoadedLabel(std::string_view name);
  void ShowLoaded(bool loaded);
  void HideLists();
  void ShowToolsState();
  void FillTools(const std::string& row);
  bool AskAndAct();
  bool PickRow(const std::string& name);
  /// The button that `FlashTarget` names; null for the others.
  Button* FlashingButton();
  bool ShowsSentinel() const;

  Catalogue catalogue_;
  bool looksForGaps_ = false, hasGaps_ = false;
  Wish wish_ = Wish::Nothing;
  std::string wishedRoute_;
  friend class StartUp;
};

}  // namespace quillon
