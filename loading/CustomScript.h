// The line script that a route may have, run at the end of its load.
#pragma once

#include <array>
#include <memory>
#include <optional>
#include <set>
#include <string>
#include <string_view>
#include <vector>

#include "core/Program.h"
#include "shelf/OwnFiles.h"

namespace quillon {

class CustomScript {
 public:
  CustomScript(Program& program, std::string workingRoute)
      : program_(program), files_(program.files), WorkingRoute(std::move(workingRoute)) {}

  /// Runs the script that belongs to the route `zip`; nothing without one. A line that a command can't take
  /// apart is error 5, which names the script and the line.
  void Run(const std::string& zip);

 private:
  struct Arguments {
    std::string Folder, Name, Last;
  };
  /// Copies from one folder to another that are made at once.
  struct Copies {
    std::string source, target;
    std::vector<std::string> names;
    std::set<std::string> known;  // the names, lower case
  };
  struct Command {
    std::string_view prefix;  // lower case
    void (CustomScript::*act)();
  };
  static const std::array<Command, 9> kCommands;

  std::string PathOf(const std::string& zip) const;
  void RunLine(std::string_view line);
  std::string Folder();
  Arguments Parse();
  [[noreturn]] void Fatal(std::string_view lacking);

  // The commands.
  void Copy() { CopyFrom(WorkingRoute); }
  void TSCopy() { CopyFrom(program_.shared.TrainSimPath); }
  void CopyFrom(const std::string& root);
  void CopyGathered();
  void HeavySnow();
  void SetAttr();
  void RemoveFromQN() { DeleteBelow(program_.app.App()); }
  void Del() { DeleteBelow(WorkingRoute); }
  void DeleteBelow(const std::string& root);
  void Rename();
  void DelDir();
  void Msg();

  /// What the script would delete, and nothing else holds, goes to the shelf.
  void KeepOwn(const std::string& path);
  /// Renames a file that a copy would destroy, and lists its backup as `line`.
  void Cover(const std::string& path, const std::string& backup, const std::string& line);

  /// A line of current.tsl or default.tsl; each list stays open for the next one.
  void Append(std::unique_ptr<ListFile>& list, const std::string& path, const std::string& line);

  Program& program_;
  Files& files_;
  const std::string WorkingRoute;
  std::string script_, ScriptMessage;
  std::unique_ptr<ListFile> currentList_, defaultList_;
  std::optional<OwnFiles> own_;
  std::optional<Rescue> rescue_;
  std::vector<std::string> ownCovered_;
  Copies gathered_;
  std::string_view line_;
  int number_ = 0;
};

}  // namespace quillon
