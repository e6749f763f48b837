#include "tests/world/TestProgram.h"

#include <zip.h>

#include <algorithm>
#include <array>
#include <cstdlib>
#include <stdexcept>

#include "core/Text.h"
#include "core/host/FileSystem.h"
#include "core/host/ProfileFunctions.h"
#include "headless/HeadlessFrontEnd.h"
#include "stage/Setup.h"
#include "stage/RunningProgram.h"

namespace quillon {
namespace {

namespace fs = std::filesystem;

// What decides where the desktop's folders lie.
constexpr std::array kVariables = {"HOME", "XDG_DATA_HOME", "XDG_CONFIG_HOME", "XDG_DESKTOP_DIR"};

fs::path MakeRoot() {
  std::string name = (fs::temp_directory_path() / "quillon-test-XXXXXX").string();
  if (mkdtemp(name.data()) == nullptr) throw std::runtime_error("can't make " + name);
  return name;
}

std::string HostPath(std::string_view path) {
  const std::string host = MakeHostFileSystem()->HostPath(path);
  if (host.empty()) throw std::runtime_error("no path: " + std::string(path));
  return host;
}

std::string IniPath(const TestProgram& program, std::string_view file) {
  return program.App() + "\\resources\\Do_Not_Delete!\\" + std::string(file);
}

}  // namespace

TestProgram::TestProgram(bool storeGame) : root_(MakeRoot()), oldFolder_(fs::current_path()) {
  for (const char* name : kVariables) {
    if (const char* value = std::getenv(name)) oldEnvironment_[name] = value;
    unsetenv(name);
  }
  for (const char* folder : {"app", "game", "home"}) fs::create_directories(root_ / folder);
  setenv("HOME", Home().c_str(), 1);
  fs::current_path(root_ / "home");
  MakeGame();
  options.app = App();
  SetUpAgain(storeGame);
}

TestProgram::~TestProgram() {
  session_.reset();
  for (const char* name : kVariables) unsetenv(name);
  for (const auto& [name, value] : oldEnvironment_) setenv(name.c_str(), value.c_str(), 1);
  std::error_code failed;
  fs::current_path(oldFolder_, failed);
  // Tests take rights away from folders and files.
  for (auto at = fs::recursive_directory_iterator(root_, failed); at != fs::recursive_directory_iterator();
       at.increment(failed))
    if (at->is_directory(failed) && !at->is_symlink(failed))
      fs::permissions(at->path(), fs::perms::owner_all, fs::perm_options::add, failed);
  fs::remove_all(root_, failed);
}

void TestProgram::MakeGame() const {
  Write(GamePath("train.exe"), "program");
  Write(GamePath("TEMPLATE\\forest.dat"), "template forest");
  Write(GamePath("TEMPLATE\\sigcfg.dat"), "template signals");
  for (const std::string route : {"Europe1", "Europe2", "Japan1", "Japan2", "USA1", "USA2"}) {
    const std::string folder = "ROUTES\\" + route;
    Write(GamePath(folder + "\\" + route + ".trk"), TrackFile(route));
    Write(GamePath(folder + "\\ssource.dat"), "sounds of " + route);
    Write(GamePath(folder + "\\SHAPES\\" + route + ".s"), "shape of " + route);
    Write(GamePath(folder + "\\TERRTEX\\SNOW\\grass.ace"), "snow of " + route);
    Write(GamePath(folder + "\\TILES\\-01.t"), "tile of " + route);
    Write(GamePath(folder + "\\WORLD\\w-01.w"), "world of " + route);
  }
  Write(GamePath("GLOBAL\\SHAPES\\signal.s"), "global shape");
  Write(GamePath("GLOBAL\\TEXTURES\\signal.ace"), "global texture");
  Write(GamePath("TRAINS\\CONSISTS\\default.con"), "default consist");
  fs::create_directories(root_ / "game/SAVES");
}

// ---------------------------------------------------------------------------------------------- Commands

Session& TestProgram::Next() {
  if (!kept_) session_.reset();  // lets go of the instance lock first
  if (!session_) session_ = std::make_unique<Session>(options, output_);
  return *session_;
}

int TestProgram::Run(const Command& command) {
  output_.events.clear();
  const int status = Next().Run(command);
  if (!kept_) session_.reset();
  return status;
}

int TestProgram::Run(const std::string& name, const std::string& argument) {
  Command command;
  command.name = name;
  command.argument = argument;
  return Run(command);
}

int TestProgram::Script(const std::string& lines) {
  const std::string file = (root_ / "script").string();
  WriteBytes(file, lines);
  return Run("script", file);
}

void TestProgram::KeepSession() {
  session_.reset();
  kept_ = true;
}

void TestProgram::EndSession() {
  session_.reset();
  kept_ = false;
}

void TestProgram::SetUpAgain(bool withGame) {
  HeadlessFrontEnd frontEnd(output_, options);
  RunningProgram program(App(), frontEnd);
  SetUp(program.Get(), QUILLON_SOURCE_DIR, withGame ? std::optional(Game()) : std::nullopt);
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
  MakeZip(AppPath("routes\\" + zip + ".qnz"), entries);
  SetIni("routes.ini", displayName, "Zip", zip);
  SetIni("routes.ini", zip, "Name", displayName);
}

// ----------------------------------------------------------------------------------------------- Events

std::vector<Event> TestProgram::Events(std::string_view kind) const {
  std::vector<Event> found;
  std::copy_if(output_.events.begin(), output_.events.end(), std::back_inserter(found),
               [&](const Event& event) { return event["event"] == kind; });
  return found;
}

std::vector<std::string> TestProgram::Texts(std::string_view kind, const char* key,
                                            std::string_view screen) const {
  std::vector<std::string> texts;
  for (const Event& event : Events(kind))
    if (screen.empty() || event["screen"] == screen) texts.push_back(event[key]);
  return texts;
}

Event TestProgram::Last(std::string_view kind) const {
  const auto found = Events(kind);
  return found.empty() ? Event::object() : found.back();
}

int TestProgram::LastError() const { return Last("error").value("number", 0); }

std::string TestProgram::LastErrorPath() const { return Last("error").value("path", ""); }

// ------------------------------------------------------------------------------------------------ Files

std::string TestProgram::AppPath(std::string_view below) const {
  return HostPath(App() + "\\" + std::string(below));
}

std::string TestProgram::GamePath(std::string_view below) const {
  return HostPath(Game() + "\\" + std::string(below));
}

bool TestProgram::Exists(std::string_view path) {
  std::uint32_t attributes = 0;
  return MakeHostFileSystem()->GetAttributes(path, attributes) == FileCode::Ok;
}

std::string TestProgram::ReadBytes(std::string_view path) {
  std::string bytes;
  if (MakeHostFileSystem()->Read(path, bytes, kNoLimit) != FileCode::Ok)
    throw std::runtime_error("can't read " + std::string(path));
  return bytes;
}

std::string TestProgram::ReadText(std::string_view path) { return DecodeGameText(ReadBytes(path)); }

void TestProgram::Write(std::string_view path, std::string_view bytes) {
  const std::string host = HostPath(path);
  fs::create_directories(fs::path(host).parent_path());
  WriteBytes(host, std::string(bytes));
}

void TestProgram::Remove(std::string_view path) { fs::remove_all(HostPath(path)); }

std::vector<std::string> TestProgram::Names(std::string_view folder) {
  std::vector<std::string> names;
  for (const auto& item : fs::directory_iterator(HostPath(folder)))
    names.push_back(LowerCase(item.path().filename().string()) + (item.is_directory() ? "\\" : ""));
  std::sort(names.begin(), names.end());
  return names;
}

std::map<std::string, std::string> TestProgram::Tree(std::string_view folder) {
  std::map<std::string, std::string> tree;
  const fs::path root = HostPath(folder);
  for (const auto& item : fs::recursive_directory_iterator(root)) {
    if (!item.is_regular_file()) continue;
    const std::string name = item.path().lexically_relative(root).string();
    tree[LowerCase(ReplaceAll(name, "/", "\\"))] = ReadBytes(item.path().string());
  }
  return tree;
}

std::map<std::string, std::string> TestProgram::State(std::string_view folder) {
  std::map<std::string, std::string> state;
  const fs::path root = HostPath(folder);
  for (const auto& item : fs::recursive_directory_iterator(root)) {
    std::string& what = state[item.path().lexically_relative(root).string()];
    if (item.is_symlink()) {
      what = "link to " + fs::read_symlink(item.path()).string();
    } else if (item.is_directory()) {
      what = "folder";
    } else {
      const bool readOnly = (item.status().permissions() & fs::perms::owner_write) == fs::perms::none;
      what = (readOnly ? "read-only: " : "file: ") + ReadBytes(item.path().string());
    }
  }
  return state;
}

std::string TestProgram::Ini(std::string_view file, std::string_view section, std::string_view key) const {
  const auto host = MakeHostFileSystem();
  return MakeProfileFunctions(*host)->GetString(section, key, kMissing, 2048, IniPath(*this, file));
}

void TestProgram::SetIni(std::string_view file, std::string_view section, std::string_view key,
                         std::string_view value) const {
  const auto host = MakeHostFileSystem();
  MakeProfileFunctions(*host)->WriteString(section, key, value, IniPath(*this, file));
}

void TestProgram::DeleteSection(std::string_view file, std::string_view section) const {
  const auto host = MakeHostFileSystem();
  MakeProfileFunctions(*host)->WriteString(section, std::nullopt, std::nullopt, IniPath(*this, file));
}

std::vector<std::string> TestProgram::IniLines(std::string_view file, std::string_view section) const {
  std::vector<std::string> lines;
  bool inside = false;
  for (const auto& line : Lines(ReadBytes(IniPath(*this, file)))) {
    if (inside && !line.starts_with('[')) lines.push_back(line);
    if (line.starts_with('[')) inside = line == "[" + std::string(section) + "]";
  }
  return lines;
}

std::string TestProgram::RegistryValue(std::string_view key, std::string_view name) const {
  const auto host = MakeHostFileSystem();
  return MakeProfileFunctions(*host)->GetString("HKEY_LOCAL_MACHINE\\" + std::string(key), name, kMissing,
                                                2048, App() + "\\registry.ini");
}

void TestProgram::Drop(const std::string& zipName, const std::vector<ZipEntry>& entries,
                       const ZipShape& shape) const {
  fs::create_directories(fs::path(Download(zipName)).parent_path());
  MakeZip(Download(zipName), entries, shape);
}

// By the format library itself, so that what the product makes is judged by someone else.
std::map<std::string, std::string> TestProgram::Unzipped(std::string_view path) {
  zip_t* zip = zip_open(HostPath(path).c_str(), ZIP_RDONLY, nullptr);
  if (zip == nullptr) throw std::runtime_error("no zip: " + std::string(path));
  std::map<std::string, std::string> entries;
  for (zip_int64_t i = 0; i < zip_get_num_entries(zip, 0); ++i) {
    const auto index = static_cast<zip_uint64_t>(i);
    zip_stat_t stat;
    zip_stat_index(zip, index, 0, &stat);
    std::string bytes(stat.size, '\0');
    zip_file_t* file = zip_fopen_index(zip, index, 0);
    zip_fread(file, bytes.data(), bytes.size());
    zip_fclose(file);
    entries[LowerCase(ReplaceAll(stat.name, "/", "\\"))] = bytes;
  }
  zip_discard(zip);
  return entries;
}

// ----------------------------------------------------------------------------------------------- Routes

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
      {.name = "route/tiles/a.t", .data = "tile of " + displayName},
      {.name = "route/world/w.w", .data = "world of " + displayName, .deflated = true},
      {.name = "route/activities/morning.act", .data = "activity of " + displayName},
      {.name = "route/services/morning.srv", .data = "service of " + displayName},
      {.name = "route/paths/morning.pat", .data = "path of " + displayName},
      {.name = "route/traffic/morning.trf", .data = "traffic of " + displayName},
      {.name = "trains/consists/local.con", .data = "consist of " + displayName},
      {.name = "readme.txt", .data = "readme of " + displayName},
  };
  entries.insert(entries.end(), extra.begin(), extra.end());
  return entries;
}

}  // namespace quillon
