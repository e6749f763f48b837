// The doors to the world outside the logic. A front end, with or without a display, stands behind them.
#pragma once

#include <cstdint>
#include <string>
#include <string_view>

#include "core/Controls.h"

namespace quillon {

class Screen;

/// Message boxes.
class Boxes {
 public:
  virtual ~Boxes() = default;
  virtual void Tell(std::string_view title, std::string_view text) = 0;
  /// True for Yes; No is the default button.
  virtual bool AskYesNo(std::string_view title, std::string_view text) = 0;
};

/// What is handed to other programs. Paths are the system's texts.
class Shell {
 public:
  virtual ~Shell() = default;
  virtual void OpenInShell(std::string_view path) = 0;
  virtual void Explore(std::string_view folder) = 0;
  /// Starts the game by `command`, or without one by its program at `trainExe`; when this program has ended,
  /// as the two never run together.
  virtual void StartGame(std::string_view trainExe, std::string_view command) = 0;
  virtual void ShowHelp(std::string_view file, std::string_view command) = 0;
};

/// Which screen follows which. Names are those of the screens, such as "frmMain".
class Stage {
 public:
  virtual ~Stage() = default;
  /// Brings a screen up, or to the front when it is open. It becomes active when the caller's handler has
  /// returned.
  virtual void Show(std::string_view screen) = 0;
  /// Brings a screen up and returns when it has been unloaded.
  virtual void ShowModal(std::string_view screen) = 0;
  /// Takes a screen away. The object lives on until the handlers that run in it have returned.
  virtual void Unload(std::string_view screen) = 0;
  /// Unloads all screens from last to first, which ends the program.
  virtual void ShutDown(bool force) = 0;
  /// The open screen of this name; null when it is not open.
  virtual Screen* Find(std::string_view screen) const = 0;
  /// True once ShutDown has left nothing open: handlers then return without doing more.
  virtual bool Ended() const = 0;
};

/// One rescue on the shelf.
struct ShelfEntry {
  int number = 0;    // its place among all, the newest is 1
  std::string zip;   // the route that the files belong to
  std::string date;  // ISO 8601, local time
  std::string why;
  std::string path;  // its folder
  std::uint64_t files = 0, bytes = 0;
};

/// What an intake thinks of one download.
struct Verdict {
  std::string zip;     // its name without the extension
  std::string kind;    // as the report has it: ADD, BAD, EXE, MSC
  std::string reason;  // a sentence
};

/// Hears what changes on the screens while handlers and pipelines run.
class Watcher {
 public:
  enum class BarChange { Value, Caption, Colour };
  virtual ~Watcher() = default;
  virtual void BarChanged(std::string_view screen, const ProgressBar& bar, BarChange change) = 0;
  virtual void LabelChanged(std::string_view screen, std::string_view control, const Label& label) = 0;
  /// The true measure of a long work on `screen`.
  virtual void DetailChanged(std::string_view screen, unsigned long long done, unsigned long long total,
                             std::string_view unit) = 0;
  /// Files went to the shelf; or, for room, an old rescue left it and is `dropped`.
  virtual void ShelfChanged(const ShelfEntry& entry, bool dropped) = 0;
  virtual void VerdictGiven(const Verdict& verdict) = 0;
  /// What is being done takes a while and has no screen of its own; empty when it is done.
  virtual void WaitChanged(std::string_view what) = 0;
  /// A turn for the event loop: told between file calls, too.
  virtual void Yield() = 0;
};

/// The user waits for it as long as it lives.
class Wait {
 public:
  Wait(Watcher& watcher, std::string_view what) : watcher_(watcher) { watcher_.WaitChanged(what); }
  ~Wait() { watcher_.WaitChanged({}); }
  Wait(const Wait&) = delete;
  Wait& operator=(const Wait&) = delete;

 private:
  Watcher& watcher_;
};

}  // namespace quillon
