// The desktop around the program: what has no program is known, and a second start reaches the first.
#include <gtest/gtest.h>

#include "core/host/Desktop.h"
#include "tests/world/TestFolder.h"

namespace quillon {
namespace {

class DesktopTest : public testing::Test, protected TestFolder {
 protected:
  const std::string lock_ = FromPath(Host("quillon.lock"));
};

TEST_F(DesktopTest, WhatCantBeOpenedIsKnown) {
  EXPECT_FALSE(OpenWithDesktop(FromPath(Host("nothing.no-such-kind"))).get());
  EXPECT_FALSE(RunCommand("no-such-program-at-all", Root()).get());
}

TEST_F(DesktopTest, ASecondStartReachesTheFirstAsLongAsItListens) {
  EXPECT_FALSE(CallRunningInstance(lock_)) << "nobody listens";
  auto first = HearStartCalls(lock_);
  ASSERT_NE(first, nullptr);
  EXPECT_FALSE(first->Any());
  EXPECT_TRUE(CallRunningInstance(lock_));
  EXPECT_TRUE(CallRunningInstance(lock_));
  EXPECT_TRUE(first->Any());
  EXPECT_FALSE(first->Any()) << "it was heard";
  first.reset();
  EXPECT_FALSE(CallRunningInstance(lock_));
  Put("quillon.lock.calls", "somebody's");
  EXPECT_FALSE(CallRunningInstance(lock_));
  EXPECT_EQ(Bytes("quillon.lock.calls"), "somebody's");
}

}  // namespace
}  // namespace quillon
