#include "checkup/CauseList.h"

#include <algorithm>

#include "core/Text.h"

namespace quillon {

const char* NameOf(Cause::Kind kind) {
  switch (kind) {
    case Cause::Kind::MissingFolder: return "missing folder";
    case Cause::Kind::MisplacedFolder: return "misplaced folder";
    case Cause::Kind::MissingFile: return "missing file";
    case Cause::Kind::MissingConsist: return "missing consist";
    case Cause::Kind::MissingService: return "missing service";
  }
  return "";
}

int CauseList::Playable(const std::string& routeFolder) const {
  return static_cast<int>(std::ranges::count_if(activities, [&](const JudgedActivity& activity) {
    return activity.playable && (routeFolder.empty() || EqualNoCase(activity.route, routeFolder));
  }));
}

int CauseList::Activities(const std::string& routeFolder) const {
  return static_cast<int>(std::ranges::count_if(activities, [&](const JudgedActivity& activity) {
    return routeFolder.empty() || EqualNoCase(activity.route, routeFolder);
  }));
}

}  // namespace quillon
