// What can be played on the routes that an intake has brought.
#pragma once

#include "intake/IntakeState.h"

namespace quillon {

/// Adds to the verdict on each new route how many of its activities can be played with the trains that are
/// installed, and which it lacks. Nothing while the game is not known.
void NoteWhatCanBePlayed(IntakeState& state);

}  // namespace quillon
