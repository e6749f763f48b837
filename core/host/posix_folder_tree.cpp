#include "core/host/posix_folder_tree.h"

#include <dirent.h>
#include <sys/stat.h>

#include <algorithm>
#include <cerrno>
#include <cstdlib>
#include <utility>

#include "core/host/PathText.h"
#include "core/host/posix_errors.h"
#include "core/text/Text.h"

namespace quillon {
namespace {

using State = FolderNode::State;

std::string Join(const std::string& host, std::string_view name) {
  std::string path;
  path.reserve(host.size() + 1 + name.size());
  return path.append(host).append("/").append(name);
}

/// Of a name as the host has it.
std::string KeyOf(std::string_view name) { return UpperCase(WithStandIns(name)); }

/// The child of exactly this name, if it is known.
FolderChild* Known(FolderNode& node, const std::string& key, std::string_view name) {
  const auto [begin, end] = node.children.equal_range(key);
  for (auto it = begin; it != end; ++it)
    if (it->second.name == name) return &it->second;
  return nullptr;
}

/// Of names that differ in case only, the first by its bytes: which one is meant must not depend on the
/// host's order.
FolderChild* KnownInAnyCase(FolderNode& node, const std::string& key) {
  const auto [begin, end] = node.children.equal_range(key);
  FolderChild* best = nullptr;
  for (auto it = begin; it != end; ++it)
    if (best == nullptr || it->second.name < best->name) best = &it->second;
  return best;
}

FolderChild& Keep(FolderNode& node, std::string key, std::string_view name, unsigned char type) {
  if (FolderChild* known = Known(node, key, name)) {
    if (type != DT_UNKNOWN) known->type = type;
    return *known;
  }
  return node.children.emplace(std::move(key), FolderChild{std::string(name), type, nullptr, {}})->second;
}

/// Asks the host for exactly this name.
FolderChild* Probe(FolderNode& node, const std::string& host, const std::string& key, std::string_view name,
                   int& error) {
  struct stat found;
  if (::lstat(Join(host, name).c_str(), &found) == 0)
    return &Keep(node, key, name, static_cast<unsigned char>(IFTODT(found.st_mode)));
  if (errno != ENOENT && errno != ENOTDIR) error = errno;
  return nullptr;
}

/// A folder that can't be read to its end is as good as unlistable: a name must not be missing here alone.
void ReadNames(FolderNode& node, const std::string& host) {
  const std::unique_ptr<DIR, int (*)(DIR*)> listing(::opendir(host.empty() ? "/" : host.c_str()),
                                                    &::closedir);
  if (listing != nullptr) {
    errno = 0;
    while (const dirent* entry = ::readdir(listing.get())) {
      const std::string_view name = entry->d_name;
      if (name != "." && name != "..") Keep(node, KeyOf(name), name, entry->d_type);
      errno = 0;
    }
  }
  node.error = errno;
  node.state = node.error == 0 ? State::Listed : State::Unlistable;
}

constexpr std::size_t kMostRemembered = 256;

}  // namespace

std::vector<std::string_view> MatchingNames(const FolderNode& folder, Wildcard& wildcard) {
  std::vector<std::pair<const std::string*, const std::string*>> matches;
  for (const auto& [upperName, child] : folder.children)
    if (wildcard.Matches(upperName)) matches.emplace_back(&upperName, &child.name);
  std::sort(matches.begin(), matches.end(), [](const auto& a, const auto& b) {
    return *a.first == *b.first ? *a.second < *b.second : ComesBefore(*a.first, *b.first);
  });
  std::vector<std::string_view> names;
  names.reserve(matches.size());
  for (const auto& match : matches) names.emplace_back(*match.second);
  return names;
}

void FolderTree::Clear() {
  root_ = std::make_shared<FolderNode>();
  remembered_.clear();
}

FolderChild* FolderTree::Find(FolderNode& node, const std::string& host, std::string_view name, int& error) {
  FolderChild* child = FindSpelled(node, host, name, error);
  const std::string_view shorter = DropTail(name);
  if (child != nullptr || shorter.empty() || shorter.size() == name.size()) return child;
  return FindSpelled(node, host, shorter, error);
}

FolderChild* FolderTree::FindSpelled(FolderNode& node, const std::string& host, std::string_view text,
                                     int& error) {
  const std::string key = UpperCase(text), name = WithoutStandIns(text);
  if (FolderChild* known = Known(node, key, name)) return known;
  // A disk without case answers to any spelling: one file must not become two here.
  if (node.state == State::Unlisted && node.children.contains(key)) {
    ReadNames(node, host);
    if (FolderChild* known = Known(node, key, name)) return known;
  }
  if (node.state != State::Listed) {
    FolderChild* exact = Probe(node, host, key, name, error);
    if (exact != nullptr || error != 0) return exact;
  }
  if (node.state == State::Unlisted) ReadNames(node, host);
  return node.state == State::Listed ? KnownInAnyCase(node, key) : nullptr;
}

std::shared_ptr<FolderNode> FolderTree::Enter(FolderChild& child, const std::string& host) {
  if (child.folder != nullptr) return child.folder;
  if (child.type == DT_UNKNOWN) {
    struct stat found;
    if (::lstat(host.c_str(), &found) == 0) child.type = static_cast<unsigned char>(IFTODT(found.st_mode));
  }
  if (child.type == DT_LNK) return EnterLink(child, host);
  if (child.type == DT_DIR) child.folder = std::make_shared<FolderNode>();
  return child.folder;
}

/// One node stands for a folder, however many links lead to it: else a change by one way would be unknown on
/// the others.
std::shared_ptr<FolderNode> FolderTree::EnterLink(FolderChild& child, const std::string& host) {
  if (auto known = child.target.lock()) return known;
  const std::unique_ptr<char, decltype(&std::free)> real(::realpath(host.c_str(), nullptr), &std::free);
  if (real == nullptr) return nullptr;
  std::shared_ptr<FolderNode> node = root_;
  std::string path;
  for (std::string_view rest = real.get(); node != nullptr && rest.size() > 1;) {
    rest.remove_prefix(1);
    const std::string_view name = rest.substr(0, rest.find('/'));
    int error = 0;
    FolderChild* next = Find(*node, path, WithStandIns(name), error);
    path = Join(path, name);
    node = next != nullptr ? Enter(*next, path) : nullptr;
    rest.remove_prefix(name.size());
  }
  child.target = node;
  return node;
}

Place FolderTree::Locate(const PathText& text) {
  Place place;
  place.code = text.code;
  place.closed = text.closed;
  if (text.code != FileCode::Ok) return place;
  std::shared_ptr<FolderNode> node = root_;
  for (const auto& wanted : text.names) {
    // What lies below a missing folder only gets its spelling.
    int error = 0;
    if (place.code == FileCode::FileNotFound) place.code = FileCode::PathNotFound;
    FolderChild* child = node != nullptr ? Find(*node, place.host, wanted, error) : nullptr;
    const bool last = &wanted == &text.names.back();
    place.name = child != nullptr ? child->name : WithoutStandIns(DropTail(wanted));
    place.wanted = wanted;
    place.type = child != nullptr ? child->type : static_cast<unsigned char>(DT_UNKNOWN);
    place.folder = node;
    place.host = Join(place.host, place.name);
    if (place.Exists() && child == nullptr)
      place.code = error != 0 ? CodeOf(error, place.host) : FileCode::FileNotFound;
    if (last && !text.closed) break;
    node = child != nullptr ? Enter(*child, place.host) : nullptr;
    if (place.Exists() && node == nullptr) place.code = last ? FileCode::InvalidName : FileCode::PathNotFound;
  }
  if (text.names.empty()) place.host = ExactHostPath(text);
  return place;
}

Place FolderTree::LocateAgain(std::string_view path) {
  const std::string_view name = path.substr(LastSeparator(path) + 1);
  if (name.size() == path.size() || name.empty() || name == "." || name == "..")
    return Locate(TakeApart(path));
  const std::string_view folderText = path.substr(0, path.size() - name.size() - 1);
  const auto known = remembered_.find(folderText);
  if (known == remembered_.end()) {
    const Place place = Locate(TakeApart(path));
    const bool inFolder = place.folder != nullptr && place.host.size() > place.name.size();
    if (inFolder && remembered_.size() >= kMostRemembered) remembered_.clear();
    if (inFolder)
      remembered_[std::string(folderText)] = {
          place.folder, place.host.substr(0, place.host.size() - place.name.size() - 1)};
    return place;
  }
  Place place;
  if (!ValidName(name) || HasWildcard(name)) {
    place.code = FileCode::InvalidName;
    return place;
  }
  FillPlace(place, *known->second.folder, known->second.host, name);
  place.folder = known->second.folder;
  return place;
}

void FolderTree::FillPlace(Place& place, FolderNode& folder, const std::string& host,
                           std::string_view wanted) {
  int error = 0;
  const FolderChild* child = Find(folder, host, wanted, error);
  place.name = child != nullptr ? child->name : WithoutStandIns(DropTail(wanted));
  place.wanted = wanted;
  place.type = child != nullptr ? child->type : static_cast<unsigned char>(DT_UNKNOWN);
  place.host = Join(host, place.name);
  if (child == nullptr) place.code = error != 0 ? CodeOf(error, place.host) : FileCode::FileNotFound;
}

std::shared_ptr<const FolderNode> FolderTree::List(const PathText& text, std::string& host, FileCode& code) {
  const Place place = Locate(text);
  std::shared_ptr<FolderNode> node = text.names.empty() ? root_ : nullptr;
  host = text.names.empty() ? std::string() : place.host;
  code = place.code;
  if (place.folder != nullptr && place.Exists())
    node = Enter(*Known(*place.folder, KeyOf(place.name), place.name), host);
  if (node == nullptr) {
    if (code == FileCode::Ok || code == FileCode::FileNotFound) code = FileCode::PathNotFound;
    return nullptr;
  }
  if (node->state == State::Unlisted) ReadNames(*node, host);
  if (node->state == State::Listed) return node;
  code = CodeOf(node->error, host);
  return nullptr;
}

void FolderTree::Add(const Place& place, unsigned char type) {
  if (place.folder == nullptr) return;
  if (place.Exists()) Remove(place);
  Keep(*place.folder, KeyOf(place.name), place.name, type);
}

void FolderTree::Remove(const Place& place) {
  if (place.folder == nullptr) return;
  const auto [begin, end] = place.folder->children.equal_range(KeyOf(place.name));
  for (auto it = begin; it != end; ++it) {
    if (it->second.name != place.name) continue;
    if (it->second.type != DT_REG) remembered_.clear();
    place.folder->children.erase(it);
    return;
  }
}

void FolderTree::Touched(std::string_view path, bool exists) {
  const Place place = LocateAgain(path);
  if (place.folder == nullptr) {
    // The folder is as new as the file in it: what is known of the way there is no longer true.
    if (exists && place.code == FileCode::PathNotFound) Clear();
    return;
  }
  if (!exists)
    Remove(place);
  else if (!place.Exists() || place.type != DT_REG)
    Add(place, DT_REG);
}

}  // namespace quillon
