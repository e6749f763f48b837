#include "tests/loading/FaultSweep.h"

namespace quillon {
namespace {

TEST_F(FaultSweep, AFailingCallCostsNothingThatIsNotOurs) {
  int failed = 0;
  for (int at = 1; at <= calls_; at += SweepStep()) {
    SCOPED_TRACE("call " + std::to_string(at));
    CountedFault fault(at);
    const bool finished = LoadWith(fault);
    failed += finished ? 0 : 1;
    CheckAfter(finished, at % 2 == 0);
    Restore();
    if (HasFailure()) break;
  }
  EXPECT_GT(failed, 0);
  RecordProperty("calls", calls_);
}

}  // namespace
}  // namespace quillon
