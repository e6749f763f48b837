#include "repair/CleanUpScreen.h"

#include "catalogue/RouteRemoval.h"
#include "intake/ForeignDownloads.h"
#include "repair/CleanUp.h"

namespace quillon {

void CleanUpScreen::Activate() {
  if (ran_ || TimerWait.enabled) return;
  program_.shared.CheckTrains = true;
  const std::string what = program_.shared.MakingPermanent
                               ? "Quillon is now permanently installing the route."
                               : "Quillon is now setting up its default files.";
  SetLabel("lblMessage", lblMessage, what + "\r\nThis may take a few minutes...", true);
  btnOK.enabled = false;
  TimerWait.enabled = true;
}

void CleanUpScreen::TimerWaitTick() {
  TimerWait.enabled = false;
  ran_ = true;
  Caption(program_.shared.MakingPermanent ? "Installing route..." : "Optimizing route space...");
  if (!program_.shared.CleanUpDone) {
    RebuildCatalogue();
    const Work work(*this);
    CleanUp(program_, *this).Run();
    RouteRemoval::PermanentIsDone(program_);
  }
  Finish();
}

/// Route files without entries: only a new intake of the originals can mend that. It leads back here, so that
/// the steps run inside it and then once more.
void CleanUpScreen::RebuildCatalogue() {
  SharedState& shared = program_.shared;
  if (!shared.CatalogueGap || shared.ReturnToCleanUp) return;
  program_.Step("Taking the original zips in again");
  program_.files.CopyAllFiles(program_.app.Installed() + "\\", program_.app.DownloadedRoutes() + "\\",
                              "*.zip");
  BringForeignOriginals();
  shared.RebuildAfterCleanUp = true;
  program_.stage.Unload(Name());
  program_.stage.ShowModal("frmInitProg");
}

/// Originals of other formats than zip, where there is no newer zip.
void CleanUpScreen::BringForeignOriginals() {
  const std::string installed = program_.app.Installed() + "\\";
  for (const auto& name : program_.files.ListFiles(installed + "*.*"))
    if (!program_.files.FileExists(program_.app.DownloadedRoutes() + "\\" + name) &&
        ForeignDownloads::IsOne(name) &&
        !program_.files.FileExists(installed + ForeignDownloads::ZipOf(name)))
      program_.files.FileCopy(installed + name, program_.app.DownloadedRoutes() + "\\" + name);
}

void CleanUpScreen::Finish() {
  Value(bar.maximum);
  Colour(kGreen);
  Caption("Finished!");
  program_.shared.CleanUpDone = true;
  program_.shared.CheckTrains = false;
  btnOK.enabled = true;
}

void CleanUpScreen::btnOKClick() {
  if (program_.shared.MakingPermanent) {
    program_.boxes.Tell("Quillon",
                        program_.shared.RemovedRouteName +
                            " has been permanently installed into Train Simulator and removed from Quillon.");
    program_.shared.MakingPermanent = false;
  }
  program_.stage.Unload(Name());
}

}  // namespace quillon
