// Activities with what they need: each names its path, its service and its traffic, and the service names a
// consist.
#pragma once

#include <string>

#include "sample/SampleFile.h"

namespace quillon {

/// The activities of one route. All files of one number name each other.
struct ActivityPlan {
  std::string routeId;
  std::string stem;        // begins the files' names
  std::string ownConsist;  // of every other service; empty for one of the game's
};

/// PATHS\<stem>_pat<number>.pat, and so on.
SampleFile PathFile(const ActivityPlan& plan, int number);
SampleFile ServiceFile(const ActivityPlan& plan, int number);
SampleFile TrafficFile(const ActivityPlan& plan, int number);
SampleFile ActivityFile(const ActivityPlan& plan, int number);

}  // namespace quillon
