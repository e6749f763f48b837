// The pass that finds each route a preview picture.
#pragma once

#include <string>
#include <string_view>
#include <vector>

#include "core/Pictures.h"
#include "intake/IntakeState.h"

namespace quillon {

class Previews {
 public:
  explicit Previews(IntakeState& state) : state_(state) {}

  void Run();

 private:
  void TakeReadyPreview(const std::string& zip);
  void MakeJpegs(const std::string& zip, std::string_view extension, int mostRandom);
  void ChooseAmongJpegs(const std::string& zip);
  /// Names of the pictures of one kind that are worth a look.
  std::vector<std::string> PicturesOf(const std::string& zip, std::string_view extension) const;

  IntakeState& state_;
  bool PreviewFound = false;
};

}  // namespace quillon
