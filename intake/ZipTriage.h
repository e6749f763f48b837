// What comes before the add-routes driver: a fresh record of the intake.
#pragma once

#include "core/Screen.h"
#include "intake/IntakeRecord.h"

namespace quillon {

class ZipTriage {
 public:
  explicit ZipTriage(Program& program) : record_(program) {}

  void Run() { record_.Begin(); }

 private:
  IntakeRecord record_;
};

/// The model of frmZipCheck: triage while it runs; it moves on by itself.
class ZipCheckScreen : public ProgressScreen {
 public:
  explicit ZipCheckScreen(Program& program) : ProgressScreen(program, "frmZipCheck") {}

  Label lblMessage;

  void Activate() override {
    SetLabel("lblMessage", lblMessage,
             "This process will vary widely in the amount of time it takes.  The time is entirely dependant "
             "on the "
             "complexity of each route being added.",
             true);
    program_.Step("Checking the downloaded files");
    {
      const Work work(*this);
      ZipTriage(program_).Run();
    }
    program_.stage.Unload(Name());
    program_.stage.ShowModal("frmInitProg");
  }
};

}  // namespace quillon
