#include "checkup/CauseList.h"

#include "core/text/Text.h"

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

CauseList::Count CauseList::Playable(const std::string& routeFolder) const {
  Count count;
  for (const auto& activity : activities) {
    if (!routeFolder.empty() && !EqualNoCase(activity.route, routeFolder)) continue;
    ++count.all;
    count.playable += activity.playable ? 1 : 0;
  }
  return count;
}

std::map<std::string, CauseList::Count> CauseList::PlayableByRoute() const {
  std::map<std::string, Count> counts;
  for (const auto& activity : activities) {
    Count& count = counts[LowerCase(activity.route)];
    ++count.all;
    count.playable += activity.playable ? 1 : 0;
  }
  return counts;
}

}  // namespace quillon
