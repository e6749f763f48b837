// The pass that decides which zips are routes at all.
#pragma once

#include <string>

#include "intake/IntakeState.h"

namespace quillon {

class RouteVerification {
 public:
  explicit RouteVerification(IntakeState& state) : state_(state) {}

  /// Lists `downloaded_routes` afresh: routes to ListofRouteZips, the others to Not_Installed.
  void Run();

 private:
  /// Why the zip is no route; empty when it is one.
  std::string ReasonAgainst(const std::string& zip);
  void Reject(const std::string& zip, const std::string& reason);

  IntakeState& state_;
};

}  // namespace quillon
