// Start-up: what happens each time frmMain becomes the active screen.
#pragma once

#include "catalogue/Catalogue.h"
#include "catalogue/MainScreen.h"

namespace quillon {

class StartUp {
 public:
  StartUp(Program& program, MainScreen& main) : program_(program), main_(main), catalogue_(program) {}

  void Run();

 private:
  bool RefuseSecondInstance();
  void TidyAndShow();
  void DropStaleCatalogue();
  void ForgetErrorSelection();
  void RegisterFileTypesOnce();
  void FindTrainSim();
  void ShowLoadedRoute();
  void ShowRouteOrNothing(std::string name, std::string loaded);
  void BeginCatalogue();
  void MakeFolders();
  void SeedFiles();
  void RememberPreview();
  void FinishWhatWasCut();
  void FinishInTheGame();
  void FinishPermanentInstall();
  void ChooseFlashTarget();
  void WelcomeNewUser();

  Program& program_;
  MainScreen& main_;
  Catalogue catalogue_;
  bool cleanUpFollows_ = false;
};

}  // namespace quillon
