#include "catalogue/LoadLists.h"

#include "core/text/Text.h"

namespace quillon {
namespace {

std::string Joined(const std::vector<std::string>& lines) {
  std::string text;
  for (const auto& line : lines) text += line + "\r\n";
  return text;
}

}  // namespace

LoadLists::LoadLists(Program& program) : program_(program) {
  for (auto& line : Lines(program.files.ReadAll(program.app.CurrentList())))
    if (!line.empty()) current_.push_back(Here(std::move(line)));
  for (auto& line : Lines(program.files.ReadAll(program.app.DefaultList())))
    if (!line.empty()) backups_.push_back(Here(std::move(line)));
}

/// The game may have been moved since the line was written.
std::string LoadLists::Here(std::string line) const {
  const std::string& game = program_.shared.TrainSimPath;
  if (line.size() > game.size() && line[game.size()] == '\\' && line.starts_with(game)) return line;
  const auto cut = UpperCase(line).rfind(UpperCase(kWorkingRoute) + "\\");
  if (cut == std::string::npos || cut == 0 || program_.files.IsPathAFolder(line.substr(0, cut))) return line;
  return game + line.substr(cut);
}

std::string LoadLists::TargetOf(std::string_view backup) { return ReplaceAll(backup, kBackupPrefix, ""); }

std::unordered_set<std::string> LoadLists::NeverPlaced() const {
  std::unordered_set<std::string> targets;
  for (const auto& backup : backups_)
    if (!program_.files.FileExists(backup)) targets.insert(UpperCase(TargetOf(backup)));
  return targets;
}

void LoadLists::Write(Program& program, const std::vector<std::string>& current,
                      const std::vector<std::string>& backups) {
  const std::string currentList = program.app.CurrentList();
  // Never a line without its backup: a default file that is not covered yet would be taken for the route's.
  program.files.WriteAll(currentList, "");
  program.files.WriteAll(program.app.DefaultList(), Joined(backups));
  program.files.WriteAll(currentList, Joined(current));
  program.files.Flush(currentList);
}

}  // namespace quillon
