// The sample's zips: every kind that intake tells apart.
#pragma once

#include <string>
#include <utility>
#include <vector>

namespace quillon {

/// Makes all zips in `hostFolder`, which is made when it is missing. `scale` multiplies the files of the
/// first. Each zip's name with its kind. Raises RunTimeErrors.
std::vector<std::pair<std::string, std::string>> MakeRouteZips(const std::string& hostFolder, int scale);

}  // namespace quillon
