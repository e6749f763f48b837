// The way down of a walk that enters links to folders.
#pragma once

#include <cstddef>
#include <string>
#include <vector>

#include "core/host/FileSystem.h"

namespace quillon {

/// Sees a link that leads back into a folder on the way to it. Folders are texts with a closing backslash.
class FolderWay {
 public:
  /// `host` outlives the object.
  explicit FolderWay(FileSystem& host) : host_(host) {}

  /// One folder further; false, and nothing is entered, when that would close a circle.
  bool Enter(const std::string& folder, bool link);
  void Leave();

 private:
  static constexpr std::size_t kNone = static_cast<std::size_t>(-1);

  std::string IdentityOf(const std::string& folder) const;

  FileSystem& host_;
  std::vector<std::string> folders_;
  std::size_t firstLink_ = kNone;  // its place among the folders
};

}  // namespace quillon
