// A whole route as a list of files that are made when their turn comes.
#pragma once

#include <string>

#include "sample/SampleFile.h"

namespace quillon {

struct RoutePlan {
  std::string id;           // RouteID, and the name of the route's own files
  std::string displayName;  // UTF-8
  std::string description;
  std::string stem;      // begins the names of all other files
  int palette = 0;       // of the pictures
  int files = 52;        // in the whole route; below 43 some folders stay away
  int sizePercent = 12;  // of the binary and world files, 100 being what real routes have
  bool activities = true;
  bool manyPictures = false;  // a poster, a GIF and a BMP beside the JPEG of preview size
};

/// The route's files, by their names below the route's folder.
SampleFiles RouteFiles(const RoutePlan& plan);

}  // namespace quillon
