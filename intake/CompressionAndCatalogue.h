// The last working pass of intake: zips become route files, and routes get their catalogue entries.
#pragma once

#include <string>

#include "intake/IntakeState.h"

namespace quillon {

class CompressionAndCatalogue {
 public:
  explicit CompressionAndCatalogue(IntakeState& state) : state_(state) {}

  void Run();

 private:
  void MakeRouteFiles();
  void MakeRouteFile(const std::string& zip);
  void EnterRoute(const std::string& zip);

  IntakeState& state_;
};

}  // namespace quillon
