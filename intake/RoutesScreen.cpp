#include "intake/RoutesScreen.h"

#include <algorithm>
#include <array>

#include "catalogue/GameFolders.h"
#include "checkup/CheckupReport.h"
#include "core/text/Text.h"
#include "intake/IntakeReport.h"

namespace quillon {
namespace {

struct Explanation {
  std::string_view button, head, first, second;
};

constexpr std::array<Explanation, 7> kExplanations = {{
    {"cmdAddRoutes", "Use Add Routes to automatically add all of your downloaded custom routes to Quillon. ",
     "New route files you download from the Internet should be placed in your 'downloaded_routes' folder.  "
     "When you click 'Add Routes', any route zip files inside this folder will be automatically added to "
     "Quillon.",
     "Please note:  Some zip files may not be fully compatible with this automatic addition process but may "
     "be added via the 'Pack Route' option if this is the case."},
    {"btnWhy", "Use Why? to see what became of each of your downloads the last time that you added routes.",
     "Each of them was added, or set aside, or could not be used.  Click 'Why?', choose a download and read "
     "the whole reason.  'Open folder' leads to where the file lies now.",
     "Note: The times before are told by the file 'intake.log' in the folder of Quillon."},
    {"btnPack",
     "Use Pack Route to create a Quillon compatible file from a route that has been previously installed "
     "into Train Simulator.",
     "This is especially useful if you have had to manually install a route or updates to a route.  Click "
     "'Pack Route', and when prompted, simply select the route you want to pack and and click OK.",
     "When the packaging is finished, click 'Add Routes' and the route will then be added to Quillon."},
    {"btnZips", "Use Route Files to access your original zip files. ",
     "When Quillon adds a route, the route's zip file is reconfigured for compatibility.  The original "
     "unmodified zip files are then stored in special folders so that you may make back-ups if you desire.",
     "Note: The original zip files have been separated into appropriate folders for ease of backing up.  "
     "Please read the appropriate info file inside each folder for details on which files they contain."},
    {"btnClean",
     "Use Clean if you are having trouble with routes working properly in Train Simulator when loaded from "
     "Quillon. ",
     "If you've encountered any strange behavior while driving a route in Train Simulator, clicking 'Clean' "
     "may help.  It initiates a full cleansing of the Quillon files and in most cases will clear up any "
     "problems.  There should not be a need to use the 'Clean' option very often, if at all.",
     "Note:  After cleaning up, you'll have to select and load a route from the main screen."},
    {"btnCheckup",
     "Use Checkup to perform a detailed analysis of all of the activities, trains, and consists you have in "
     "Train Simulator.",
     "Running a checkup is a good idea whenever you download new activities or routes.  The resulting report "
     "will let you know about any potential problems.  Once the checkup is completed, click 'View Report' to "
     "see the results.",
     "Note: This operation may take a few minutes depending on how many files you have installed."},
    {"btnShelf",
     "Use Rescued Files to get back what a load, a clean-up or a removal would have deleted for good.",
     "Older saved activities, your own changes to a loaded route, and routes that you removed are kept here, "
     "the "
     "newest ten of each route.  Choose one and put it back where it came from.",
     "Note: When they take too much of your disk the oldest ones go first."},
}};
constexpr std::string_view kMoreInfo = "For more info please click 'Help'.";

struct Refusal {
  std::string_view folder, title, message;
};

// Below the folder of the routes, in lower case.
constexpr std::array<Refusal, 10> kRefusals = {{
    {"", "Not a route...", "You can not pack the whole routes folder!"},
    {"\\europe1", "Not a custom route...", "EUROPE1 is not a custom route and can not be packed."},
    {"\\europe2", "Not a custom route...", "EUROPE2 is not a custom route and can not be packed."},
    {"\\japan1", "Not a custom route...", "JAPAN1 is not a custom route and can not be packed."},
    {"\\japan2", "Not a custom route...", "JAPAN2 is not a custom route and can not be packed."},
    {"\\usa1", "Not a custom route...", "USA1 is not a custom route and can not be packed."},
    {"\\usa2", "Not a custom route...", "USA2 is not a custom route and can not be packed."},
    {"\\tutorial route", "Not a custom route...",
     "TUTORIAL ROUTE is not a custom route and can not be packed."},
    {"\\template", "Not a custom route...", "TEMPLATE is not a custom route and can not be packed."},
    {"\\quillon-route", "Not a standard route...",
     "This route is used internally by Quillon and can not be packed."},
}};

}  // namespace

RoutesScreen::RoutesScreen(Program& program)
    : Screen(program, "frmRoutes"), txtTSPath_(program.shared.TSPathField) {}

void RoutesScreen::Activate() {
  program_.shared.CleanUpDone = false;
  FlashState_.clear();
  FlashAllowed_ = true;
  if (!TimerFlashOff.enabled) TimerFlashOn.enabled = true;
  btnOK.enabled = true;
  if (!PrepareGameFolders(program_)) return;
  if (program_.shared.BuildReportOnReturn) WriteCheckupReport(program_);
  if (program_.shared.ShowIntakeReport) WriteIntakeReport(program_);
}

void RoutesScreen::Explain(std::string_view button) {
  const auto at = std::find_if(kExplanations.begin(), kExplanations.end(),
                               [&](const auto& explanation) { return explanation.button == button; });
  if (at == kExplanations.end()) return;
  const std::string gap = "\r\n\r\n";
  SetLabel("lblInstructHead", lblInstructHead, std::string(at->head), true);
  SetLabel("lblInstructMid", lblInstructMid,
           std::string(at->first) + gap + std::string(at->second) + gap + std::string(kMoreInfo), true);
}

void RoutesScreen::cmdAddRoutesClick() {
  FlashAllowed_ = false;
  StopFlashing();
  program_.stage.Show("frmZipCheck");
}

void RoutesScreen::btnCleanClick() {
  FlashAllowed_ = false;
  StopFlashing();
  program_.stage.ShowModal("frmCleanUpNotice");
}

void RoutesScreen::btnCheckupClick() {
  FlashAllowed_ = false;
  StopFlashing();
  program_.shared.BuildReportOnReturn = false;
  program_.stage.Show("frmReportOptions");
}

void RoutesScreen::btnShelfClick() {
  FlashAllowed_ = false;
  StopFlashing();
  program_.stage.ShowModal("frmShelf");
}

void RoutesScreen::btnWhyClick() {
  FlashAllowed_ = false;
  StopFlashing();
  program_.stage.ShowModal("frmWhy");
}

std::string RoutesScreen::btnPackClick() {
  FlashAllowed_ = false;
  StopFlashing();
  return CutBackslash(LowerCase(txtTSPath_) + "\\routes");
}

void RoutesScreen::PackFolderPicked(const std::string& folder) {
  const std::string RoutesRoot = LowerCase(txtTSPath_) + "\\routes";
  const std::string spelled = CutBackslash(TextOfHostPath(program_, folder));
  const std::string ChosenFolder = LowerCase(spelled);
  if (ChosenFolder.empty()) return;
  if (RefuseFolder(ChosenFolder, RoutesRoot, spelled)) {
    program_.Refuse();
    return;
  }
  program_.shared.PackParentField = RoutesRoot;
  program_.shared.PackFolderField = spelled;
  program_.shared.PackNameField = ChosenFolder.substr(RoutesRoot.size() + 1);
  program_.stage.ShowModal("frmPackConfirm");
}

bool RoutesScreen::RefuseFolder(const std::string& ChosenFolder, const std::string& RoutesRoot,
                                const std::string& spelled) {
  if (!ChosenFolder.starts_with(RoutesRoot)) {
    program_.boxes.Tell("Quillon", "That is not a route!");
    return true;
  }
  const std::string_view below = std::string_view(ChosenFolder).substr(RoutesRoot.size());
  const auto refusal =
      std::find_if(kRefusals.begin(), kRefusals.end(), [&](const auto& row) { return row.folder == below; });
  if (refusal != kRefusals.end()) {
    program_.boxes.Tell(refusal->title, refusal->message);
    return true;
  }
  if (below.front() != '\\' || below.find('\\', 1) != below.npos) {
    program_.boxes.Tell("Quillon", "Not a full route!  Pick the actual route folder.");
    return true;
  }
  if (program_.files.IsPathAFolder(spelled)) return false;
  program_.boxes.Tell("Quillon", "That is not a route!");
  return true;
}

void RoutesScreen::btnOKClick() {
  program_.stage.Unload(Name());
  program_.stage.Show("frmMain");
}

void RoutesScreen::TimerFlashOnTick() {
  if (FlashAllowed_ && !program_.files.FileExists(program_.app.AnyRouteFile()))
    FlashState_ = "add";
  else
    StopFlashing();
  TimerFlashOff.enabled = true;
  TimerFlashOn.enabled = false;
  if (FlashState_ == "add") cmdAddRoutes.picture = "addover";
}

void RoutesScreen::TimerFlashOffTick() {
  TimerFlashOn.enabled = true;
  TimerFlashOff.enabled = false;
  if (FlashState_ == "add") cmdAddRoutes.picture = "addoff";
}

void RoutesScreen::StopFlashing() {
  TimerFlashOn.enabled = false;
  cmdAddRoutes.picture = "addoff";
  FlashState_.clear();
}

}  // namespace quillon
