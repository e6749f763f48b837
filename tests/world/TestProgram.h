// The program in a world of its own: a temporary folder with a small game, an application folder and a home.
#pragma once

#include <gtest/gtest.h>

#include <functional>
#include <memory>
#include <optional>

#include "headless/CommandLine.h"
#include "headless/Output.h"
#include "headless/Session.h"
#include "tests/world/Disk.h"
#include "tests/world/ZipMaker.h"

namespace quillon {

/// Keeps what a session tells.
class RecordedOutput : public Output {
 public:
  void Put(const Event& event) override { events.push_back(event); }
  std::vector<Event> events;
};

/// An installation that was set up, with nothing started yet. Commands run in this process. `below` texts
/// have backslashes, and their case doesn't matter.
class TestProgram : public Disk {
 public:
  static constexpr const char* kMissing = "(missing)";

  /// The host folder with the delivered tree. Here it is one without the help.
  static inline std::string delivered = QUILLON_BUILD_DIR "/without_help";

  /// `storeGame`: whether the set-up is told where the game lies, as by `setup --game`.
  explicit TestProgram(bool storeGame = true);
  ~TestProgram();
  TestProgram(const TestProgram&) = delete;
  TestProgram& operator=(const TestProgram&) = delete;

  /// The options of the sessions to come.
  Options options;
  /// What the sessions to come have for a file system; the host's own without it.
  std::function<std::unique_ptr<FileSystem>()> makeFiles;

  // Commands. Each gives the exit status and forgets the events of the one before. Without KeepSession each
  // has a session, as a process, of its own.
  int Run(const Command& command);
  int Run(const std::string& name, const std::string& argument = {});
  /// Runs the lines as a script, in one session.
  int Script(const std::string& lines);
  /// One session for the commands from now on, as a script has it.
  void KeepSession(bool kept = true);
  /// What the installer does, once more.
  void SetUpAgain(bool withGame);
  /// The first start, up to the working route: `start` with the welcome answered by OK.
  int FirstRun();
  /// Drops a zip of RouteEntries into downloaded_routes and adds it; the exit status.
  int AddRoute(const std::string& zip, const std::string& displayName,
               const std::vector<ZipEntry>& extra = {});
  /// Puts a route with one activity into the store and the catalogue, as an intake leaves it; `entries` are
  /// those of its file.
  void StoreRoute(const std::string& zip, const std::string& displayName,
                  const std::vector<ZipEntry>& entries) const;
  /// Puts a zip into downloaded_routes.
  void Drop(const std::string& zipName, const std::vector<ZipEntry>& entries,
            const ZipShape& shape = {}) const;

  // What the last command told.
  const std::vector<Event>& All() const { return output_.events; }
  std::vector<Event> Events(std::string_view kind) const;
  /// One key of every event of a kind, texts only; `screen` when not empty.
  Strings Texts(std::string_view kind, const char* key = "text", std::string_view screen = {}) const;
  Strings BoxTexts() const { return Texts("box"); }
  Strings Captions(std::string_view screen = {}) const { return Texts("caption", "text", screen); }
  bool IsShown(std::string_view screen) const { return !Texts("show", "screen", screen).empty(); }
  /// The last event of a kind; an empty object without one.
  Event Last(std::string_view kind) const;
  /// Keys of the last "main" event with a bar between them.
  std::string MainTexts(const Strings& keys) const;
  /// The error that ended the command: its number, 0 without one.
  int LastError() const { return Last("error").value("number", 0); }
  std::string LastErrorPath() const { return Last("error").value("path", ""); }

  // Places.
  const std::string& Root() const { return folder_.Root(); }
  std::string App() const { return FromPath(folder_.Host("app")); }
  std::string Game() const { return FromPath(folder_.Host("game")); }
  /// The user's home, and the process's current folder.
  std::string Home() const { return FromPath(folder_.Host("home")); }
  const OwnDesktop& Desktop() const { return desktop_; }
  /// The host path of what lies below a place; a missing thing gets the text's spelling.
  std::string AppPath(const std::string& below) const { return HostPath(App() + "\\" + below); }
  std::string GamePath(const std::string& below) const { return HostPath(Game() + "\\" + below); }
  std::string DataPath(const std::string& below) const {
    return AppPath("resources\\Do_Not_Delete!\\" + below);
  }
  std::string WorkingPath(const std::string& below) const {
    return GamePath("ROUTES\\Quillon-route\\" + below);
  }
  std::string Download(const std::string& zip) const { return AppPath("downloaded_routes\\" + zip); }

  // Files of the working route.
  /// Puts a file into the working route; its bytes, empty when there is none.
  void Play(const std::string& below, std::string_view bytes = "played") const {
    Write(WorkingPath(below), bytes);
  }
  std::string Working(const std::string& below) const;

  // Profiles. `file` lies in Do_Not_Delete!, such as "routes.ini"; kMissing stands for no value.
  using Key = std::optional<std::string_view>;
  std::string Ini(const std::string& file, std::string_view section, std::string_view key) const;
  void SetIni(const std::string& file, std::string_view section, Key key, Key value) const;
  void DeleteSection(const std::string& file, std::string_view section) const {
    SetIni(file, section, {}, {});
  }
  /// Of the section Current of routes.ini: keys with a bar between them, and what is loaded.
  std::string Current(const Strings& keys) const;
  std::string Loaded() const { return Current({"Loaded"}); }
  /// A value of the registry below HKEY_LOCAL_MACHINE, its type in front as "string:" or "dword:"; kMissing
  /// without one.
  std::string RegistryValue(std::string_view key, std::string_view name) const;

 private:
  void MakeGame() const;

  const TestFolder folder_;
  const fs::path oldFolder_;
  const OwnDesktop desktop_;
  RecordedOutput output_;
  std::unique_ptr<Session> session_;
  bool kept_ = false;
};

/// A test inside a program of its own.
class ProgramTest : public testing::Test, protected TestProgram {
 protected:
  using TestProgram::Run;
};

/// An entry that holds a track file.
ZipEntry Track(const std::string& name, const std::string& displayName);

/// A small route below the folder "route\": a track file with this name, a tile, a world file, an activity
/// with its path, service and traffic, a consist, a readme; then `extra`.
std::vector<ZipEntry> RouteEntries(const std::string& displayName, const std::vector<ZipEntry>& extra = {});

/// A track file of the game, UTF-16.
std::string TrackFile(const std::string& displayName);

}  // namespace quillon
