// The model of frmLoad: a load while it runs, and its end.
#pragma once

#include <string_view>

#include "catalogue/MainScreen.h"
#include "core/Controls.h"
#include "core/Screen.h"
#include "loading/LoadRoute.h"

namespace quillon {

class LoadScreen : public ProgressScreen, private LoadTexts {
 public:
  explicit LoadScreen(Program& program) : ProgressScreen(program, "frmLoad") {}

  Label lblRouteName{"", false}, lblFirstMessage{"", false}, lblTerrainInfo{"", false}, lblMessage{"", false};
  /// What the load needs of the disks, when it is tight.
  Label lblRoom{"", false};
  Button btnOK{.enabled = false};
  /// OK, and then the game in place of this program. Off until the route is loaded, and where nothing is
  /// known that starts the game.
  Button btnStart{.enabled = false};

  /// Runs the load to its end.
  void Activate() override {
    if (ran_) return;
    ran_ = true;
    SetLabel("lblRouteName", lblRouteName, program_.shared.LoadRouteName, false);
    AllowMainScreen(false);
    {
      const Work work(*this);
      LoadRoute(program_, *this, *this).Run();
    }
    btnOK.enabled = true;
    btnStart.enabled = !GameCommand().empty() || program_.files.FileExists(program_.BelowGame(kTrainExe));
  }

  void btnOKClick() {
    AllowMainScreen(true);
    program_.stage.Unload(Name());
    if (program_.shared.CustomConsistsAdded)
      program_.stage.ShowModal("frmCustomConsist");
    else if (program_.shared.CustomMessagePending)
      program_.stage.ShowModal("frmCustomMessage");
  }

  void btnStartClick() {
    btnOKClick();
    if (program_.stage.Ended()) return;
    program_.stage.ShutDown(false);
    program_.shell.StartGame(program_.BelowGame(kTrainExe), GameCommand());
  }

 private:
  /// The user's own, in place of the game's program.
  std::string GameCommand() const {
    return program_.ini.ReadIni("TrainSim", "Command", "", program_.app.SettingsIni());
  }
  void AllowMainScreen(bool allow) {
    if (auto* main = dynamic_cast<MainScreen*>(program_.stage.Find("frmMain"))) main->EnableButtons(allow);
  }
  void SetFirstMessage(std::string_view text) override {
    SetLabel("lblFirstMessage", lblFirstMessage, std::string(text), false);
  }
  void ShowRoute() override {
    SetLabel("lblRouteName", lblRouteName, lblRouteName.text, true);
    SetLabel("lblFirstMessage", lblFirstMessage, lblFirstMessage.text, true);
  }
  void SetTerrainInfo(std::string_view text, bool visible) override {
    SetLabel("lblTerrainInfo", lblTerrainInfo, std::string(text), visible);
  }
  void SetRoom(std::string_view text) override {
    SetLabel("lblRoom", lblRoom, std::string(text), !text.empty());
  }
  void ShowResult(std::string_view text) override {
    SetLabel("lblMessage", lblMessage, std::string(text), false);
    SetLabel("lblRouteName", lblRouteName, lblRouteName.text, false);
    SetLabel("lblTerrainInfo", lblTerrainInfo, lblTerrainInfo.text, false);
    SetLabel("lblFirstMessage", lblFirstMessage, lblFirstMessage.text, false);
    SetLabel("lblRoom", lblRoom, lblRoom.text, false);
    SetLabel("lblMessage", lblMessage, std::string(text), true);
  }

  bool ran_ = false;
};

}  // namespace quillon
