#include "headless/Session.h"

#include <algorithm>
#include <cstdio>
#include <fstream>
#include <iostream>
#include <new>

#include "catalogue/CatalogueCheck.h"
#include "catalogue/GameFolders.h"
#include "catalogue/MainScreen.h"
#include "catalogue/OptionsScreen.h"
#include "catalogue/RouteDetails.h"
#include "catalogue/ShelfScreen.h"
#include "checkup/CauseFile.h"
#include "checkup/CheckupScreens.h"
#include "checkup/TrainMoves.h"
#include "core/NoProgress.h"
#include "core/host/Desktop.h"
#include "core/host/StandardPath.h"
#include "core/text/Text.h"
#include "intake/OddDownload.h"
#include "intake/RoutesScreen.h"
#include "sample/CataloguedRoutes.h"
#include "sample/Sample.h"
#include "stage/Advice.h"
#include "stage/Setup.h"

namespace quillon {
namespace {

std::string AppFolder(const Options& options) {
  return options.app.empty() ? ExecutableFolder() : AbsoluteHostPath(options.app);
}

class CommandProgress : public NoProgress {
 public:
  explicit CommandProgress(HeadlessFrontEnd& frontEnd) : frontEnd_(frontEnd) {}
  void Detail(std::uint64_t done, std::uint64_t total, std::string_view unit) override {
    frontEnd_.DetailChanged("frmMain", done, total, unit);
  }

