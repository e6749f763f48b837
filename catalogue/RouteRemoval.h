// The end of a route's life in the system: removal, and the turn into an ordinary installed route.
#pragma once

#include <string>
#include <vector>

#include "catalogue/Catalogue.h"
#include "core/Program.h"
#include "shelf/Rescue.h"

namespace quillon {

class RouteRemoval {
 public:
  /// `rightClickName` is the route's row, with or without "(Loaded)".
  RouteRemoval(Program& program, std::string rightClickName);

  /// Takes all that belongs to the route, its original zip excepted, to the shelf, and its entries out of the
  /// catalogue; a box says so when `tell` is set.
  void RemoveRoute(bool tell = true);
  /// Turns the working folder of the loaded route into a route of its own. Leaves it to the caller to show
  /// clean-up, whose end is told by PermanentIsDone.
  void MakeRoutePermanent();
  static void PermanentIsDone(Program& program);

  /// All files and folders of one route, in the order in which they are told to go.
  static std::vector<std::string> BelongingsOf(const Installation& app, const std::string& zip);

  /// The question that comes before MakeRoutePermanent.
  static std::string PermanentQuestion(const std::string& rightClickName);

  // What an earlier process has begun.
  static void FinishRemoval(Program& program);
  /// True when the clean-up has to follow.
  static bool FinishPermanent(Program& program);

 private:
  /// Without `zip` the catalogue tells it.
  RouteRemoval(Program& program, std::string name, std::string zip);

  void MoveBelongings(Rescue& rescue);
  void ForgetSelection();
  void DeleteEntry();
  void TurnIntoRoute(const std::string& route, const std::string& selected, const std::string& folder);
  void RescueBackups(const std::string& route);
  void FurnishFolder(const std::string& folder, const std::string& selected);
  std::string FreeRouteFolder();

  Program& program_;
  Files& files_;
  Catalogue catalogue_;
  const std::string RightClickName, zip_;
};

}  // namespace quillon
