// The views of the screens behind which a pipeline runs.
#pragma once

#include "checkup/CheckupScreens.h"
#include "intake/InitProgScreen.h"
#include "intake/ZipCheckScreen.h"
#include "loading/LoadScreen.h"
#include "repair/CleanUpScreen.h"
#include "repair/PackScreens.h"
#include "screens/ProgressView.h"

namespace quillon {

class frmLoad : public ProgressView {
 public:
  frmLoad(LoadScreen& model, Desk& desk);

  void Sync() override;
  /// A route stands in the game now.
  bool HasFinished() const { return model_.btnOK.enabled; }

 private:
  LoadScreen& model_;
  QLabel *cardRoom_, *lblRoom_;
};

class frmZipCheck : public ProgressView {
 public:
  frmZipCheck(ZipCheckScreen& model, Desk& desk);
};

class frmInitProg : public ProgressView {
 public:
  frmInitProg(InitProgScreen& model, Desk& desk);

  void Sync() override;

 private:
  InitProgScreen& model_;
  QLabel *lblMessage_, *lblWhere_;
};

class frmCleanUp : public ProgressView {
 public:
  frmCleanUp(CleanUpScreen& model, Desk& desk);
};

class frmPack : public ProgressView {
 public:
  frmPack(PackScreen& model, Desk& desk);
};

class frmActivityCheck : public ProgressView {
 public:
  frmActivityCheck(ActivityCheckScreen& model, Desk& desk);

  void Sync() override;

 private:
  ActivityCheckScreen& model_;
  QLabel* lblMessage_;
};

}  // namespace quillon
