// The model of frmOptions: where the game lies, and the shortcut on the desktop.
#pragma once

#include <string>

#include "core/Controls.h"
#include "core/Screen.h"

namespace quillon {

class OptionsScreen : public Screen {
 public:
  explicit OptionsScreen(Program& program);

  bool chkShortcut = true;
  Label lblVersion;
  /// The offer to visit the support page, shown while the pointer is over Label5.
  Label goToWebPage{"Check for updates, post questions to the forum, and get news.", false};
  Button btnLocate{"locateoff"};
  Timer TimerFlashOn{500, true}, TimerFlashOff{500};

  void Activate() override;

  const std::string& txtTSPath() const { return path_; }
  /// The field's change handler: an empty text gives way to the one before the last browse.
  void SetTSPath(const std::string& path);
  /// Before the folder picker: the folder on which it opens.
  std::string btnLocateClick();
  /// The picker's result; empty when it was cancelled.
  void FolderPicked(const std::string& path) { SetTSPath(path); }

  /// What is wrong with the folder in the field; empty when the game is there.
  std::string Hint() const;
  /// That the user may not change the game in that folder, or Quillon's own, and what to do; empty when he may.
  const std::string& RightsHint() const { return rights_; }

  void btnOKClick();
  void btnCancelClick();
  void Label5Hover() { goToWebPage.visible = true; }
  void ScreenHover() { goToWebPage.visible = false; }
  void goToWebPageClick() { program_.shell.OpenInShell(kSupportPage); }
  void Label7Click() { chkShortcut = !chkShortcut; }

  void TimerFlashOnTick();
  void TimerFlashOffTick();

 private:
  void BackToMain();

  std::string path_, atActivation_, beforeBrowse_, rights_;
};

}  // namespace quillon
