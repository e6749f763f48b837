// The view of frmMain.
#pragma once

#include "catalogue/MainScreen.h"
#include "screens/ScreenView.h"

namespace quillon {

class frmMain : public ScreenView {
 public:
  frmMain(MainScreen& model, Desk& desk);

  void Sync() override;
  /// The screen comes back after a load: what a user does next is to leave.
  void OfferExit() { offersExit_ = true; }
  void ShowWait(const QString& what) override { wait_ = what.toStdString(); }

 protected:
  void Escape() override;
  void CloseAsked() override;
  void mousePressEvent(QMouseEvent* event) override;

 private:
  void BindButtons();
  void BindLists();
  void BindTimers();
  void BindPlayable();
  void BindTimetable();
  bool ListIsOpen() const;
  void ShowLamp();
  void ShowPlayable();
  void ShowPreview();
  void ShowHint();
  void OpenAtChoice();

  MainScreen& model_;
  QLabel *imgRoute_, *lampLoaded_, *hint_, *lampPlayable_, *lblPlayable_;
  PictureButton* signPlayable_;
  Button playable_{.visible = false}, timetable_;
  HoverList* routes_;
  PictureButton* btnExit_;
  std::string shown_;
  bool offersExit_ = false;
  std::string wait_;
};

}  // namespace quillon
