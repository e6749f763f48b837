// Judges every consist, service and activity by what is really missing, and finds what heals most.
#pragma once

#include <string>
#include <string_view>
#include <vector>

#include "checkup/CauseList.h"
#include "checkup/GameFacts.h"
#include "checkup/TrainDatabase.h"
#include "checkup/TrainPlaces.h"

namespace quillon {

/// What there is to judge. Names are spelled as the disk has them; those of consists are the caller's.
struct CauseInput {
  struct Consist {
    std::string_view name;  // without extension
    const FileFacts* facts;
    std::string_view route = {};  // the only one that can call for it; empty for all
  };
  struct InRoute {
    std::string route, file;  // the route's folder; with extension
    const FileFacts* facts;
  };

  const ItemTable& items;
  const TrainDatabase& trains;
  const TrainPlaces& places;
  std::vector<Consist> consists;
  std::vector<InRoute> services, activities;

  /// `shown` is the name of its file.
  static Consist Of(std::string_view shown, const FileFacts& facts, std::string_view route = {}) {
    return {shown.substr(0, shown.rfind('.')), &facts, route};
  }
  /// Takes `shown`, such as `Ridge\Activities\a.act`, apart.
  static InRoute Place(const std::string& shown, const FileFacts& facts);
};

/// A consist with a train that is missing is gone under both its names: of its file, and as it calls itself.
/// Causes and activities of the list are filled; the caller gives it its date and its route. Only reads, and
/// may do so on a thread of its own.
CauseList FindCauses(const CauseInput& input);

}  // namespace quillon
