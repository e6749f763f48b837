// Waiting for files that another program holds: a virus scanner, an indexer, the game.
#pragma once

#include <windows.h>

#include <string>

namespace quillon {

/// One call's waiting, with pauses that grow: two seconds in all. Nothing for a file that was waited for in
/// vain a moment ago, and little for another, so that the calls of one step don't add up.
class Wait {
 public:
  /// After a call about `path` has failed with `error`: whether to try it again, after a pause. False at once
  /// unless another program is to blame. GetLastError gives `error` afterwards.
  bool Again(const std::wstring& path, DWORD error);

 private:
  bool AgainWhileHeld(const std::wstring& path);

  ULONGLONG until_ = 0;  // milliseconds since the machine's start
  DWORD pause_ = 0;      // milliseconds
};

/// Calls `attempt`, which tells whether it went well and leaves its error to GetLastError, until it has, or
/// is refused for good. Of what is deleted the error stands as long as somebody has it open, too.
template <class Attempt>
bool Patiently(const std::wstring& path, const Attempt& attempt) {
  for (Wait wait; !attempt();)
    if (!wait.Again(path, ::GetLastError())) return false;
  return true;
}

/// Whether the call that has just failed was about a file that is deleted but still open somewhere.
bool IsDeletePending(DWORD error);

}  // namespace quillon
