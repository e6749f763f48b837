// What a load has to say beside its bar.
#pragma once

#include <string_view>

namespace quillon {

/// The four texts of the load's screen.
class LoadTexts {
 public:
  virtual ~LoadTexts() = default;
  virtual void SetFirstMessage(std::string_view text) = 0;
  /// The route's name and the size message, together.
  virtual void ShowRoute() = 0;
  virtual void SetTerrainInfo(std::string_view text, bool visible) = 0;
  /// What the load needs of the disks when it is tight; empty when there is plenty.
  virtual void SetRoom(std::string_view text) = 0;
  /// Hides the others.
  virtual void ShowResult(std::string_view text) = 0;
};

}  // namespace quillon
