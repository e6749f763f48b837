#include "intake/ZipCheckScreen.h"

#include "intake/InitProgScreen.h"
#include "intake/ZipTriage.h"

namespace quillon {

void ZipCheckScreen::Activate() {
  SetLabel("lblMessage", lblMessage, kTakesItsTime, true);
  {
    const Work work(*this);
    ZipTriage(program_, *this).Run();
  }
  program_.stage.Unload(Name());
  program_.stage.ShowModal("frmInitProg");
}

void ZipCheckScreen::Timer2Tick() {
  decoration_ += program_.random.Whole(20);
  if (decoration_ > 100) decoration_ = 5;
  Value(decoration_);
  program_.random.Whole(20);  // drawn and left
}

}  // namespace quillon
