// The catalogue: which routes there are, by both their names. The route files are the truth; routes.ini is
// consulted.
#pragma once

#include <string>
#include <string_view>
#include <vector>

#include "core/Program.h"

namespace quillon {

/// Operations on routes.ini. It keeps nothing in memory: every call goes to the file.
class Catalogue {
 public:
  explicit Catalogue(Program& program) : program_(program) {}

  std::string ReadCurrent(std::string_view key, std::string_view defaultText) const;
  void WriteCurrent(std::string_view key, std::string_view value) const;
  /// `[Current]` "Temp" and "Zip".
  void Select(std::string_view name, std::string_view zip) const;
  std::string Loaded() const { return ReadCurrent("Loaded", kNoData); }

  /// Display name of a zip name, or `defaultText`.
  std::string NameOf(std::string_view zip, std::string_view defaultText) const;
  /// Zip name of a display name, or `defaultText`.
  std::string ZipOf(std::string_view name, std::string_view defaultText) const;
  /// True when the zip names of the route and of the loaded one are equal; both default to "No Data!".
  bool IsLoaded(std::string_view name) const;

  bool AnyRoute() const;
  /// Deletes routes.ini, read-only or not, if it is there; not while it tells of a load that was cut short.
  void Discard() const;

  /// Enters a route unless its zip name is known; makes the display name unique and selects the route.
  /// Returns the display name, empty when the zip name was known. Raises error 75 when routes.ini can't be
  /// written.
  std::string Add(std::string_view zip, std::string_view routeName) const;

  /// Enters a route that was removed, under the name it had when that is free. Selects nothing.
  void Restore(std::string_view zip, std::string_view name) const;
  /// Enters a route that has no whole entry: under the name that its zip name has, when that is free; else
  /// under `routeName`, when that leads to it; else as Add does. Selects nothing. Raises error 75 when
  /// routes.ini can't be written.
  void Mend(std::string_view zip, std::string_view routeName) const;
  /// Whether both names of the route lead to each other: only then it can be chosen.
  bool IsWhole(std::string_view zip) const;
  /// Makes "Versions" tell of at least `count` routes of this name.
  void RequireVersions(std::string_view routeName, int count) const;

  struct RouteList {
    std::vector<std::string> rows;  // sorted, the loaded one marked
    std::vector<std::string> zips;  // in file order
  };
  /// The rows of ListRoutes. Sets `CatalogueGap`.
  RouteList BuildList() const;

 private:
  void Enter(std::string_view zip, std::string_view name) const;
  void RequireEntry(std::string_view zip) const;
  std::string UniqueName(const std::string& routeName) const;

  Program& program_;
};

/// `row` without " (Loaded)" and without blanks at its ends.
std::string NameOfRow(std::string_view row);

/// `name` as a key, which can neither hold "=" nor begin like a header or a comment.
std::string KeyOf(std::string_view name);

}  // namespace quillon
