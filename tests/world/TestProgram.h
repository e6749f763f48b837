// The program in a world of its own: a temporary folder with a small game, an application folder and a home.
#pragma once

#include <cstddef>
#include <filesystem>
#include <map>
#include <memory>
#include <string>
#include <string_view>
#include <vector>

#include "headless/CommandLine.h"
#include "headless/Output.h"
#include "headless/Session.h"
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
class TestProgram {
 public:
  static constexpr const char* kMissing = "(missing)";

  /// `storeGame`: whether the set-up is told where the game lies, as by `setup --game`.
  explicit TestProgram(bool storeGame = true);
  ~TestProgram();
  TestProgram(const TestProgram&) = delete;
  TestProgram& operator=(const TestProgram&) = delete;

  /// The options of the sessions to come.
  Options options;

  // Commands. Each gives the exit status and forgets the events of the one before. Without KeepSession each
  // has a session, as a process, of its own.
  int Run(const Command& command);
  int Run(const std::string& name, const std::string& argument = {});
  /// Runs the lines as a script, in one session.
  int Script(const std::string& lines);
  /// One session for the commands from now on, as a script has it.
  void KeepSession();
  void EndSession();
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

  // What the last command told.
  const std::vector<Event>& All() const { return output_.events; }
  std::vector<Event> Events(std::string_view kind) const;
  /// One key of every event of a kind, texts only; `screen` when not empty.
  std::vector<std::string> Texts(std::string_view kind, const char* key = "text",
                                 std::string_view screen = {}) const;
  std::vector<std::string> BoxTexts() const { return Texts("box"); }
  std::vector<std::string> Captions(std::string_view screen = {}) const {
    return Texts("caption", "text", screen);
  }
  /// The last event of a kind; an empty object without one.
  Event Last(std::string_view kind) const;
  /// The error that ended the command: its number, 0 without one.
  int LastError() const;
  std::string LastErrorPath() const;

  // Places.
  std::string Root() const { return root_.string(); }
  std::string App() const { return (root_ / "app").string(); }
  std::string Game() const { return (root_ / "game").string(); }
  /// The user's home, and the process's current folder.
  std::string Home() const { return (root_ / "home").string(); }
  /// The host path of what lies below the application folder or the game; a missing thing gets the text's
  /// spelling.
  std::string AppPath(std::string_view below) const;
  std::string GamePath(std::string_view below) const;
  /// The same below the working route.
  std::string WorkingPath(std::string_view below) const {
    return GamePath("ROUTES\\Quillon-route\\" + std::string(below));
  }
  std::string Download(std::string_view name) const {
    return AppPath("downloaded_routes\\" + std::string(name));
  }

  // Files, by host path or by the system's text.
  static bool Exists(std::string_view path);
  static std::string ReadBytes(std::string_view path);
  /// A file of the game, or any text, as UTF-8.
  static std::string ReadText(std::string_view path);
  /// Replaces the file; makes its folders.
  static void Write(std::string_view path, std::string_view bytes);
  static void Remove(std::string_view path);
  /// Names in a folder, sorted, in lower case; folders end in "\".
  static std::vector<std::string> Names(std::string_view folder);
  /// All files below a folder: lower-case relative path with "\", and bytes.
  static std::map<std::string, std::string> Tree(std::string_view folder);
  /// All below a folder as it stands: files with bytes and read-only mark, folders and links, by their
  /// spelling.
  static std::map<std::string, std::string> State(std::string_view folder);

  /// `file` below Do_Not_Delete!, such as "routes.ini" or "misc_info\routereport.ini"; kMissing without the
  /// value.
  std::string Ini(std::string_view file, std::string_view section, std::string_view key) const;
  void SetIni(std::string_view file, std::string_view section, std::string_view key,
              std::string_view value) const;
  void DeleteSection(std::string_view file, std::string_view section) const;
  /// The lines of a section as they stand in the file.
  std::vector<std::string> IniLines(std::string_view file, std::string_view section) const;
  /// A value of the registry's stand-in, with its type in front, below HKEY_LOCAL_MACHINE.
  std::string RegistryValue(std::string_view key, std::string_view name) const;

  /// Puts a zip into downloaded_routes.
  void Drop(const std::string& zipName, const std::vector<ZipEntry>& entries,
            const ZipShape& shape = {}) const;
  /// The entries of a zip: lower-case stored name with "\", and bytes.
  static std::map<std::string, std::string> Unzipped(std::string_view path);

 private:
  void MakeGame() const;
  Session& Next();

  std::filesystem::path root_, oldFolder_;
  std::map<std::string, std::string> oldEnvironment_;
  RecordedOutput output_;
  std::unique_ptr<Session> session_;
  bool kept_ = false;
};

/// An ordinary entry, and one that holds a track file.
inline ZipEntry Entry(const std::string& name, const std::string& data = {}) {
  return {.name = name, .data = data};
}
ZipEntry Track(const std::string& name, const std::string& displayName);

/// A small route below the folder "route\": a track file with this name, a tile, a world file, an activity
/// with its path, service and traffic, a consist, a readme; then `extra`.
std::vector<ZipEntry> RouteEntries(const std::string& displayName, const std::vector<ZipEntry>& extra = {});

/// A track file of the game, UTF-16.
std::string TrackFile(const std::string& displayName);

}  // namespace quillon
