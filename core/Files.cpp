#include "core/Files.h"

#include <utility>

#include "core/FolderWay.h"
#include "core/Installation.h"
#include "core/host/Holder.h"
#include "core/host/PathText.h"
#include "core/host/RawFile.h"
#include "core/text/Text.h"

namespace quillon {
namespace {

constexpr std::size_t kLongestAttributePath = 255;
constexpr std::uint64_t kBlock = 4096, kMostBytes = ~std::uint64_t{0};
constexpr std::size_t kComparedPiece = 1u << 20;  // bytes that are compared at once
constexpr std::uint64_t kKilobyte = 1u << 10, kMegabyte = 1u << 20;

/// "." and ".." would empty another folder than the one that is named.
bool LeadsElsewhere(const std::string& path) {
  const std::string closed = path + "\\";
  return Contains(closed, "\\.\\") || Contains(closed, "\\..\\");
}

}  // namespace

ErrorNumber NumberOf(FileCode code) {
  switch (code) {
    case FileCode::FileNotFound: return ErrorNumber::FileNotFound;
    case FileCode::PathNotFound:
    case FileCode::NotADirectory: return ErrorNumber::PathNotFound;
    case FileCode::FileExists:
    case FileCode::AlreadyExists: return ErrorNumber::FileAlreadyExists;
    case FileCode::DiskFull: return ErrorNumber::DiskFull;
    case FileCode::SharingViolation: return ErrorNumber::PermissionDenied;
    case FileCode::InvalidName: return ErrorNumber::BadFileName;
    case FileCode::Failed: return ErrorNumber::DeviceIoError;
    default: return ErrorNumber::PathFileAccessError;
  }
}

void RaiseFileError(FileCode code, std::string_view path) {
  if (code == FileCode::Ok) return;
  std::string reason;
  if (code == FileCode::AccessDenied) reason = kNoPermission;
  if (code == FileCode::SharingViolation) reason = OpenElsewhere(path);
  throw RunTimeError(NumberOf(code), std::string(path), std::move(reason));
}

std::uint64_t RoomFor(std::uint64_t size) {
  return size > kMostBytes - kBlock ? kMostBytes : (size + kBlock - 1) / kBlock * kBlock;
}

/// A folder is refused like a file without permission.
void Files::RaiseAboutFile(FileCode code, std::string_view path, const char* denied) {
  if (code != FileCode::AccessDenied) return RaiseFileError(code, path);
  throw RunTimeError(NumberOf(code), std::string(path),
                     IsPathAFolder(path) ? "a folder stands where a file is wanted" : denied);
}

bool Files::FileExists(std::string_view path) {
  if (!HasWildcard(path) && !path.ends_with('\\')) {
    std::uint32_t attributes = 0;
    return host_.GetAttributes(path, attributes) == FileCode::Ok;
  }
  return host_.Matches(path);
}

bool Files::IsPathAFolder(std::string_view path) {
  std::uint32_t attributes = 0;
  return !path.empty() && host_.GetAttributes(path, attributes) == FileCode::Ok &&
         (attributes & kFolder) != 0;
}

void Files::SetAttributes(std::string_view path, std::uint32_t attributes) {
  host_.SetAttributes(FirstCharacters(path, kLongestAttributePath), attributes);
}

std::vector<std::string> Files::ListFiles(std::string_view pattern) {
  std::vector<FoundFile> found;
  std::vector<std::string> names;
  host_.Find(pattern, found);
  for (auto& entry : found)
    if (!entry.folder()) names.push_back(std::move(entry.name));
  return names;
}

void Files::MakeFolder(std::string_view path) {
  const FileCode code = host_.CreateFolder(path);
  // The classic make-folder statement has one number for all that stands in its way.
  if (code == FileCode::AlreadyExists)
    throw RunTimeError(ErrorNumber::PathFileAccessError, std::string(path));
  RaiseFileError(code, path);
}

void Files::MakeFolderIfMissing(std::string_view path) {
  if (!FileExists(path)) MakeFolder(path);
}

void Files::MakeFolders(std::string_view path) {
  if (IsPathAFolder(path)) return;
  const std::string parent = CutBackslash(FolderOf(path));
  if (!parent.empty() && parent != path) MakeFolders(parent);
  MakeFolder(path);
}

void Files::Kill(std::string_view path) {
  if (!HasWildcard(path)) {
    RaiseAboutFile(host_.Delete(path), path);
    return;
  }
  const auto names = ListFiles(path);
  if (names.empty()) throw RunTimeError(ErrorNumber::FileNotFound, std::string(path));
  for (const auto& name : names) Kill(std::string(FolderOf(path)) + name);
}

void Files::KillReadOnly(std::string_view path) {
  SetAttributes(path, kArchive);
  Kill(path);
}

void Files::KillIfThere(std::string_view path) {
  if (HasWildcard(path)) {
    for (const auto& name : ListFiles(path)) KillIfThere(std::string(FolderOf(path)) + name);
    return;
  }
  std::uint32_t attributes = 0;
  if (path.ends_with('\\') || host_.Delete(path) == FileCode::Ok ||
      host_.GetAttributes(path, attributes) != FileCode::Ok)
    return;
  if ((attributes & kReadOnly) != 0) SetAttributes(path, kArchive);
  RaiseAboutFile(host_.Delete(path), path);
}

void Files::Rename(std::string_view from, std::string_view to) {
  const FileCode code = host_.Move(from, to);
  // A folder is refused like one without permission when something in it is open.
  if (code == FileCode::AccessDenied && IsPathAFolder(from))
    if (std::string reason = OpenElsewhere(from); !reason.empty())
      throw RunTimeError(NumberOf(code), std::string(from), std::move(reason));
  RaiseFileError(code, code == FileCode::AlreadyExists ? to : from);
}

void Files::FileCopy(std::string_view from, std::string_view to) {
  RaiseAboutCopy(host_.Copy(from, to), from, to);
}

void Files::FileCopyMany(const std::vector<FileSystem::CopyOrder>& orders,
                         const std::function<void(std::size_t index)>& copied) {
  host_.CopyMany(orders, [&](std::size_t i, FileCode code) {
    RaiseAboutCopy(code, orders[i].from, orders[i].to);
    copied(i);
  });
}

void Files::RaiseAboutCopy(FileCode code, std::string_view from, std::string_view to) {
  if (code == FileCode::Ok) return;
  ReadAll(from, 0);  // raises when the source is to blame
  RaiseAboutFile(code, to);
}

std::string Files::ReadAll(std::string_view path, std::uint64_t limit) {
  std::string bytes;
  RaiseAboutFile(host_.Read(path, bytes, limit), path, kNoPermissionToRead);
  return bytes;
}

void Files::WriteAll(std::string_view path, std::string_view bytes) {
  RaiseAboutFile(host_.Replace(path, bytes), path);
}

std::uint64_t Files::Size(std::string_view path) {
  std::uint64_t size = 0;
  RaiseAboutFile(host_.GetSize(path, size), path, kNoPermissionToRead);
  return size;
}

void Files::RequireRoom(std::string_view path, std::uint64_t bytes) {
  const std::uint64_t free = host_.FreeSpace(path);
  if (bytes <= free) return;
  const std::uint64_t unit = bytes < 10 * kMegabyte ? kKilobyte : kMegabyte;
  const std::string name = unit == kKilobyte ? " KB" : " MB";
  const std::uint64_t needed = bytes / unit + (bytes % unit != 0);
  throw RunTimeError(
      ErrorNumber::DiskFull, std::string(path),
      std::to_string(needed) + name + " are needed, " + std::to_string(free / unit) + name + " are free");
}

void Files::RequireWritable(std::string_view path) {
  std::uint32_t attributes = 0;
  if (host_.GetAttributes(path, attributes) != FileCode::Ok) return;
  const bool writable = (attributes & kFolder) != 0 ? host_.MayWrite(path) : (attributes & kReadOnly) == 0;
  if (!writable) RaiseFileError(FileCode::AccessDenied, path);
}

void Files::Flush(std::string_view path) { RaiseFileError(host_.Flush(path), path); }

bool Files::AreEqual(std::string_view a, std::string_view b) {
  std::vector<FoundFile> found, foundThere;
  if (host_.Find(a, found) != FileCode::Ok || host_.Find(b, foundThere) != FileCode::Ok) return false;
  const FoundFile &one = found.front(), &other = foundThere.front();
  if (one.size != other.size || one.folder() || other.folder()) return false;
  if (one.modified == other.modified) return true;
  const RawInput first(host_.HostPath(a)), second(host_.HostPath(b));
  std::string bytes, others;
  for (std::uint64_t at = 0; at < one.size; at += kComparedPiece) {
    if (!first.IsOpen() || !second.IsOpen() || !first.ReadAt(at, kComparedPiece, bytes) ||
        !second.ReadAt(at, kComparedPiece, others) || bytes != others)
      return false;
  }
  return true;
}

void Files::TryCopy(std::string_view from, std::string_view to) { host_.Copy(from, to); }

int Files::DelTree(std::string_view folder, const Each& each) {
  const std::string path = CutBackslash(Trim(folder));
  // A bare name or a drive's root is refused.
  if (path.find('\\') == path.npos || LeadsElsewhere(path)) return -1;
  const FileSystem::Pass pass(host_);
  return DelTreeOf(path, each);
}

int Files::DelTreeOf(const std::string& folder, const Each& each) {
  if (!IsPathAFolder(folder)) return -1;
  const auto numberOf = [](FileCode code) { return static_cast<int>(NumberOf(code)); };
  // A link goes as itself: what it points to is not ours to empty.
  std::vector<FoundFile> self;
  if (host_.Find(folder, self) == FileCode::Ok && self.front().link) {
    const FileCode code = host_.RemoveFolder(folder);
    return code == FileCode::Ok ? 0 : numberOf(code);
  }
  std::vector<FoundFile> found;
  host_.Find(folder + "\\*.*", found);
  std::vector<std::string> folders;
  for (const auto& entry : found) {
    if (entry.dots()) continue;
    const std::string path = folder + "\\" + entry.name;
    if (entry.folder()) {
      folders.push_back(path);
      continue;
    }
    if ((entry.attributes & kReadOnly) != 0) host_.SetAttributes(path, 0);
    if (const FileCode code = host_.Delete(path); code != FileCode::Ok) return numberOf(code);
    if (each) each();
  }
  for (const auto& path : folders)
    if (const int result = DelTreeOf(path, each); result != 0) return result;
  const FileCode code = host_.RemoveFolder(folder);
  return code == FileCode::Ok ? 0 : numberOf(code);
}

int Files::CopyAllFiles(std::string_view source, std::string_view destination, std::string_view pattern,
                        const Each& each, std::vector<std::string>* failed) {
  if (!HasWildcard(pattern)) return CopyNamedFiles(source, destination, {std::string(pattern)}, failed);
  // Where the folder above is missing, too, there is no such place and nothing to be told.
  const bool isPlace = host_.CreateFolder(CutBackslash(destination)) != FileCode::PathNotFound;
  std::vector<FoundFile> found;
  if (host_.Find(std::string(source) + std::string(pattern), found) != FileCode::Ok) {
    meter_.CopyFoundNothing("No new routes found.");
    return 0;
  }
  std::vector<FileSystem::CopyOrder> orders;
  for (const auto& entry : found) {
    if (!entry.folder())
      orders.push_back({std::string(source) + entry.name, std::string(destination) + entry.name});
  }
  // What fails in silence is tried once more: another program may have held the file for a moment.
  host_.CopyMany(orders, [&](std::size_t i, FileCode code) {
    const auto& [from, to] = orders[i];
    if (code != FileCode::Ok) code = host_.Copy(from, to);
    if (code != FileCode::Ok && isPlace) meter_.CopyFailed(from, code);
    if (code != FileCode::Ok && failed != nullptr) failed->emplace_back(FileNameOf(from));
    if (each) each();
    MoveCopyBar();
  });
  for (std::size_t folders = found.size() - orders.size(); folders > 0; --folders) MoveCopyBar();
  return static_cast<int>(found.size());
}

int Files::CopyNamedFiles(std::string_view source, std::string_view destination,
                          const std::vector<std::string>& names, std::vector<std::string>* failed) {
  host_.CreateFolder(CutBackslash(destination));
  std::vector<FileSystem::CopyOrder> orders;
  for (const auto& name : names) {
    const std::string path = std::string(source) + name, host = host_.HostPath(path);
    // The copy gets the name as the disk spells it.
    orders.push_back({path, std::string(destination) + host.substr(LastSeparator(host) + 1)});
  }
  int handled = 0;
  host_.CopyMany(orders, [&](std::size_t i, FileCode code) {
    const auto& [from, to] = orders[i];
    if (code != FileCode::Ok) code = host_.Copy(from, to);
    if (code != FileCode::Ok && !FileExists(from)) {
      meter_.CopyFoundNothing("No new routes found.");
      return;
    }
    if (code != FileCode::Ok) meter_.CopyFailed(from, code);
    if (code != FileCode::Ok && failed != nullptr) failed->emplace_back(FileNameOf(from));
    MoveCopyBar();
    ++handled;
  });
  return handled;
}

void Files::MoveCopyBar() {
  copyBar_ += random_.Whole(5);
  if (copyBar_ > 100) copyBar_ = 5;
  meter_.CopyMoved(copyBar_);
}

void Files::Walk(std::string_view searchPath, const WalkAction& action) {
  WalkFolder(std::string(searchPath.substr(0, searchPath.size() - 3)), action, nullptr);
}

void Files::WalkThroughLinks(std::string_view searchPath, const WalkAction& action) {
  FolderWay way(host_);
  const std::string folder(searchPath.substr(0, searchPath.size() - 3));
  way.Enter(folder, false);
  WalkFolder(folder, action, &way);
}

void Files::WalkFolder(const std::string& folder, const WalkAction& action, FolderWay* way) {
  std::vector<FoundFile> found;
  if (host_.Find(folder + "*.*", found) != FileCode::Ok) return;
  for (const auto& entry : found) {
    if (entry.dots()) continue;
    const std::string below = folder + entry.name + "\\";
    if (!entry.folder()) {
      action(folder, entry.name);
    } else if (way == nullptr) {
      if (!entry.link) WalkFolder(below, action, nullptr);
    } else if (way->Enter(below, entry.link)) {
      WalkFolder(below, action, way);
      way->Leave();
    }
  }
}

void Files::PartSweep(std::string_view searchPath) {
  Walk(searchPath, [this](const std::string& folder, const std::string& name) {
    if (name.ends_with(kPartMark)) KillIfThere(folder + name);
  });
}

bool IsBackup(std::string_view name) { return name.starts_with(kBackupPrefix) || name.starts_with("ostr-"); }

void Files::BackupSweep(std::string_view searchPath) {
  Walk(searchPath, [this](const std::string& folder, const std::string& name) {
    if (IsBackup(name)) KillReadOnly(folder + name);
  });
}

ListFile::ListFile(Files& files, std::string path, bool append) : path_(std::move(path)) {
  RaiseFileError(files.Host().Open(path_, append, file_), path_);
}

void ListFile::Add(std::string_view line) { RaiseFileError(file_->Write(std::string(line) + "\r\n"), path_); }

}  // namespace quillon
