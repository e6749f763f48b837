#include "screens/NoticeViews.h"

namespace quillon {

void NoticeView::Message(const QString& head, const QString& text) {
  AddText("lblHead", head);
  AddText("lblText", text);
  setWindowTitle("Quillon: " + head);
  setAccessibleDescription(head + "\n" + text);
}

void NoticeView::Buttons(const char* ok, const QString& okTip, const Action& onOK, const QString& cancelTip,
                         const Action& onCancel) {
  static const Button always;
  PictureButton* first = Bind(ok, always, okTip, onOK);
  SetDefault(first);
  SetCancel(onCancel ? Bind("btnCancel", always, cancelTip, onCancel) : first);
}

frmWelcome::frmWelcome(WelcomeScreen& model, Desk& desk) : NoticeView(model, desk) {
  Message("Welcome to Quillon!",
          "Quillon did not find its working route in Train Simulator. It needs one folder of its own among "
          "the routes "
          "of the game, built from the game's own files.\n\nClick OK to set it up now. This may take a few "
          "minutes and "
          "is needed only once. Your other routes stay as they are.\n\nClick Cancel to do this later; "
          "Quillon will ask "
          "again.");
  Buttons(
      "btnOK", "Set up the working route.", [&model] { model.btnOKClick(); }, "Do this later.",
      [&model] { model.btnCancelClick(); });
  setWindowTitle("Welcome to Quillon");
}

frmNoAct::frmNoAct(NoActScreen& model, Desk& desk) : NoticeView(model, desk) {
  Message("No activities",
          "The selected route has no activities. You can drive it in explorer mode, but there is nothing to "
          "choose from "
          "in the list of activities.\n\nLoad it: Load the selected route into Train Simulator.\nCancel: "
          "Don't load the "
          "selected route into Train Simulator.");
  Buttons(
      "btnLoad", "Load the selected route into Train Simulator.", [&model] { model.btnLoadClick(); },
      "Don't load the selected route into Train Simulator.", [&model] { model.btnCancelClick(); });
}

frmCleanUpNotice::frmCleanUpNotice(CleanUpNoticeScreen& model, Desk& desk) : NoticeView(model, desk) {
  Message(
      "Clean up?",
      "A clean-up builds the working route anew from the game's own files. Do this when routes no longer "
      "load "
      "as they should. Afterwards no route is loaded.\n\n"
      "Your routes and saved activities stay. Activities and files that you added to the loaded route, or "
      "changed, go to the rescued files.\n\nDo you want to clean up now?");
  Buttons(
      "btnOK", "Clean up now.", [&model] { model.btnOKClick(); }, "Leave everything as it is.",
      [&model] { model.btnCancelClick(); });
}

frmPackConfirm::frmPackConfirm(PackConfirmScreen& model, Desk& desk) : NoticeView(model, desk) {
  setWindowTitle("Quillon: Pack a route?");
  Bind("lblRouteName", model.lblRouteName);
  AddText("lblText",
          "Do you want to pack this route into a zip file? The zip will be put into the folder "
          "downloaded_routes, ready "
          "to be added to Quillon.\n\nThis may take a few minutes. The route itself is not changed by the "
          "packing.");
  Buttons(
      "btnOK", "Pack the route.", [&model] { model.btnOKClick(); }, "Don't pack the route.",
      [&model] { model.btnCancelClick(); });
}

frmCustomConsist::frmCustomConsist(CustomConsistScreen& model, Desk& desk) : NoticeView(model, desk) {
  Message("New consists were added",
          "This route brought a consists file that you did not have. It now stands in the regular consists "
          "folder of "
          "Train Simulator.\n\nIf Train Simulator fails at its start, the cause may be trains that this "
          "consist refers "
          "to and that are not installed on your system.\n\nThe Checkup of the route manager screen can find "
          "such "
          "troubles.");
  Buttons("btnOK", "Go on.", [&model] { model.btnOKClick(); });
}

frmCustomMessage::frmCustomMessage(CustomMessageScreen& model, Desk& desk) : NoticeView(model, desk) {
  setWindowTitle("Quillon: A word from the route's author");
  BindScrolled("lblMessage", model.lblMessage);
  Buttons("btnOK", "Go on.", [&model] { model.btnOKClick(); });
}

}  // namespace quillon
