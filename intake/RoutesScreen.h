// The model of frmRoutes, the route manager: the hub for everything beside loading a route.
#pragma once

#include <string>
#include <string_view>

#include "core/Controls.h"
#include "core/Screen.h"

namespace quillon {

class RoutesScreen : public Screen {
 public:
  explicit RoutesScreen(Program& program);

  Button cmdAddRoutes{"addoff"}, btnPack, btnZips, btnClean, btnCheckup, btnShelf, btnWhy, btnHelp, btnOK;
  /// The explanation pane.
  Label lblInstructHead, lblInstructMid;
  Timer TimerFlashOn{500, true}, TimerFlashOff{500};

  void Activate() override;

  /// The pointer is over a button, or the keyboard has reached it: the pane explains it. Other names change
  /// nothing.
  void Explain(std::string_view button);

  void cmdAddRoutesClick();
  void btnCleanClick();
  void btnCheckupClick();
  /// Gives the folder on which the picker opens.
  std::string btnPackClick();
  /// The picker's result, a path of the host or a text of the system; empty when it was cancelled.
  void PackFolderPicked(const std::string& folder);
  void btnZipsClick() { program_.shell.Explore(program_.app.OriginalZips() + "\\"); }
  void btnShelfClick();
  void btnWhyClick();
  void btnHelpClick() { program_.shell.ShowHelp(program_.app.HelpFile(), "TOC"); }
  void btnOKClick();

  void TimerFlashOnTick();
  void TimerFlashOffTick();

 private:
  void StopFlashing();
  bool RefuseFolder(const std::string& ChosenFolder, const std::string& RoutesRoot,
                    const std::string& spelled);

  const std::string txtTSPath_;
  bool FlashAllowed_ = true;
  std::string FlashState_;
};

}  // namespace quillon
