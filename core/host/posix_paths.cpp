#include "core/host/posix_paths.h"

#include <unistd.h>

#include <algorithm>
#include <climits>
#include <cstdlib>
#include <memory>

namespace quillon {
namespace {

/// The current folder's names are the host's own: nothing is wrong with them.
bool AddCurrentFolder(std::vector<std::string>& names) {
  const std::unique_ptr<char, decltype(&std::free)> folder(::getcwd(nullptr, 0), &std::free);
  if (folder == nullptr || *folder != '/') return false;
  for (std::string_view rest = folder.get(); !rest.empty();) {
    rest.remove_prefix(1);
    const std::string_view name = rest.substr(0, rest.find('/'));
    if (!name.empty()) names.emplace_back(name);
    rest.remove_prefix(name.size());
  }
  return true;
}

/// On the disk, a stand-in is one letter.
bool TooLong(std::string_view name) {
  return name.size() > NAME_MAX && WithoutStandIns(name).size() > NAME_MAX;
}

}  // namespace

bool ValidName(std::string_view name) { return !TooLong(name) && !HasRefusedLetter(name); }

PathText TakeApart(std::string_view path, bool wildcards) {
  PathText text;
  text.names.reserve(16);
  const bool relative = !path.empty() && !IsSeparator(path[0]);
  if (path.empty() || HasDrive(path) || (relative && !AddCurrentFolder(text.names))) {
    text.code = FileCode::PathNotFound;
    return text;
  }
  AddNames(path, wildcards, text);
  if (std::any_of(text.names.begin(), text.names.end(), TooLong)) text.code = FileCode::InvalidName;
  return text;
}

std::string ExactHostPath(const PathText& text) {
  std::string host;
  for (const auto& name : text.names) host.append("/").append(WithoutStandIns(name));
  return host.empty() ? "/" : host;
}

}  // namespace quillon
