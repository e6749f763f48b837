#include "headless/HeadlessFrontEnd.h"

#include "catalogue/MainScreen.h"
#include "catalogue/Notices.h"
#include "catalogue/TimetableScreen.h"
#include "checkup/CheckupScreens.h"
#include "core/host/Desktop.h"
#include "core/text/Text.h"
#include "intake/InitProgScreen.h"
#include "loading/LoadScreen.h"
#include "repair/CleanUpScreen.h"
#include "repair/PackScreens.h"

namespace quillon {
namespace {

constexpr auto kBarInterval = std::chrono::milliseconds(100);
constexpr auto kLongestAnswer = std::chrono::seconds(2);  // of a desktop that has a program

}  // namespace

void HeadlessFrontEnd::Tell(std::string_view title, std::string_view text) {
  output_.Put({{"event", "box"}, {"title", title}, {"text", text}, {"buttons", "ok"}, {"answer", "ok"}});
}

bool HeadlessFrontEnd::AskYesNo(std::string_view title, std::string_view text) {
  output_.Put({{"event", "box"},
               {"title", title},
               {"text", text},
               {"buttons", "yesno"},
               {"answer", options_.answerYes ? "yes" : "no"}});
  return options_.answerYes;
}

void HeadlessFrontEnd::OpenInShell(std::string_view path) {
  output_.Put({{"event", "open"}, {"path", path}, {"host", hostPath_(path)}});
  if (options_.open) TellUnopened(OpenWithDesktop(hostPath_(path)), hostPath_(path));
}

/// No command asks for it: who types commands starts the game alike.
void HeadlessFrontEnd::StartGame(std::string_view trainExe, std::string_view) { OpenInShell(trainExe); }

void HeadlessFrontEnd::Explore(std::string_view folder) {
  output_.Put({{"event", "explore"}, {"path", folder}});
  if (options_.open) TellUnopened(ExploreWithDesktop(hostPath_(folder)), hostPath_(folder));
}

void HeadlessFrontEnd::ShowHelp(std::string_view file, std::string_view command) {
  output_.Put({{"event", "help"}, {"file", file}, {"command", command}});
  // No desktop knows the table; a browser knows the pages.
  const std::string index = hostPath_(std::string(FolderOf(file)) + "help\\index.html");
  if (options_.open) TellUnopened(OpenWithDesktop(index), index);
}

void HeadlessFrontEnd::TellUnopened(DesktopAnswer answer, const std::string& hostPath) {
  if (answer.wait_for(kLongestAnswer) == std::future_status::ready && !answer.get())
    std::fprintf(stderr, "quillon: could not be opened: %s (no program for it, or the program failed)\n",
                 hostPath.c_str());
}

void HeadlessFrontEnd::PutBar(const std::string& screen, HeldBar& bar) {
  output_.Put({{"event", "bar"}, {"screen", screen}, {"value", bar.value}, {"maximum", bar.maximum}});
  bar.held = false;
  bar.sent = std::chrono::steady_clock::now();
}

/// The Checkup's captions name each consist: a person wants the passes.
bool HeadlessFrontEnd::NamesOneFile(std::string_view screen, std::string_view caption) {
  return screen == "frmActivityCheck" && !caption.ends_with("...") && !caption.ends_with("!");
}

void HeadlessFrontEnd::BarChanged(std::string_view screen, const ProgressBar& bar, BarChange change) {
  const std::string name(screen);
  HeldBar& held = bars_[name];
  if (change == BarChange::Value) {
    held.value = bar.value;
    held.maximum = bar.maximum;
    held.held = true;
    if (std::chrono::steady_clock::now() - held.sent >= kBarInterval) PutBar(name, held);
    return;
  }
  // A reader sees the value that stood when the caption changed.
  if (held.held) PutBar(name, held);
  if (change == BarChange::Caption && (options_.json || !NamesOneFile(screen, bar.caption)))
    output_.Put({{"event", "caption"}, {"screen", screen}, {"text", bar.caption}});
  else if (change == BarChange::Colour)
    output_.Put({{"event", "colour"}, {"screen", screen}, {"colour", bar.colour}});
}

void HeadlessFrontEnd::Flush() {
  for (auto& [screen, bar] : bars_)
    if (bar.held) PutBar(screen, bar);
}

void HeadlessFrontEnd::LabelChanged(std::string_view screen, std::string_view control, const Label& label) {
  output_.Put({{"event", "text"},
               {"screen", screen},
               {"control", control},
               {"text", label.text},
               {"visible", label.visible}});
}

void HeadlessFrontEnd::ScreenShown(Screen& screen, bool) {
  lastScreen_ = screen.Name();
  if (screen.Name() == "frmInitProg") intakeOpen_ = true;
  if (screen.Name() == "frmCleanUp") cleanUpOpen_ = true;
  output_.Put({{"event", "show"}, {"screen", screen.Name()}});
}

void HeadlessFrontEnd::ScreenActivated(Screen& screen) {
  const auto* main = dynamic_cast<const MainScreen*>(&screen);
  if (main == nullptr) return;
  const SharedState& shared = main->Shared();
  output_.Put({{"event", "main"},
               {"lblRouteName", main->lblRouteName.text},
               {"lblLoaded", main->lblLoaded.text},
               {"lblPlayable", main->lblPlayable.text},
               {"imgRoute", main->imgRoute},
               {"PreviewPath", main->PreviewPath},
               {"FlashTarget", shared.FlashTarget},
               {"TrainSimPath", shared.TrainSimPath},
               {"TrainExeFound", main->TrainExeFound}});
}

void HeadlessFrontEnd::ScreenUnloaded(const std::string& name) {
  if (name == "frmInitProg") intakeOpen_ = false;
  if (name == "frmCleanUp") cleanUpOpen_ = false;
  Flush();
  output_.Put({{"event", "unload"}, {"screen", name}});
}

void HeadlessFrontEnd::RunModal(Screen& screen, const std::function<bool()>& isOpen) {
  if (isOpen()) PressButtons(screen);
}

void HeadlessFrontEnd::PressButtons(Screen& screen) {
  if (auto* welcome = dynamic_cast<WelcomeScreen*>(&screen))
    options_.welcomeOk ? welcome->btnOKClick() : welcome->btnCancelClick();
  else if (auto* noAct = dynamic_cast<NoActScreen*>(&screen))
    options_.noActLoad ? noAct->btnLoadClick() : noAct->btnCancelClick();
  else if (auto* notice = dynamic_cast<CleanUpNoticeScreen*>(&screen))
    notice->btnOKClick();
  else if (auto* timetable = dynamic_cast<TimetableScreen*>(&screen))
    timetable->btnOKClick();
  else if (auto* checkup = dynamic_cast<ActivityCheckScreen*>(&screen))
    checkup->btnOKClick();
  else if (auto* confirm = dynamic_cast<PackConfirmScreen*>(&screen))
    confirm->btnOKClick();
  else if (auto* pack = dynamic_cast<PackScreen*>(&screen))
    pack->btnOKClick();
  else if (auto* load = dynamic_cast<LoadScreen*>(&screen))
    load->btnOKClick();
  else if (auto* consist = dynamic_cast<CustomConsistScreen*>(&screen))
    consist->btnOKClick();
  else if (auto* message = dynamic_cast<CustomMessageScreen*>(&screen))
    message->btnOKClick();
  else if (auto* cleanUp = dynamic_cast<CleanUpScreen*>(&screen)) {
    cleanUp->TimerWaitTick();
    cleanUp->btnOKClick();
  } else if (auto* intake = dynamic_cast<InitProgScreen*>(&screen)) {
    intake->chkReport = report_;
    intake->btnOKClick();
  }
}

void HeadlessFrontEnd::CopyFoundNothing(std::string_view caption) {
  // The bar belongs to a screen that is mostly not on view; a person need not hear of it.
  if (intakeOpen_ || options_.json)
    output_.Put({{"event", "caption"}, {"screen", "frmInitProg"}, {"text", caption}});
}

void HeadlessFrontEnd::CopyFailed(std::string_view path, FileCode code) {
  const std::string text =
      hostPath_(path) + " could not be copied: " + RunTimeError(NumberOf(code)).text() + ".";
  output_.Put({{"event", "text"},
               {"screen", lastScreen_},
               {"control", "lblDetail"},
               {"text", text},
               {"visible", true}});
  std::fprintf(stderr, "quillon: %s\n", text.c_str());
}

void HeadlessFrontEnd::ShelfChanged(const ShelfEntry& entry, bool dropped) {
  Event event = ShelfEvent(entry);
  if (dropped) event["dropped"] = true;
  output_.Put(event);
}

void HeadlessFrontEnd::VerdictGiven(const Verdict& verdict) {
  output_.Put(
      {{"event", "verdict"}, {"zip", verdict.zip}, {"class", verdict.kind}, {"reason", verdict.reason}});
}

void HeadlessFrontEnd::CopyMoved(int position) {
  if (!cleanUpOpen_) return;
  ProgressBar bar;
  bar.value = position;
  bar.maximum = bars_["frmCleanUp"].maximum;
  BarChanged("frmCleanUp", bar, BarChange::Value);
}

}  // namespace quillon
