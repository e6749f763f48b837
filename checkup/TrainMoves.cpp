#include "checkup/TrainMoves.h"

#include <algorithm>

#include "core/archive/ArchiveNames.h"
#include "core/text/Text.h"
#include "shelf/Rescue.h"

namespace quillon {
namespace {

std::string PathOf(const Program& program, const std::string& train) {
  return program.BelowGame("\\TRAINS\\TRAINSET\\") + train;
}

/// The list comes from a file that anybody may have written.
bool StaysInTrainSet(const std::string& train) {
  if (train.empty()) return false;
  for (std::string_view rest = train; !rest.empty();) {
    const std::string_view name = rest.substr(0, rest.find('\\'));
    // Blanks and dots alone are no name, and may lead up.
    if (name.find_last_not_of(" .") == name.npos || name.find_first_of("/:") != name.npos) return false;
    rest.remove_prefix(std::min(name.size() + 1, rest.size()));
  }
  return true;
}

/// As the disk has it: a blank at the end of a name is no longer one and the same name.
bool IsTaken(Program& program, const TrainMove& move) {
  const std::string to = PathOf(program, move.to);
  std::vector<FoundFile> found;
  program.files.Host().Find(std::string(FolderOf(to)) + "*.*", found);
  return std::any_of(found.begin(), found.end(),
                     [&](const FoundFile& file) { return EqualNoCase(file.name, FileNameOf(to)); });
}

}  // namespace

std::vector<TrainMove> PossibleMoves(Program& program, const CauseList& list) {
  std::vector<TrainMove> moves;
  for (const auto& cause : list.causes)
    for (const auto& move : cause.moves)
      if (StaysInTrainSet(move.from) && StaysInTrainSet(move.to) &&
          program.files.FileExists(PathOf(program, move.from)) && !IsTaken(program, move))
        moves.push_back(move);
  return moves;
}

void MakeMoves(Program& program, const std::vector<TrainMove>& moves) {
  Rescue rescue(program, "Trains",
                "Misplaced trains were renamed: to put this back gives them their old names.");
  for (const auto& [from, to] : moves) {
    const std::string old = PathOf(program, from), renamed = PathOf(program, to);
    rescue.NoteRename(old, renamed);
    program.files.Rename(old, renamed);
  }
  if (!rescue.IsEmpty()) program.files.Flush(PathOf(program, ""));
  rescue.Close();
}

std::string ListOfMoves(const std::vector<TrainMove>& moves) {
  std::string text;
  for (const auto& [from, to] : moves)
    text += "TRAINSET\\" + from + "\r\n    becomes TRAINSET\\" + to + "\r\n";
  return text;
}

bool AskAndMove(Program& program, const std::vector<TrainMove>& moves) {
  if (!program.boxes.AskYesNo("Misplaced trains",
                              "These train folders would be renamed:\r\n\r\n" + ListOfMoves(moves) +
                                  "\r\nNothing is covered, and the shelf can take it back. "
                                  "Rename them now?"))
    return false;
  program.Step("Renaming misplaced trains");
  MakeMoves(program, moves);
  return true;
}

}  // namespace quillon
