// Path texts of the target platform, taken apart by its rules for names.
#pragma once

#include <algorithm>
#include <string>
#include <string_view>
#include <vector>

#include "core/host/FileSystem.h"

namespace quillon {

/// A path text by its names.
struct PathText {
  FileCode code = FileCode::Ok;  // PathNotFound: empty, or there is no such root; InvalidName: no disk holds
                                 // such a name
  std::vector<std::string> names;  // from the root down, without "." and ".."; none for the root
  bool closed = false;             // a separator ends the text, so that it can mean a folder only
  bool wildcard = false;           // the last name is a pattern
};

/// Adds the names in `path` to those of `text`, which leads to where `path` starts, and says whether they are
/// names. `wildcards` allows * and ? in the last one.
void AddNames(std::string_view path, bool wildcards, PathText& text);

constexpr bool IsSeparator(char c) { return c == '\\' || c == '/'; }
/// Where the first or the last separator is; npos without one. Every path passes by here many times.
constexpr std::size_t FirstSeparator(std::string_view path) {
  const auto at = std::find_if(path.begin(), path.end(), IsSeparator);
  return at == path.end() ? path.npos : static_cast<std::size_t>(at - path.begin());
}
constexpr std::size_t LastSeparator(std::string_view path) {
  const auto at = std::find_if(path.rbegin(), path.rend(), IsSeparator);
  return at == path.rend() ? path.npos : static_cast<std::size_t>(path.rend() - at) - 1;
}
/// Whether a drive stands in front of the path.
bool HasDrive(std::string_view path);

/// `name` without the blanks and dots at its end, which the target platform drops; may become empty.
std::string_view DropTail(std::string_view name);

/// Whether no disk of the target platform can hold the name.
bool HasRefusedLetter(std::string_view name);
bool HasWildcard(std::string_view name);

/// A host may have names that no text of the target platform can tell, such as "12:30.srv". Inside the system
/// each letter in the way has a stand-in from the private area of Unicode, as other programs do it.
std::string WithStandIns(std::string_view hostName);
/// The name that such a text stands for, also for people to read.
std::string WithoutStandIns(std::string_view text);
/// Whether a text tells a name with stand-ins.
bool HasStandIns(std::string_view text);

/// False for names that the target platform makes no file of: those of devices, with any extension.
bool Creatable(std::string_view name);

}  // namespace quillon
