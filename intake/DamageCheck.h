// The pass that unpacks each route into nothing: damage is known before a load meets it.
#pragma once

#include <string>

#include "intake/IntakeState.h"

namespace quillon {

class DamageCheck {
 public:
  explicit DamageCheck(IntakeState& state) : state_(state) {}

  /// Routes with damaged data stay in the running; what is damaged is noted.
  void Run();

 private:
  void Check(const std::string& zip);

  IntakeState& state_;
};

/// "the data of a.s, b.s and 3 more are damaged"; `names` is not empty.
std::string DamageText(const std::vector<std::string>& names);

}  // namespace quillon
