// Finds routes a preview picture.
#pragma once

#include <functional>
#include <string>
#include <string_view>
#include <vector>

#include "core/Program.h"
#include "core/Progress.h"
#include "core/pictures/Pictures.h"

namespace quillon {

class Previews {
 public:
  /// Hears what is done next, and for which zip name.
  using Step = std::function<void(const std::string& what, const std::string& zip)>;

  /// All outlive the object.
  Previews(Program& program, Progress& progress, Step step)
      : program_(program), progress_(progress), step_(std::move(step)) {}

  /// One intake's pass over its routes, each of which has a preview without a picture already. Raises the
  /// RunTimeErrors of pictures that can't be read.
  void Run(const std::vector<std::string>& zips);

 private:
  void TakeReadyPreview(const std::string& zip);
  void MakeJpegs(const std::string& zip, std::string_view extension, int mostRandom);
  void ChooseAmongJpegs(const std::string& zip);
  /// Names of the pictures of one kind that are worth a look.
  std::vector<std::string> PicturesOf(const std::string& zip, std::string_view extension) const;

  Program& program_;
  Progress& progress_;
  const Step step_;
  bool PreviewFound = false;
};

}  // namespace quillon
