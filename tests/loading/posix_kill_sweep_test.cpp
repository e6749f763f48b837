// A process killed at every file call in turn: only here a process can be split in two in front of each.
#include <sys/wait.h>
#include <unistd.h>

#include "tests/loading/FaultSweep.h"

namespace quillon {
namespace {

constexpr int kKilled = 9;

TEST_F(FaultSweep, AKilledProcessCostsNothingThatIsNotOurs) {
  for (int at = 1; at <= calls_; ++at) {
    SCOPED_TRACE("call " + std::to_string(at));
    const pid_t child = ::fork();
    if (child == 0) {
      CountedFault fault(at, [] { ::_exit(kKilled); });
      LoadWith(fault);
      ::_exit(0);
    }
    int status = 0;
    ASSERT_EQ(::waitpid(child, &status, 0), child);
    ASSERT_EQ(WEXITSTATUS(status), kKilled);
    CheckAfter(false, at % 2 == 0);
    Restore();
    if (HasFailure()) break;
  }
}

}  // namespace
}  // namespace quillon
