// The view of frmMain.
#pragma once

#include "catalogue/MainScreen.h"
#include "screens/ScreenView.h"

namespace quillon {

class frmMain : public ScreenView {
 public:
  frmMain(MainScreen& model, Desk& desk);

  void Sync() override;
  void ShowWait(const QString& what) override { wait_ = what.toStdString(); }

 protected:
  void Escape() override;
  void mousePressEvent(QMouseEvent* event) override;

 private:
  void BindButtons();
  void BindLists();
  void BindTimers();
  void BindPlayable();
  bool ListIsOpen() const;
  void ShowLamp();
  void ShowPlayable();
  void ShowPreview();
  void ShowHint();

  MainScreen& model_;
  QLabel *imgRoute_, *lampLoaded_, *hint_, *lampPlayable_, *lblPlayable_;
  PictureButton* signPlayable_;
  Button playable_{.visible = false};
  QString aspect_;
  std::string shown_;
  std::string wait_;
};

}  // namespace quillon
