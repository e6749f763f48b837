// The one download at which an intake has ended: it must not hold up the others for ever.
#pragma once

#include <string>

#include "core/Program.h"
#include "intake/IntakeState.h"

namespace quillon {

/// Remembers the download at which an intake has ended with `error`, when that is what ended it. For the
/// mains.
void RememberOddDownload(Program& program, const RunTimeError& error);

/// The file name of that download; empty when there is none.
std::string OddDownloadOf(Program& program);

/// The user has been asked already, and wants it set aside by the next intake.
void SetOddDownloadAsideNext(Program& program);

/// Asks once whether to set it aside. Then it goes to Not_Installed with all that an intake has made of it,
/// and the others can be taken in.
void OfferToSetOddDownloadAside(IntakeState& state);

}  // namespace quillon