 private:
  HeadlessFrontEnd& frontEnd_;
};

bool NeedsNoStartUp(std::string_view command) { return command == "setup" || command == "sample"; }

}  // namespace

Session::Session(const Options& options, Output& output, std::unique_ptr<FileSystem> files)
    : options_(options),
      output_(output),
      frontEnd_(output, options_),
      program_(AppFolder(options_), frontEnd_, options_.seed, std::move(files)),
      screens_(program_.Screens()),
      hints_(program_.Get(), options_) {
  frontEnd_.SetHostPath([this](std::string_view path) { return program_.Get().files.Host().HostPath(path); });
}

const std::map<std::string, Session::Action, std::less<>>& Session::Actions() {
  static const std::map<std::string, Action, std::less<>> actions = {
      {"setup", &Session::Setup},         {"sample", &Session::Sample},
      {"start", &Session::Start},         {"routes", &Session::Routes},
      {"pick", &Session::Pick},           {"info", &Session::Info},
      {"load", &Session::Load},           {"add", &Session::Add},
      {"clean", &Session::Clean},         {"options", &Session::ChangeOptions},
      {"make-list", &Session::MakeList},  {"help", &Session::Help},
      {"checkup", &Session::Checkup},     {"report", &Session::Report},
      {"pack", &Session::Pack},           {"remove", &Session::Remove},
      {"permanent", &Session::Permanent}, {"shelf", &Session::Shelf},
      {"causes", &Session::Causes},       {"verify", &Session::Verify},
  };
  return actions;
}

int Session::Run(const Command& command) {
  int status = kFailed;
  try {
    status = command.name == "script" ? RunScript(command) : Execute(command);
    frontEnd_.Flush();
  } catch (const RunTimeError& error) {
    frontEnd_.Flush();
    Report(error);
  } catch (const CommandLineEnd& end) {
    std::fputs(end.what(), stderr);
    status = kWrongCommandLine;
  } catch (const std::bad_alloc&) {
    Report(RunTimeError(ErrorNumber::OutOfMemory));
  } catch (const std::exception& error) {
    Report(RunTimeError(ErrorNumber::InternalError, {}, error.what()));
  }
  output_.Put({{"event", "end"}, {"status", status}});
  return status;
}

int Session::Execute(const Command& command) {
  program_.Get().refused = false;
  if (!NeedsNoStartUp(command.name) && !(command.name == "verify" ? StartUpToVerify() : StartUp()))
    return kRefused;
  program_.Get().refused = false;
  (this->*Actions().at(command.name))(command);
  const int status = Status();
  if (status == kRefused) hints_.AfterRefusal(command);
  return status;
}

int Session::RunScript(const Command& command) {
  program_.Get().Step("Reading the script");
  std::ifstream file;
  if (command.argument != "-") {
    if (std::filesystem::is_directory(ToPath(command.argument)))
      throw RunTimeError(ErrorNumber::PathFileAccessError, command.argument, "it is a folder");
    file.open(ToPath(command.argument));
    if (!file) throw RunTimeError(ErrorNumber::FileNotFound, command.argument);
  }
  if (!StartUp()) return kRefused;
  int status = kDone;
  std::istream& lines = command.argument == "-" ? std::cin : file;
  for (std::string line; std::getline(lines, line) && !screens_.Ended();) {
    const auto next = ParseScriptLine(line);
    if (next && Execute(*next) == kRefused) status = kRefused;
  }
  return status;
}

int Session::Status() { return program_.Get().refused || (screens_.Ended() && started_) ? kRefused : kDone; }

void Session::Report(const RunTimeError& error) {
  RememberOddDownload(program_.Get(), error);
  Event event = {{"event", "error"},
                 {"number", error.number()},
                 {"text", error.text()},
                 {"path", error.path()},
                 {"step", program_.Get().step}};
  if (!error.reason().empty()) event["reason"] = error.reason();
  output_.Put(event);
  hints_.Say(ErrorLine(program_.Get(), error) + "\n" +
             AsToBeTyped(Advice(error, program_.Get().step), options_));
}

bool Session::StartUp() {
  if (!started_) {
    RequireSetUp(program_.Get());
    program_.TakeLock();
    Renew(program_.Get(), DeliveredTree());
    started_ = true;
    screens_.Do([this] { screens_.Show("frmMain"); });
  }
  return AtMain();
}

/// A start that ends for want of a preview must not keep the repair from making it.
bool Session::StartUpToVerify() {
  try {
    return StartUp();
  } catch (const RunTimeError& error) {
    if (RemedyOf(error) != Remedy::RepairCatalogue) throw;
    cutStart_ = true;
    return true;
  }
}

/// Back on frmMain, as a user comes back from the route manager.
bool Session::AtMain() {
  if (auto* routes = dynamic_cast<RoutesScreen*>(screens_.Top()))
    screens_.Do([routes] { routes->btnOKClick(); });
  if (auto* options = dynamic_cast<OptionsScreen*>(screens_.Top()))
    screens_.Do([options] { options->btnCancelClick(); });
  return !screens_.Ended();
}

MainScreen& Session::Main() { return dynamic_cast<MainScreen&>(*screens_.Find("frmMain")); }

RoutesScreen* Session::AtRoutes() {
  screens_.Do([this] { Main().btnManageClick(); });
  return screens_.Ended() ? nullptr : dynamic_cast<RoutesScreen*>(screens_.Top());
}

void Session::RefuseRow(std::string_view name, const char* list) {
  hints_.Say("there is no row \"" + std::string(name) + "\"", std::string("quillon ") + list);
  program_.Get().Refuse();
}

void Session::Setup(const Command& command) {
  if (command.game)
    hints_.AboutRights(MissingRights(program_.Get(), AbsoluteHostPath(*command.game)), *command.game);
  SetUp(program_.Get(), DeliveredTree(), command.game);
  if (command.game) hints_.AboutTheGame();
}

void Session::Sample(const Command& command) {
  program_.Get().Step("Making the sample game");
  if (command.routes > 0) return SampleInstalled(command);
  const SampleReport report = MakeSample(AbsoluteHostPath(command.argument), command.scale);
  if (options_.json) return;
  std::printf("The game: %s\nThe route zips: %s\n", report.gameFolder.c_str(), report.zipFolder.c_str());
  for (const auto& [name, kind] : report.zips) std::printf("  %-42s %s\n", name.c_str(), kind.c_str());
}

/// Set up, filled and started once, so that the next start is any other.
void Session::SampleInstalled(const Command& command) {
  const SampleInstallation made = MakeGameForInstallation(AbsoluteHostPath(command.argument));
  Options options = options_;
  options.app = made.appFolder;
  options.welcomeOk = true;
  Session session(options, output_);
  LayDelivered(session.program_.Get(), DeliveredTree());  // without the shortcut in the user's menu
  session.Execute({.name = "options", .game = made.gameFolder});
  MakeCataloguedRoutes(made.appFolder, command.routes);
  if (session.Execute({.name = "start"}) != kDone) program_.Get().Refuse();
  if (!options_.json)
    std::printf("The game: %s\nThe application folder: %s\n", made.gameFolder.c_str(),
                made.appFolder.c_str());
}

void Session::Start(const Command&) {}

void Session::Routes(const Command& command) {
  if (command.details) return ListDetails();
  screens_.Do([this] { Main().btnRouteListClick(); });
  for (const auto& row : Main().ListRoutes.rows) {
    const std::string zip = Catalogue(program_.Get()).ZipOf(NameOfRow(row), kNoData);
    output_.Put({{"event", "row"}, {"list", "ListRoutes"}, {"text", row}, {"zip", zip}});
  }
  screens_.Do([this] { Main().CloseList(); });
}

void Session::ListDetails() {
  PutRoutes(output_, DetailsOfRoutes(program_.Get(), [this](std::size_t done, std::size_t all) {
              frontEnd_.DetailChanged("frmMain", done, all, "routes");
            }));
}

/// Opens the list and brings the pointer to a row.
bool Session::HoverRow(const std::string& name) {
  screens_.Do([this] { Main().btnRouteListClick(); });
  const auto& rows = Main().ListRoutes.rows;
  const std::string wanted = NameOfRow(name);
  auto at = std::find_if(rows.begin(), rows.end(), [&](const auto& row) { return NameOfRow(row) == wanted; });
  if (at == rows.end())
    at = std::find_if(rows.begin(), rows.end(),
                      [&](const auto& row) { return EqualNoCase(NameOfRow(row), wanted); });
  if (at == rows.end()) {
    screens_.Do([this] { Main().CloseList(); });
    RefuseRow(name, "routes");
    return false;
  }
  const int row = static_cast<int>(at - rows.begin());
  screens_.Do([this, row] { Main().ListRoutesHover(row); });
  return true;
}

bool Session::PickRow(const std::string& name) {
  if (!HoverRow(name)) return false;
  screens_.Do([this] { Main().ListRoutesLeftPress(); });
  screens_.Do([this] { Main().TimerWaitTick(); });
  return true;
}

void Session::Pick(const Command& command) { PickRow(command.argument); }

void Session::Info(const Command& command) {
  screens_.Do([this] { Main().btnInfoClick(); });
  if (program_.Get().refused) return;
  const auto& rows = Main().infoList.rows;
  if (command.argument.empty()) {
    for (const auto& row : rows) output_.Put({{"event", "row"}, {"list", "infoList"}, {"text", row}});
    return;
  }
  const auto at = std::find_if(rows.begin(), rows.end(),
                               [&](const auto& row) { return EqualNoCase(row, command.argument); });
  if (at == rows.end())
    RefuseRow(command.argument, "info");
  else
    screens_.Do([&] { Main().infoListLeftPress(static_cast<int>(at - rows.begin())); });
}

void Session::Load(const Command& command) {
  const bool named = command.hasArgument || !command.argument.empty();
  if (named && !PickRow(command.argument)) return;
  screens_.Do([this] { Main().btnLoadClick(); });
}

void Session::Add(const Command& command) {
  frontEnd_.SetReport(command.report);
  if (auto* routes = AtRoutes()) screens_.Do([routes] { routes->cmdAddRoutesClick(); });
}

void Session::Clean(const Command&) {
  if (auto* routes = AtRoutes()) screens_.Do([routes] { routes->btnCleanClick(); });
}

void Session::Pack(const Command& command) {
  if (auto* routes = AtRoutes())
    screens_.Do([&] {
      routes->btnPackClick();
      routes->PackFolderPicked(AbsoluteHostPath(command.argument));
    });
}

void Session::Remove(const Command& command) { ActOnRow(command.argument, false); }

void Session::Permanent(const Command& command) { ActOnRow(command.argument, true); }

/// The right press on a row, and row 1 of the menu that it opens.
void Session::ActOnRow(const std::string& name, bool permanent) {
  if (!HoverRow(name)) return;
  screens_.Do([this] { Main().ListRoutesRightPress(); });
  if (!Main().toolsList.visible || Main().PermanentMode != permanent) {
    hints_.Say("\"" + name + "\" is " +
               (permanent ? "not loaded: only the loaded route can be made permanent"
                          : "loaded: load another route before you remove it"));
    screens_.Do([this] { Main().CloseList(); });
    program_.Get().Refuse();
    return;
  }
  screens_.Do([this] {
    Main().toolsListHover(1);
    Main().toolsListLeftPress();
  });
}

ReportOptionsScreen* Session::AtReportOptions() {
  if (auto* routes = AtRoutes()) screens_.Do([routes] { routes->btnCheckupClick(); });
  return dynamic_cast<ReportOptionsScreen*>(screens_.Top());
}

void Session::Checkup(const Command& command) {
  if (command.route || command.all) return CheckRoutes(command);
  if (auto* options = AtReportOptions())
    screens_.Do([options] {
      if (options->chkTrains == 0) options->chkTrainsClick();
      options->btnOKClick();
    });
  if (!program_.Get().refused) PutCounts(program_.Get().app.CausesJson());
}

void Session::CheckRoutes(const Command& command) {
  Program& program = program_.Get();
  std::vector<std::string> zips = Catalogue(program).BuildList().zips;
  if (command.route) {
    const std::string zip = Catalogue(program).ZipOf(NameOfRow(*command.route), *command.route);
    std::erase_if(zips, [&](const std::string& other) { return !EqualNoCase(other, zip); });
    if (zips.empty()) return RefuseRow(*command.route, "routes");
  }
  if (zips.empty()) return PutRow("There are no routes yet.");
  auto* options = AtReportOptions();
  if (options == nullptr) return;
  screens_.Do([&] { options->JudgeRoutes(zips, false); });
  const auto list = ReadCauses(program, program.app.CausesOfRoutesJson());
  if (!list || program.refused) return;
  PutCauses(output_, *list);
  auto counts = list->PlayableByRoute();
  for (const auto& zip : zips) {
    const auto [playable, all] = counts[LowerCase(zip)];
    PutRow("playable " + std::to_string(playable) + " of " + std::to_string(all) + "  " +
           Catalogue(program).NameOf(zip, zip));
  }
  PutCounts(program.app.CausesOfRoutesJson());
}

void Session::Causes(const Command& command) {
  Program& program = program_.Get();
  const auto list = ReadCauses(program);
  if (!list) return program.Refuse();
  if (!command.fix) {
    PutCauses(output_, *list);
    return PutCounts(program.app.CausesJson());
  }
  const auto moves = PossibleMoves(program, *list);
  for (const auto& [from, to] : moves) PutRow("TRAINSET\\" + from + " becomes TRAINSET\\" + to);
  if (moves.empty())
    PutRow("No train folder that a rename would put right.");
  else if (AskAndMove(program, moves))
    PutRow("Renamed. Another Checkup brings the consists back: quillon checkup");
}

void Session::PutRow(const std::string& text, const char* list) {
  output_.Put({{"event", "row"}, {"list", list}, {"text", text}});
}

void Session::PutCounts(const std::string& causesFile) {
  const auto counts = ReadCauseCounts(program_.Get(), causesFile);
  if (!counts) return;
  if (!counts->upTo.empty()) PutRow("The Checkup ended early. " + counts->upTo);
  PutRow(std::to_string(counts->playable) + " of " + std::to_string(counts->activities) +
         " activities can be played; " + std::to_string(counts->consistsFaulty) + " of " +
         std::to_string(counts->consistsWhole + counts->consistsFaulty) + " consists are faulty; " +
         std::to_string(counts->trainsMissing) + " trains are missing, " +
         std::to_string(counts->trainsMisplaced) + " misplaced");
}

/// Without a result the Checkup can't be refused: it runs first.
void Session::Report(const Command&) {
  if (auto* options = AtReportOptions())
    screens_.Do([options] {
      if (options->chkTrains == 1) options->chkTrainsClick();
      options->btnOKClick();
    });
}

void Session::ChangeOptions(const Command& command) {
  screens_.Do([this] { Main().btnOptionsClick(); });
  auto& options = dynamic_cast<OptionsScreen&>(*screens_.Top());
  screens_.Do([&] {
    if (command.game) options.SetTSPath(AbsoluteHostPath(*command.game));
    if (command.game && !command.cancel) hints_.AboutRights(options.RightsHint(), *command.game);
    if (command.shortcut) options.chkShortcut = *command.shortcut;
    command.cancel ? options.btnCancelClick() : options.btnOKClick();
  });
  if (command.game && !command.cancel) hints_.AboutTheGame();
}

void Session::MakeList(const Command&) {
  screens_.Do([this] { Main().Command1Click(); });
}

void Session::Shelf(const Command& command) {
  screens_.Do([this] { screens_.Show("frmShelf"); });
  auto& shelf = dynamic_cast<ShelfScreen&>(*screens_.Top());
  const int number = command.putBack.value_or(command.drop.value_or(0));
  if (!command.putBack && !command.drop) {
    for (const auto& entry : shelf.Entries()) output_.Put(ShelfEvent(entry));
  } else if (number < 1 || number > static_cast<int>(shelf.Entries().size())) {
    RefuseRow(std::to_string(number), "shelf");
  } else {
    command.putBack ? shelf.PutBack(number) : shelf.Drop(number);
  }
  screens_.Do([&] { shelf.btnOKClick(); });
}

void Session::Verify(const Command& command) {
  CommandProgress progress(frontEnd_);
  const auto findings = CatalogueCheck(program_.Get(), progress).Run(command.deep, command.repair);
  for (const auto& finding : findings)
    output_.Put({{"event", "finding"},
                 {"kind", finding.KindText()},
                 {"zip", finding.zip},
                 {"path", finding.path},
                 {"repaired", finding.repaired},
                 {"advice", finding.Advice()}});
  if (AnythingLeft(findings)) program_.Get().Refuse();
  const auto repaired =
      std::count_if(findings.begin(), findings.end(), [](const auto& f) { return f.repaired; });
  PutRow(findings.empty()
             ? "The catalogue and the files fit together."
             : std::to_string(findings.size()) + " found, " + std::to_string(repaired) + " repaired.",
         "verify");
  if (!command.repair && CanBeRepaired(findings))
    hints_.Say("not all fits together", "quillon verify --repair");
  if (!cutStart_ || std::any_of(findings.begin(), findings.end(), [](const auto& finding) {
        return finding.kind == CatalogueFinding::Kind::NoPreview && !finding.repaired;
      }))
    return;
  cutStart_ = false;
  screens_.Reactivate();
  screens_.Do([] {});
}

void Session::Help(const Command& command) {
  if (command.argument.empty() || EqualNoCase(command.argument, "frmMain")) {
    screens_.Do([this] { Main().btnHelpClick(); });
  } else if (!EqualNoCase(command.argument, "frmRoutes")) {
    throw CommandLineEnd("there is no help for " + command.argument + "\n", false);
  } else if (auto* routes = AtRoutes()) {
    screens_.Do([routes] { routes->btnHelpClick(); });
  }
}

}  // namespace quillon
