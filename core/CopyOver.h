// A copy that a read-only file does not stop.
#pragma once

#include <string>

#include "core/Files.h"

namespace quillon {

/// Raises RunTimeErrors.
inline void CopyOver(Files& files, const std::string& from, const std::string& to) {
  if (files.FileExists(to)) files.SetAttributes(to, kArchive);
  files.FileCopy(from, to);
}

}  // namespace quillon
