// The views of the notices: a message on a sign, and one or two buttons.
#pragma once

#include "catalogue/Notices.h"
#include "repair/PackScreens.h"
#include "screens/ScreenView.h"

namespace quillon {

class NoticeView : public ScreenView {
 public:
  using ScreenView::ScreenView;

 protected:
  void Message(const QString& head, const QString& text);
  /// `cancel` empty: a notice with one button. `ok` names the control of the first.
  void Buttons(const char* ok, const QString& okTip, const Action& onOK, const QString& cancelTip = {},
               const Action& onCancel = {});
};

class frmWelcome : public NoticeView {
 public:
  frmWelcome(WelcomeScreen& model, Desk& desk);
};

class frmNoAct : public NoticeView {
 public:
  frmNoAct(NoActScreen& model, Desk& desk);
};

class frmCleanUpNotice : public NoticeView {
 public:
  frmCleanUpNotice(CleanUpNoticeScreen& model, Desk& desk);
};

class frmPackConfirm : public NoticeView {
 public:
  frmPackConfirm(PackConfirmScreen& model, Desk& desk);
};

class frmCustomConsist : public NoticeView {
 public:
  frmCustomConsist(CustomConsistScreen& model, Desk& desk);
};

class frmCustomMessage : public NoticeView {
 public:
  frmCustomMessage(CustomMessageScreen& model, Desk& desk);
};

}  // namespace quillon
