// The view of frmReportOptions.
#pragma once

#include "checkup/CheckupScreens.h"
#include "screens/ScreenView.h"

namespace quillon {

class frmReportOptions : public ScreenView {
 public:
  frmReportOptions(ReportOptionsScreen& model, Desk& desk);

  void Sync() override;

 protected:
  bool eventFilter(QObject* watched, QEvent* event) override;

 private:
  void BindChoices();
  void TellWhatTheyDo();

  ReportOptionsScreen& model_;
  PictureButton *causes_, *fix_, *routes_;
  bool hasCauses_ = false;
  bool trains_ = true, view_ = true;
  PictureButton *chkTrains_, *chkView_;
  QLabel *label1_, *label2_;
};

}  // namespace quillon
