// Path texts of the target platform, taken apart for a host whose names are exact.
#pragma once

#include <string>
#include <string_view>
#include <vector>

#include "core/host/FileSystem.h"

namespace quillon {

/// A path text by its names.
struct PathText {
  FileCode code = FileCode::Ok;  // PathNotFound: empty or on a drive; InvalidName: no disk holds such a name
  std::vector<std::string> names;  // from the root down, without "." and ".."; none for the root
  bool closed = false;             // a separator ends the text, so that it can mean a folder only
  bool wildcard = false;           // the last name is a pattern
};

/// `wildcards` allows * and ? in the last name. A relative path starts in the current folder.
PathText TakeApart(std::string_view path, bool wildcards = false);

/// `name` without the blanks and dots at its end, which the target platform drops; may become empty.
std::string_view DropTail(std::string_view name);

/// Whether a disk of the target platform, and of this one, can hold the name.
bool ValidName(std::string_view name);
bool HasWildcard(std::string_view name);

/// False for names that the target platform makes no file of: those of devices, with any extension.
bool Creatable(std::string_view name);

/// The host's spelling of `text` where every name in it is exact.
std::string ExactHostPath(const PathText& text);

}  // namespace quillon
