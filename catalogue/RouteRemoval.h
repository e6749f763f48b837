// The end of a route's life in the system: removal, and the turn into an ordinary installed route.
#pragma once

#include <string>

#include "catalogue/Catalogue.h"
#include "core/Program.h"

namespace quillon {

class RouteRemoval {
 public:
  /// `rightClickName` is the route's row, with or without "(Loaded)".
  RouteRemoval(Program& program, std::string rightClickName);

  /// Deletes all that belongs to the route, its original zip excepted, and its catalogue entries.
  void RemoveRoute();
  /// Turns the working folder of the loaded route into a route of its own. Leaves it to the caller to show
  /// clean-up.
  void MakeRoutePermanent();

  /// The question that comes before MakeRoutePermanent.
  static std::string PermanentQuestion(const std::string& rightClickName);

 private:
  void DeleteBelongings();
  void DeleteFolder(const std::string& path);
  void ForgetSelection();
  std::string FreeRouteFolder();

  Program& program_;
  Files& files_;
  Catalogue catalogue_;
  const std::string RightClickName, zip_;
};

}  // namespace quillon
