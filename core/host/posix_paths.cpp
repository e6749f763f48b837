#include "core/host/posix_paths.h"

#include <unistd.h>

#include <algorithm>
#include <array>
#include <climits>
#include <cstdlib>
#include <memory>

#include "core/Text.h"

namespace quillon {
namespace {

bool IsSeparator(char c) { return c == '\\' || c == '/'; }

bool IsLetter(char c) { return (c >= 'A' && c <= 'Z') || (c >= 'a' && c <= 'z'); }

bool IsRefused(char c) {
  const auto byte = static_cast<unsigned char>(c);
  return byte < 0x20 || c == '<' || c == '>' || c == ':' || c == '"' || c == '|';
}

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

/// ".." never leads above the root.
void AddName(std::string_view name, std::vector<std::string>& names) {
  if (name == "." || name.empty()) return;
  if (name != "..")
    names.emplace_back(name);
  else if (!names.empty())
    names.pop_back();
}

FileCode Split(std::string_view path, bool wildcards, PathText& text) {
  while (!path.empty()) {
    const auto end = std::find_if(path.begin(), path.end(), IsSeparator);
    const std::string_view name = path.substr(0, static_cast<std::size_t>(end - path.begin()));
    path.remove_prefix(name.size());
    if (!ValidName(name)) return FileCode::InvalidName;
    if (HasWildcard(name)) {
      if (!wildcards || !path.empty()) return FileCode::InvalidName;
      text.wildcard = true;
    }
    AddName(name, text.names);
    if (path.size() == 1) text.closed = true;
    if (!path.empty()) path.remove_prefix(1);
  }
  return FileCode::Ok;
}

}  // namespace

bool HasWildcard(std::string_view name) { return name.find_first_of("*?") != name.npos; }

bool ValidName(std::string_view name) {
  return name.size() <= NAME_MAX && std::none_of(name.begin(), name.end(), IsRefused);
}

PathText TakeApart(std::string_view path, bool wildcards) {
  PathText text;
  text.names.reserve(16);
  const bool onDrive = path.size() >= 2 && path[1] == ':' && IsLetter(path[0]);
  const bool relative = !path.empty() && !IsSeparator(path[0]);
  if (path.empty() || onDrive || (relative && !AddCurrentFolder(text.names)))
    text.code = FileCode::PathNotFound;
  else
    text.code = Split(path, wildcards, text);
  return text;
}

std::string_view DropTail(std::string_view name) { return name.substr(0, name.find_last_not_of(" .") + 1); }

bool Creatable(std::string_view name) {
  static constexpr std::array<std::string_view, 4> kDevices = {"CON", "NUL", "AUX", "PRN"};
  if (DropTail(name).empty()) return false;
  const std::string stem = UpperCase(DropTail(name.substr(0, name.find('.'))));
  if (stem.size() == 4 && (stem.starts_with("COM") || stem.starts_with("LPT")))
    return stem[3] < '1' || stem[3] > '9';
  return std::find(kDevices.begin(), kDevices.end(), stem) == kDevices.end();
}

std::string ExactHostPath(const PathText& text) {
  std::string host;
  for (const auto& name : text.names) host.append("/").append(name);
  return host.empty() ? "/" : host;
}

}  // namespace quillon
