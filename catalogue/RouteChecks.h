// What is known of the data in the route files: checked when a route is taken in, and again when its file has
// changed since.
#pragma once

#include <string>

#include "catalogue/RouteMap.h"
#include "core/Program.h"
#include "core/Progress.h"
#include "core/archive/ArchiveReader.h"

namespace quillon {

class RouteChecks {
 public:
  explicit RouteChecks(Program& program) : program_(program) {}

  /// The route file of `zip`, as it is now, was checked. `damage` is the stored name of an entry that a load
  /// needs and can't have; empty when there is none.
  void Note(const std::string& zip, const std::string& damage) const;

  /// Raises error 321, which names the entry, when the route file of `zip`, opened as `archive`, can't be
  /// loaded whole. A file that changed since it was checked, or never was, is checked first.
  void Require(const std::string& zip, const ArchiveReader& archive, const RouteMap& map,
               Progress& progress) const;

 private:
  /// The file's size and time.
  std::string StampOf(const std::string& zip) const;

  Program& program_;
};

/// The stored name of the first of the `damaged` entries that a load needs; empty when it needs none.
std::string NeededDamage(const std::vector<int>& damaged, const ArchiveReader& archive, const RouteMap& map);

}  // namespace quillon
