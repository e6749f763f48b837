#include "fuzz/MemoryFiles.h"

#include <functional>
#include <utility>

#include "core/host/PathText.h"
#include "core/text/Text.h"

namespace quillon {
namespace {

class Output : public OutputFile {
 public:
  explicit Output(std::function<FileCode(std::string_view)> write) : write_(std::move(write)) {}
  FileCode Write(std::string_view bytes) override { return write_(bytes); }

 private:
  const std::function<FileCode(std::string_view)> write_;
};

}  // namespace

void MemoryFiles::Put(std::string_view path, std::string_view bytes) {
  for (auto at = path.find('\\', 1); at != path.npos; at = path.find('\\', at + 1))
    CreateFolder(path.substr(0, at));
  Replace(path, bytes);
}

MemoryFiles::Place MemoryFiles::PlaceOf(std::string_view path, bool wildcards) const {
  PathText text;
  if (path.empty() || !IsSeparator(path[0])) return {FileCode::PathNotFound, {}, {}, {}};
  AddNames(path, wildcards, text);
  Place place{text.code, {}, {}, {}};
  for (const auto& name : text.names) {
    place.folder = place.key;
    place.name = DropTail(name);
    place.key += "\\" + UpperCase(place.name);
  }
  return place;
}

bool MemoryFiles::IsFolder(const std::string& key) const {
  const auto at = nodes_.find(key);
  return key.empty() || (at != nodes_.end() && (at->second.attributes & kFolder) != 0);
}

bool MemoryFiles::HoldsNothing(const std::string& key) const {
  const auto next = nodes_.lower_bound(key + "\\");
  return next == nodes_.end() || !next->first.starts_with(key + "\\");
}

std::vector<MemoryFiles::Nodes::iterator> MemoryFiles::Below(const std::string& folder) {
  std::vector<Nodes::iterator> below;
  const std::string start = folder + "\\";
  for (auto at = nodes_.lower_bound(start); at != nodes_.end() && at->first.starts_with(start); ++at)
    below.push_back(at);
  return below;
}

FileCode MemoryFiles::FindNode(std::string_view path, Nodes::iterator& node) {
  const Place place = PlaceOf(path);
  if (place.code != FileCode::Ok) return place.code;
  node = nodes_.find(place.key);
  if (node != nodes_.end()) return FileCode::Ok;
  return IsFolder(place.folder) ? FileCode::FileNotFound : FileCode::PathNotFound;
}

FileCode MemoryFiles::FindFile(std::string_view path, Nodes::iterator& node) {
  const FileCode code = FindNode(path, node);
  return code == FileCode::Ok && IsFolder(node->first) ? FileCode::AccessDenied : code;
}

FileCode MemoryFiles::Find(std::string_view pattern, std::vector<FoundFile>& found) {
  found.clear();
  const Place place = PlaceOf(pattern, true);
  if (place.code != FileCode::Ok) return place.code;
  if (!IsFolder(place.folder)) return FileCode::PathNotFound;
  for (const char* dots : {".", ".."})
    if (HasWildcard(place.name) && MatchesPattern(dots, place.name)) found.push_back({dots, kFolder});
  for (const auto& at : Below(place.folder)) {
    const auto& [name, attributes, bytes, time] = at->second;
    if (at->first.find('\\', place.folder.size() + 1) == std::string::npos &&
        MatchesPattern(name, place.name))
      found.push_back({name, attributes, false, false, bytes.size(), time});
  }
  return found.empty() ? FileCode::FileNotFound : FileCode::Ok;
}

FileCode MemoryFiles::GetAttributes(std::string_view path, std::uint32_t& attributes) {
  Nodes::iterator node;
  const FileCode code = FindNode(path, node);
  if (code == FileCode::Ok) attributes = node->second.attributes;
  return code;
}

FileCode MemoryFiles::SetAttributes(std::string_view path, std::uint32_t attributes) {
  Nodes::iterator node;
  const FileCode code = FindNode(path, node);
  if (code == FileCode::Ok)
    node->second.attributes = (node->second.attributes & kFolder) | (attributes & ~kFolder);
  return code;
}

FileCode MemoryFiles::GetSize(std::string_view path, std::uint64_t& size) {
  Nodes::iterator node;
  const FileCode code = FindFile(path, node);
  if (code == FileCode::Ok) size = node->second.bytes.size();
  return code;
}

FileCode MemoryFiles::Delete(std::string_view path) {
  Nodes::iterator node;
  if (const FileCode code = FindFile(path, node); code != FileCode::Ok) return code;
  if ((node->second.attributes & kReadOnly) != 0) return FileCode::AccessDenied;
  nodes_.erase(node);
  return FileCode::Ok;
}

FileCode MemoryFiles::Move(std::string_view from, std::string_view to) {
  Nodes::iterator node;
  if (const FileCode code = FindNode(from, node); code != FileCode::Ok) return code;
  const Place place = PlaceOf(to);
  if (place.code != FileCode::Ok) return place.code;
  const std::string old = node->first;
  if (!IsFolder(place.folder)) return FileCode::PathNotFound;
  if (place.key != old && (place.key.empty() || nodes_.contains(place.key))) return FileCode::AlreadyExists;
  if ((place.folder + "\\").starts_with(old + "\\")) return FileCode::SharingViolation;
  auto moved = Below(old);
  moved.push_back(node);
  for (const auto& at : moved) {
    auto taken = nodes_.extract(at);
    taken.key() = place.key + taken.key().substr(old.size());
    if (taken.key() == place.key) taken.mapped().name = place.name;
    nodes_.insert(std::move(taken));
  }
  return FileCode::Ok;
}

FileCode MemoryFiles::Copy(std::string_view from, std::string_view to) {
  Nodes::iterator node;
  if (const FileCode code = FindFile(from, node); code != FileCode::Ok) return code;
  const Node source = node->second;
  const FileCode code = Replace(to, source.bytes);
  if (code != FileCode::Ok || FindFile(to, node) != FileCode::Ok) return code;
  node->second.time = source.time;
  node->second.attributes = source.attributes;
  return code;
}

FileCode MemoryFiles::CreateFolder(std::string_view path) {
  const Place place = PlaceOf(path);
  if (place.code != FileCode::Ok) return place.code;
  if (place.key.empty() || nodes_.contains(place.key)) return FileCode::AlreadyExists;
  if (!IsFolder(place.folder)) return FileCode::PathNotFound;
  if (!Creatable(place.name)) return FileCode::InvalidName;
  nodes_[place.key] = {place.name, kFolder, {}, ++clock_};
  return FileCode::Ok;
}

FileCode MemoryFiles::RemoveFolder(std::string_view path) {
  Nodes::iterator node;
  if (const FileCode code = FindNode(path, node); code != FileCode::Ok) return code;
  if (!IsFolder(node->first)) return FileCode::NotADirectory;
  if (!HoldsNothing(node->first)) return FileCode::DirectoryNotEmpty;
  nodes_.erase(node);
  return FileCode::Ok;
}

FileCode MemoryFiles::Read(std::string_view path, std::string& bytes, std::uint64_t limit) {
  Nodes::iterator node;
  const FileCode code = FindFile(path, node);
  if (code == FileCode::Ok) bytes = node->second.bytes.substr(0, limit);
  return code;
}

FileCode MemoryFiles::Replace(std::string_view path, std::string_view bytes) {
  const Place place = PlaceOf(path);
  if (place.code != FileCode::Ok) return place.code;
  if (IsFolder(place.key)) return FileCode::AccessDenied;
  if (!IsFolder(place.folder)) return FileCode::PathNotFound;
  if (!Creatable(place.name)) return FileCode::InvalidName;
  Node& node = nodes_.try_emplace(place.key, Node{place.name, kArchive, {}, 0}).first->second;
  if ((node.attributes & kReadOnly) != 0) return FileCode::AccessDenied;
  node.bytes = bytes;
  node.time = ++clock_;
  return FileCode::Ok;
}

FileCode MemoryFiles::Open(std::string_view path, bool append, std::unique_ptr<OutputFile>& file) {
  std::string bytes;
  if (append) Read(path, bytes, kNoLimit);
  const FileCode code = Replace(path, bytes);
  if (code != FileCode::Ok) return code;
  file = std::make_unique<Output>([this, path = std::string(path)](std::string_view more) {
    Nodes::iterator node;
    const FileCode found = FindFile(path, node);
    if (found == FileCode::Ok) node->second.bytes += more;
    return found;
  });
  return FileCode::Ok;
}

FileCode MemoryFiles::GetStamp(std::string_view path, Stamp& stamp) {
  Nodes::iterator node;
  const FileCode code = FindNode(path, node);
  if (code == FileCode::Ok) stamp = {node->second.bytes.size(), 1, node->second.time, node->second.time};
  return code;
}

}  // namespace quillon
