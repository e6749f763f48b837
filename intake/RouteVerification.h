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
  bool HoldsRoute(const std::string& zip);
  void Reject(const std::string& zip);

  IntakeState& state_;
};

}  // namespace quillon
