#include "tests/world/TestProgram.h"

#include "core/host/ProfileFunctions.h"
#include "core/text/Text.h"
#include "headless/HeadlessFrontEnd.h"
#include "stage/RunningProgram.h"
#include "stage/Setup.h"

namespace quillon {
namespace {

std::string Profile(std::string_view file, std::string_view section, std::string_view key) {
  const auto host = MakeHostFileSystem();
  return MakeProfileFunctions(*host)->GetString(section, key, TestProgram::kMissing, 2048, file);
}

/// `text` of each key, with a bar between them.
template <class Text>
std::string Joined(const Strings& keys, Text text) {
  std::string joined;
  for (const auto& key : keys) joined += (&key == &keys.front() ? "" : "|") + text(key);
  return joined;
}

}  // namespace

TestProgram::TestProgram(bool storeGame)
    : oldFolder_(fs::current_path()), desktop_(folder_.Host("home"), folder_.Host("app")) {
  for (const char* place : {"app", "game", "home"}) fs::create_directories(folder_.Host(place));
  fs::current_path(folder_.Host("home"));
  MakeGame();
  options.app = App();
  SetUpAgain(storeGame);
}

TestProgram::~TestProgram() {
  session_.reset();
  std::error_code failed;
  fs::current_path(oldFolder_, failed);
}

void TestProgram::MakeGame() const {
  const auto make = [&](const std::string& name, const std::string& bytes) { Write(GamePath(name), bytes); };
  make("train.exe", "program");
  make("TEMPLATE\\forest.dat", "template forest");
  make("TEMPLATE\\sigcfg.dat", "template signals");
  for (const std::string route : {"Europe1", "Europe2", "Japan1", "Japan2", "USA1", "USA2"}) {
    const std::string folder = "ROUTES\\" + route + "\\";
    make(folder + route + ".trk", TrackFile(route));
    make(folder + "ssource.dat", "sounds of " + route);
    make(folder + "SHAPES\\" + route + ".s", "shape of " + route);
    make(folder + "TERRTEX\\SNOW\\grass.ace", "snow of " + route);
    make(folder + "TILES\\-01.t", "tile of " + route);
    make(folder + "WORLD\\w-01.w", "world of " + route);
  }
  make("GLOBAL\\SHAPES\\signal.s", "global shape");
  make("GLOBAL\\TEXTURES\\signal.ace", "global texture");
  make("TRAINS\\CONSISTS\\default.con", "default consist");
  fs::create_directories(ToPath(GamePath("SAVES")));
}

int TestProgram::Run(const Command& command) {
  output_.events.clear();
  if (!session_) session_ = std::make_unique<Session>(options, output_, makeFiles ? makeFiles() : nullptr);
  const int status = session_->Run(command);
  if (!kept_) session_.reset();  // lets go of the instance lock
  return status;
}

int TestProgram::Run(const std::string& name, const std::string& argument) {
  return Run(Command{.name = name, .argument = argument});
}

int TestProgram::Script(const std::string& lines) {
  folder_.Put("script", lines);
  return Run("script", Root() + "/script");
}

void TestProgram::KeepSession(bool kept) {
  session_.reset();
  kept_ = kept;
}

void TestProgram::SetUpAgain(bool withGame) {
  HeadlessFrontEnd frontEnd(output_, options);
  RunningProgram program(App(), frontEnd);
  SetUp(program.Get(), delivered, withGame ? std::optional(Game()) : std::nullopt);
}

int TestProgram::FirstRun() {
  options.welcomeOk = true;
  const int status = Run("start");
  options.welcomeOk = false;
  return status;
}

int TestProgram::AddRoute(const std::string& zip, const std::string& displayName,
                          const std::vector<ZipEntry>& extra) {
  Drop(zip, RouteEntries(displayName, extra));
  return Run("add");
}

void TestProgram::StoreRoute(const std::string& zip, const std::string& displayName,
                             const std::vector<ZipEntry>& entries) const {
  Write(AppPath("routes\\ts" + zip + ".jpg"), "preview of " + zip);
  Write(AppPath("routes\\activities\\activities\\" + zip + "\\" + zip + ".act"), "activity of " + zip);
  MakeZip(ToPath(AppPath("routes\\" + zip + ".qnz")), entries);
  SetIni("routes.ini", displayName, "Zip", zip);
  SetIni("routes.ini", zip, "Name", displayName);
}

void TestProgram::Drop(const std::string& zipName, const std::vector<ZipEntry>& entries,
                       const ZipShape& shape) const {
  Write(Download(zipName), ZipBytes(entries, shape));
}

std::vector<Event> TestProgram::Events(std::string_view kind) const {
  std::vector<Event> found;
  std::copy_if(output_.events.begin(), output_.events.end(), std::back_inserter(found),
               [&](const Event& event) { return event["event"] == kind; });
  return found;
}

Strings TestProgram::Texts(std::string_view kind, const char* key, std::string_view screen) const {
  Strings texts;
  for (const Event& event : Events(kind))
    if (screen.empty() || event["screen"] == screen) texts.push_back(event[key]);
  return texts;
}

Event TestProgram::Last(std::string_view kind) const {
  const auto found = Events(kind);
  return found.empty() ? Event::object() : found.back();
}

std::string TestProgram::MainTexts(const Strings& keys) const {
  return Joined(keys, [main = Last("main")](const std::string& key) { return main.value(key, ""); });
}

std::string TestProgram::Working(const std::string& below) const {
  const std::string path = WorkingPath(below);
  return Exists(path) ? ReadBytes(path) : "";
}

std::string TestProgram::Ini(const std::string& file, std::string_view section, std::string_view key) const {
  return Profile(DataPath(file), section, key);
}

void TestProgram::SetIni(const std::string& file, std::string_view section, Key key, Key value) const {
  const auto host = MakeHostFileSystem();
  MakeProfileFunctions(*host)->WriteString(section, key, value, DataPath(file));
}

std::string TestProgram::Current(const Strings& keys) const {
  return Joined(keys, [this](const std::string& key) { return Ini("routes.ini", "Current", key); });
}

std::string TestProgram::RegistryValue(std::string_view key, std::string_view name) const {
  const std::string value = desktop_.RegistryValue(key, name);
  return value.empty() ? kMissing : value;
}

std::string TrackFile(const std::string& displayName) {
  return EncodeGameText(
      "SIMISA@@@@@@@@@@JINX0r1t______\r\n\r\nTr_RouteFile (\r\n\tRouteID ( route )\r\n\tName ( \"" +
      displayName + "\" )\r\n\tDescription ( \"A line for tests.\" )\r\n)\r\n");
}

ZipEntry Track(const std::string& name, const std::string& displayName) {
  return Entry(name, TrackFile(displayName));
}

std::vector<ZipEntry> RouteEntries(const std::string& displayName, const std::vector<ZipEntry>& extra) {
  std::vector<ZipEntry> entries = {
      {.name = "route/route.trk", .data = TrackFile(displayName), .deflated = true},
      {.name = "route/world/w.w", .data = "world of " + displayName, .deflated = true}};
  for (const std::string name :
       {"route/tiles/a.t", "route/activities/morning.act", "route/services/morning.srv",
        "route/paths/morning.pat", "route/traffic/morning.trf", "trains/consists/local.con", "readme.txt"})
    entries.push_back(Entry(name, name + " of " + displayName));
  entries.insert(entries.end(), extra.begin(), extra.end());
  return entries;
}

}  // namespace quillon
