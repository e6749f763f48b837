// What is done to one file by its host name, on any thread.
#pragma once

#include <sys/stat.h>

#include <functional>
#include <string>

#include "core/host/posix_folder_tree.h"

namespace quillon {

/// Where a file's bytes are to go.
struct Target {
  Place place;
  std::string host;  // not through a link, so that the link stays one
  struct stat old = {};

  bool Replaces() const { return place.Exists(); }
};

/// Copies a file with its time and mode; `idle` is called within long copies.
FileCode CopyInto(const std::string& source, const Target& target, const std::function<void()>& idle);

/// Deletes a file or a link; a folder or a read-only file is refused.
FileCode DeleteAt(const std::string& host);

}  // namespace quillon
