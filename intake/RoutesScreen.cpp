#include "intake/RoutesScreen.h"

#include "catalogue/GameFolders.h"

namespace quillon {

void RoutesScreen::Activate() {
  program_.shared.CleanUpDone = false;
  btnOK.enabled = true;
  PrepareGameFolders(program_);
}

void RoutesScreen::btnOKClick() {
  program_.stage.Unload(Name());
  program_.stage.Show("frmMain");
}

}  // namespace quillon
