// A user who gives a work up.
#pragma once

#include "core/Progress.h"

namespace quillon {

/// Gives up at one of the calls at which that is allowed, counted from 0.
class GivesUp : public Progress {
 public:
  explicit GivesUp(int at) : left_(at) {}

  void Caption(std::string_view) override { Turn(); }
  void Value(int) override { Turn(); }
  void Maximum(int) override { Turn(); }
  void Colour(int) override {}
  void Detail(std::uint64_t, std::uint64_t, std::string_view) override {}
  void Yield() override { Turn(); }
  void AllowGivingUp(bool allowed) override { allowed_ = allowed; }

 private:
  void Turn() {
    if (allowed_ && left_-- == 0) throw GivenUp{};
  }

  int left_;
  bool allowed_ = false;
};

}  // namespace quillon
