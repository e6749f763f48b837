#include "repair/PackScreens.h"

#include "core/text/Text.h"

namespace quillon {

PackConfirmScreen::PackConfirmScreen(Program& program)
    : Screen(program, "frmPackConfirm"), lblRouteName{ProperCase(program.shared.PackNameField)} {}

void PackConfirmScreen::Activate() {
  // Its caller has filled it before anybody could hear of it.
  program_.watcher.LabelChanged(Name(), "lblRouteName", lblRouteName);
}

void PackConfirmScreen::btnOKClick() {
  program_.stage.Unload(Name());
  program_.stage.ShowModal("frmPack");
}

void PackConfirmScreen::btnCancelClick() {
  program_.Refuse();
  program_.stage.Unload(Name());
}

PackScreen::PackScreen(Program& program)
    : ProgressScreen(program, "frmPack"),
      txtRoutePath_(program.shared.PackParentField),
      txtZipRoute_(program.shared.PackNameField),
      pack_(program, *this, txtRoutePath_, txtZipRoute_, program.shared.PackFolderField) {}

void PackScreen::Activate() {
  if (ran_) return;
  ran_ = true;
  SetLabel("lblRouteName", lblRouteName, ProperCase(txtZipRoute_), true);
  bool packed = false;
  {
    const Work work(*this);
    packed = pack_.Run();
  }
  btnOK.enabled = packed;
  if (packed) return;
  program_.Refuse();
  program_.stage.Unload(Name());
}

void PackScreen::btnOKClick() {
  if (program_.boxes.AskYesNo(
          "Remove route folder?",
          "Would you like to remove the " + txtZipRoute_ +
              " folder from Train Simulator?\r\n\r\n"
              "The folder is no longer needed for use with Quillon and removing it will \r\n"
              "free up approximately 500MB of hard drive space.\r\n\r\n"
              "Please note that if you remove this route you will lose any saved activities associated with "
              "it."))
    RemoveRouteFolder();
  program_.stage.Unload(Name());
}

void PackScreen::RemoveRouteFolder() {
  const std::string folder = txtRoutePath_ + "\\" + txtZipRoute_;
  Caption("Deleting " + folder);
  const Work work(*this);
  if (pack_.RemoveFolder()) return;
  const std::string hostFolder = program_.files.Host().HostPath(folder);
  program_.boxes.Tell(
      "Remove route folder?",
      program_.files.FileExists(folder)
          ? hostFolder +
                " could not be removed.\r\nClose what uses its files and remove the folder by "
                "hand; its zip is complete."
          : "Not all of " + hostFolder +
                " could be removed.\r\nThe rest goes at the next start; its zip is complete.");
}

}  // namespace quillon
