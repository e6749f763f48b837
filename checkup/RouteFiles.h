// The services and activities of all routes.
#pragma once

#include <string>
#include <string_view>
#include <vector>

#include "core/Program.h"

namespace quillon {

/// Full paths, sorted without regard to case: each route's files come together.
struct RouteFileLists {
  std::vector<std::string> lstServices, lstAllActivities;
};

/// Walks all route folders once. What it passes is in lower case. Links are not followed.
RouteFileLists WalkRoutes(Program& program);

/// One file of a route, taken apart.
struct RouteFile {
  std::string folder;  // with its closing backslash
  std::string name;    // with extension
  std::string route;   // what lies between the folder of the routes and `kind`
};

/// `kind` is the folder that the files lie in, between backslashes.
RouteFile TakeApart(const Program& program, const std::string& path, std::string_view kind);

}  // namespace quillon
