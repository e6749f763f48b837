// Puts misplaced trains where they are asked for.
#pragma once

#include <vector>

#include "checkup/CauseList.h"
#include "core/Program.h"

namespace quillon {

/// The moves of all causes that can be made now: the old name is there, the new one is free.
std::vector<TrainMove> PossibleMoves(Program& program, const CauseList& list);

/// Renames, never over something and never out of TRAINSET; each is on the shelf, to be taken back, before it
/// is made. Raises the RunTimeError of the first that fails.
void MakeMoves(Program& program, const std::vector<TrainMove>& moves);

/// One line a move, for people.
std::string ListOfMoves(const std::vector<TrainMove>& moves);

/// Asks, and makes them. False when the user said no.
bool AskAndMove(Program& program, const std::vector<TrainMove>& moves);

}  // namespace quillon
