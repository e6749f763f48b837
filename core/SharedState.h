// The process-wide variables, by their names.
#pragma once

#include <string>
#include <vector>

namespace quillon {

/// One program's variables; they outlive its screens.
struct SharedState {
  /// The Train Simulator folder, no closing backslash.
  std::string TrainSimPath;
  /// Which button blinks: "manage", "load", "down", "options", "locate" or empty.
  std::string FlashTarget;
  /// frmWelcome has been answered; never cleared.
  bool WelcomeSeen = false;

  /// Zip names: of the row last clicked, and of the route to load.
  std::string SelectedZip, LoadZip;

  /// A row of the list has no catalogue entry.
  bool CatalogueGap = false;
  /// When the intake began, ISO 8601 with a blank; empty while none runs. Which download it is at, by its
  /// file name: when the run ends in an error, this is the odd one.
  std::string IntakeBegan, DownloadAtWork;
  /// Some zip was set aside in this intake.
  bool ZipsSetAside = false;
  /// The intake report is to be shown when frmRoutes comes up.
  bool ShowIntakeReport = false;

  /// The way out of clean-up to intake and back.
  bool RebuildAfterCleanUp = false, ReturnToCleanUp = false;
  /// Clean-up has run: its screen only shows the finish.
  bool CleanUpDone = false;
  /// Trains are to be tested by the Checkup; its report is to be opened then, and written when frmRoutes
  /// comes up.
  bool CheckTrains = false, ShowReportWhenDone = false, BuildReportOnReturn = false;
  /// Zip names of routes that frmActivityCheck is to judge, in place of the game.
  std::vector<std::string> RoutesToJudge;
  /// The clean-up finishes a Make permanent of the route with this display name.
  bool MakingPermanent = false;
  std::string RemovedRouteName;

  /// What one scan of the Checkup leaves to the next: the item last found good, in lower case, and the name
  /// of the consist last read.
  std::string LastVerifiedItem, LastConsistName;

  /// The load copied a consist; its script has a message.
  bool CustomConsistsAdded = false, CustomMessagePending = false;
  /// That message: the caption of frmCustomMessage.lblMessage.
  std::string CustomMessage;

  /// Hidden fields that a caller fills before it shows the screen: frmLoad.lblRouteName, and txtTSPath of
  /// frmRoutes and frmOptions.
  std::string LoadRouteName, TSPathField;
  /// txtRoutePath and txtZipRoute of frmPack.
  std::string PackParentField, PackNameField;
  /// The route's folder as the disk spells it.
  std::string PackFolderField;

  /// What was healed since the user last did something, for the main screen.
  std::string HealedNote;

  /// A rebuilt zip has been seen once; only the first wait of a process takes time.
  bool FileFound = false;
};

}  // namespace quillon
