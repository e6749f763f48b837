// What a user may choose, in place of closing, when an error has ended the program.
#pragma once

#include <functional>
#include <string>

#include "core/Program.h"
#include "core/RunTimeError.h"

namespace quillon {

struct WayOn {
  std::string hint;                // to stand below the error
  std::string button = {};         // empty where there is none
  std::function<void()> act = {};  // may fail in its turn
  /// The intake goes on; else the program starts anew.
  bool addsAgain = false;
};

/// `mayBeDownload`: an intake may have ended at a download, which is noted then. `program` outlives the way.
WayOn WayOnAfter(Program& program, const RunTimeError& error, bool mayBeDownload);

}  // namespace quillon
