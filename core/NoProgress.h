// For work that nobody watches.
#pragma once

#include "core/Progress.h"

namespace quillon {

class NoProgress : public Progress {
 public:
  void Caption(std::string_view) override {}
  void Value(int) override {}
  void Maximum(int) override {}
  void Colour(int) override {}
  void Detail(std::uint64_t, std::uint64_t, std::string_view) override {}
  void Yield() override {}
  void AllowGivingUp(bool) override {}
};

}  // namespace quillon
