#include <windows.h>

#include <algorithm>
#include <array>
#include <map>
#include <unordered_set>
#include <utility>

#include "core/host/FileSystem.h"
#include "core/host/Wildcards.h"
#include "core/host/windows_errors.h"
#include "core/host/windows_file_facts.h"
#include "core/host/windows_file_moves.h"
#include "core/host/windows_new_file.h"
#include "core/host/windows_paths.h"
#include "core/host/windows_patience.h"
#include "core/host/windows_text.h"
#include "core/text/Text.h"

namespace quillon {
namespace {

class WindowsOutputFile final : public OutputFile {
 public:
  explicit WindowsOutputFile(HANDLE file) : file_(file) {}
  FileCode Write(std::string_view bytes) override { return WriteAll(file_.Get(), bytes); }

 private:
  Handle file_;
};

/// Where a file's bytes are to go.
struct Target {
  std::wstring path;  // not through a link, so that the link stays one
  DWORD attributes = INVALID_FILE_ATTRIBUTES;

  bool Replaces() const { return attributes != INVALID_FILE_ATTRIBUTES; }
};

/// The platform finds names itself and fast: a pass remembers nothing.
class WindowsFileSystem final : public FileSystem {
 public:
  FileCode Find(std::string_view pattern, std::vector<FoundFile>& found) override;
  bool Matches(std::string_view pattern) override;
  FileCode GetAttributes(std::string_view path, std::uint32_t& attributes) override;
  FileCode SetAttributes(std::string_view path, std::uint32_t attributes) override;
  FileCode GetSize(std::string_view path, std::uint64_t& size) override;
  FileCode Delete(std::string_view path) override;
  FileCode Move(std::string_view from, std::string_view to) override;
  FileCode Copy(std::string_view from, std::string_view to) override;
  FileCode CreateFolder(std::string_view path) override;
  FileCode RemoveFolder(std::string_view path) override;
  FileCode Read(std::string_view path, std::string& bytes, std::uint64_t limit) override;
  FileCode Replace(std::string_view path, std::string_view bytes) override;
  FileCode Open(std::string_view path, bool append, std::unique_ptr<OutputFile>& file) override;
  FileCode GetStamp(std::string_view path, Stamp& stamp) override;
  std::string HostPath(std::string_view path) override;
  void Touched(std::string_view path, bool exists) override;
  bool MayWrite(std::string_view folder) override;
  std::uint64_t FreeSpace(std::string_view path) override;
  Disk DiskOf(std::string_view path) override;
  FileCode Flush(std::string_view path) override;

 private:
  void BeginPass() override {}
  void EndPass() override {}

  FileCode FindAll(WindowsPath& path, std::vector<FoundFile>& found);
  FileCode LocateTarget(std::string_view path, Target& target);

  void FollowMove(const std::wstring& from, const std::wstring& to, bool folder);

  std::unordered_set<std::wstring> unflushed_;  // files written since the last Flush
};

/// Attributes of what `path` names; the code says why there are none.
FileCode Look(const WindowsPath& path, DWORD& attributes) {
  FileCode code = path.text.code;
  if (code == FileCode::Ok) attributes = AttributesOf(path.Call(), code);
  if (code != FileCode::Ok) return code == FileCode::NotADirectory ? FileCode::PathNotFound : code;
  return path.text.closed && !Holds(attributes, kFolder) ? FileCode::InvalidName : FileCode::Ok;
}

bool IsLink(const std::wstring& path, DWORD attributes) {
  FoundFile file;
  return Holds(attributes, FILE_ATTRIBUTE_REPARSE_POINT) &&
         (Inspect(path, file) != FileCode::Ok || file.link);
}

/// In upper case, by UTF-16 code units: so the platform's own disks list, but not all others.
void Sort(std::vector<FoundFile>& files) {
  std::vector<std::pair<std::string, FoundFile>> sorted;
  sorted.reserve(files.size());
  for (auto& file : files) sorted.emplace_back(UpperCase(file.name), std::move(file));
  std::stable_sort(sorted.begin(), sorted.end(), [](const auto& a, const auto& b) {
    if (a.second.dots() != b.second.dots()) return a.second.dots();
    return a.first == b.first ? a.second.name < b.second.name : ComesBefore(a.first, b.first);
  });
  std::transform(sorted.begin(), sorted.end(), files.begin(),
                 [](auto& item) { return std::move(item.second); });
}

/// The platform's own wildcards also look at short names: "*.htm" would find a.html.
FileCode WindowsFileSystem::FindAll(WindowsPath& path, std::vector<FoundFile>& found) {
  Wildcard wildcard(path.text.names.back());
  const FileCode code = ListFolder(path.Call(false), [&](FoundFile&& file) {
    if (wildcard.Matches(UpperCase(file.name))) found.push_back(std::move(file));
    return true;
  });
  if (code != FileCode::Ok) {
    found.clear();
    return code;
  }
  Sort(found);
  return found.empty() ? FileCode::FileNotFound : FileCode::Ok;
}

FileCode WindowsFileSystem::Find(std::string_view pattern, std::vector<FoundFile>& found) {
  Idle();
  found.clear();
  WindowsPath path = TakeApart(pattern, true);
  if (!path.Named()) return path.text.code;
  if (path.text.wildcard) return FindAll(path, found);
  DWORD attributes = 0;
  if (const FileCode code = Look(path, attributes); code != FileCode::Ok) return code;
  if (path.text.closed || path.text.names.empty()) return FileCode::FileNotFound;
  const FileCode code = Inspect(path.Call(), found.emplace_back());
  if (code != FileCode::Ok) found.clear();
  return code;
}

bool WindowsFileSystem::Matches(std::string_view pattern) {
  const WindowsPath path = TakeApart(pattern, true);
  std::vector<FoundFile> found;
  if (!path.Named() || !path.text.wildcard) return Find(pattern, found) == FileCode::Ok;
  Idle();
  Wildcard wildcard(path.text.names.back());
  bool matches = false;
  const FileCode code = ListFolder(path.Call(false), [&](FoundFile&& file) {
    matches = wildcard.Matches(UpperCase(file.name));
    return !matches;
  });
  return code == FileCode::Ok && matches;
}

FileCode WindowsFileSystem::GetAttributes(std::string_view path, std::uint32_t& attributes) {
  Idle();
  DWORD found = 0;
  const FileCode code = Look(TakeApart(path), found);
  if (code == FileCode::Ok)
    attributes = WithoutVainMarks(found) & (kReadOnly | kHidden | kSystem | kFolder | kArchive);
  return code;
}

FileCode WindowsFileSystem::SetAttributes(std::string_view path, std::uint32_t attributes) {
  Idle();
  const WindowsPath named = TakeApart(path);
  DWORD old = 0;
  if (const FileCode code = Look(named, old); code != FileCode::Ok) return code;
  const std::wstring call = named.Call();
  if (IsLink(call, old)) return FileCode::Ok;
  const DWORD wanted = attributes & (kReadOnly | kHidden | kSystem | kArchive);
  const DWORD set = wanted == 0 ? DWORD{FILE_ATTRIBUTE_NORMAL} : wanted;
  return Patiently(call, [&] { return ::SetFileAttributesW(call.c_str(), set) != 0; }) ? FileCode::Ok
                                                                                       : LastCode();
}

FileCode WindowsFileSystem::GetSize(std::string_view path, std::uint64_t& size) {
  Stamp stamp;
  DWORD attributes = 0;
  if (const FileCode code = GetStamp(path, stamp); code != FileCode::Ok) return code;
  if (Look(TakeApart(path), attributes) == FileCode::Ok && Holds(attributes, kFolder))
    return FileCode::AccessDenied;
  size = stamp.size;
  return FileCode::Ok;
}

FileCode WindowsFileSystem::GetStamp(std::string_view path, Stamp& stamp) {
  Idle();
  const WindowsPath named = TakeApart(path);
  DWORD attributes = 0;
  if (const FileCode code = Look(named, attributes); code != FileCode::Ok) return code;
  BY_HANDLE_FILE_INFORMATION facts;
  FILE_BASIC_INFO times;
  if (const FileCode code = GetFacts(named.Call(), facts, times); code != FileCode::Ok) return code;
  stamp.size = std::uint64_t{facts.nFileSizeHigh} << 32 | facts.nFileSizeLow;
  stamp.inode = std::uint64_t{facts.nFileIndexHigh} << 32 | facts.nFileIndexLow;
  stamp.modified = SinceEpoch(times.LastWriteTime.QuadPart);
  stamp.changed = SinceEpoch(times.ChangeTime.QuadPart);
  return FileCode::Ok;
}

FileCode WindowsFileSystem::Delete(std::string_view path) {
  Idle();
  const WindowsPath named = TakeApart(path);
  DWORD attributes = 0;
  if (const FileCode code = Look(named, attributes); code != FileCode::Ok) return code;
  if (Holds(attributes, kFolder | kReadOnly)) return FileCode::AccessDenied;
  const std::wstring call = named.Call();
  return Patiently(call, [&] { return ::DeleteFileW(call.c_str()) != 0; }) ? FileCode::Ok : LastCode();
}

FileCode WindowsFileSystem::Move(std::string_view from, std::string_view to) {
  Idle();
  const WindowsPath source = TakeApart(from), target = TakeApart(to);
  DWORD attributes = 0;
  if (const FileCode code = Look(source, attributes); code != FileCode::Ok) return code;
  if (!target.Named()) return target.text.code;
  if (!Creatable(target.Name())) return FileCode::InvalidName;
  const std::wstring old = source.Call(), renamed = target.Call();
  const bool folder = Holds(attributes, kFolder);
  const FileCode code = MoveNamed(old, renamed, folder, [this] { Idle(); });
  if (code == FileCode::Ok) FollowMove(old, renamed, folder);
  return code;
}

/// What a link in the end leads to.
FileCode FollowLink(std::wstring& path) {
  const Handle file(OpenExisting(path, FILE_READ_ATTRIBUTES));
  if (!file.IsOpen()) return LastCode();
  std::wstring real(::GetFinalPathNameByHandleW(file.Get(), nullptr, 0, 0), L'\0');
  real.resize(::GetFinalPathNameByHandleW(file.Get(), real.data(), static_cast<DWORD>(real.size()), 0));
  if (real.empty()) return LastCode();
  path = real;
  return FileCode::Ok;
}

/// Refuses what can't be written. A link is followed; one that leads nowhere is left alone.
FileCode WindowsFileSystem::LocateTarget(std::string_view path, Target& target) {
  const WindowsPath named = TakeApart(path);
  FileCode code = Look(named, target.attributes);
  if (code != FileCode::Ok && code != FileCode::FileNotFound) return code;
  if (!Creatable(named.Name()))
    return named.text.names.empty() ? FileCode::AccessDenied : FileCode::InvalidName;
  target.path = named.Call();
  if (code == FileCode::FileNotFound) return named.text.closed ? FileCode::InvalidName : FileCode::Ok;
  if (!Holds(target.attributes, kFolder) && IsLink(target.path, target.attributes)) {
    if (code = FollowLink(target.path); code != FileCode::Ok) return code;
    target.attributes = AttributesOf(target.path, code);
  }
  return Holds(target.attributes, kFolder | kReadOnly) ? FileCode::AccessDenied : code;
}

bool AreOneFile(const std::wstring& a, const std::wstring& b) {
  BY_HANDLE_FILE_INFORMATION one, other;
  FILE_BASIC_INFO times;
  if (GetFacts(a, one, times) != FileCode::Ok || GetFacts(b, other, times) != FileCode::Ok) return false;
  return one.dwVolumeSerialNumber == other.dwVolumeSerialNumber &&
         one.nFileIndexHigh == other.nFileIndexHigh && one.nFileIndexLow == other.nFileIndexLow;
}

FileCode WindowsFileSystem::Copy(std::string_view from, std::string_view to) {
  Idle();
  const WindowsPath source = TakeApart(from);
  DWORD attributes = 0;
  if (const FileCode code = Look(source, attributes); code != FileCode::Ok) return code;
  Target target;
  if (const FileCode code = LocateTarget(to, target); code != FileCode::Ok) return code;
  if (Holds(attributes, kFolder)) return FileCode::AccessDenied;
  const std::wstring path = source.Call();
  if (target.Replaces() && AreOneFile(path, target.path)) return FileCode::SharingViolation;
  PartFile part(target.path);
  FileCode code = CopyBytes(path, part.Name(), [this] { Idle(); });
  if (code == FileCode::Ok) code = part.Publish();
  if (code == FileCode::Ok) unflushed_.insert(target.path);
  return code;
}

FileCode WindowsFileSystem::CreateFolder(std::string_view path) {
  Idle();
  const WindowsPath named = TakeApart(path);
  DWORD attributes = 0;
  const FileCode code = Look(named, attributes);
  if (code == FileCode::Ok) return FileCode::AlreadyExists;
  if (code != FileCode::FileNotFound) return code;
  if (!Creatable(named.Name())) return FileCode::InvalidName;
  const std::wstring folder = named.Call();
  return Patiently(folder, [&] { return ::CreateDirectoryW(folder.c_str(), nullptr) != 0; }) ? FileCode::Ok
                                                                                             : LastCode();
}

FileCode WindowsFileSystem::RemoveFolder(std::string_view path) {
  Idle();
  const WindowsPath named = TakeApart(path);
  DWORD attributes = 0;
  if (const FileCode code = Look(named, attributes); code != FileCode::Ok) return code;
  if (!Holds(attributes, kFolder)) return FileCode::NotADirectory;
  return RemoveEmptyFolder(named.Call());
}

FileCode WindowsFileSystem::Read(std::string_view path, std::string& bytes, std::uint64_t limit) {
  constexpr std::size_t kMostAtOnce = std::size_t{1} << 30;
  Idle();
  const WindowsPath named = TakeApart(path);
  DWORD attributes = 0;
  if (const FileCode code = Look(named, attributes); code != FileCode::Ok) return code;
  if (Holds(attributes, kFolder)) return FileCode::AccessDenied;
  const Handle file(OpenExisting(named.Call(), GENERIC_READ));
  LARGE_INTEGER size;
  if (!file.IsOpen() || ::GetFileSizeEx(file.Get(), &size) == 0) return LastCode();
  bytes.resize(static_cast<std::size_t>(std::min(limit, static_cast<std::uint64_t>(size.QuadPart))));
  std::size_t filled = 0;
  for (DWORD count = 1; filled < bytes.size() && count > 0; filled += count) {
    const auto wanted = static_cast<DWORD>(std::min(bytes.size() - filled, kMostAtOnce));
    if (::ReadFile(file.Get(), bytes.data() + filled, wanted, &count, nullptr) == 0) return LastCode();
  }
  bytes.resize(filled);
  return FileCode::Ok;
}

FileCode WindowsFileSystem::Replace(std::string_view path, std::string_view bytes) {
  Idle();
  Target target;
  if (const FileCode code = LocateTarget(path, target); code != FileCode::Ok) return code;
  PartFile part(target.path);
  const DWORD attributes = target.Replaces() ? target.attributes : DWORD{FILE_ATTRIBUTE_NORMAL};
  Handle file(OpenPatiently(part.Name(), GENERIC_WRITE, 0, CREATE_NEW,
                            attributes & (FILE_ATTRIBUTE_NORMAL | kHidden | kSystem | kArchive)));
  if (!file.IsOpen()) return LastCode();
  if (const FileCode code = WriteAll(file.Get(), bytes); code != FileCode::Ok) return code;
  if (!file.Close()) return LastCode();
  unflushed_.insert(target.path);
  return part.Publish(true);
}

FileCode WindowsFileSystem::Open(std::string_view path, bool append, std::unique_ptr<OutputFile>& file) {
  constexpr DWORD kShareAll = FILE_SHARE_READ | FILE_SHARE_WRITE | FILE_SHARE_DELETE;
  Idle();
  file.reset();
  Target target;
  if (const FileCode code = LocateTarget(path, target); code != FileCode::Ok) return code;
  const HANDLE handle = OpenPatiently(target.path, append ? FILE_APPEND_DATA : GENERIC_WRITE, kShareAll,
                                      OPEN_ALWAYS, FILE_ATTRIBUTE_NORMAL);
  if (handle == INVALID_HANDLE_VALUE) return LastCode();
  file = std::make_unique<WindowsOutputFile>(handle);
  unflushed_.insert(target.path);
  // Emptied when it is open: hidden files are refused to whom makes them anew.
  return append || ::SetEndOfFile(handle) != 0 ? FileCode::Ok : LastCode();
}

std::string WindowsFileSystem::HostPath(std::string_view path) {
  WindowsPath named = TakeApart(path);
  if (!named.Named()) return {};
  // An existing name as the disk spells it: copies are named after it.
  FoundFile found;
  if (!named.text.names.empty() && Inspect(named.Call(), found) == FileCode::Ok)
    named.text.names.back() = found.name;
  return Narrow(named.Plain());
}

/// Rights tell less than trying: some guards of the platform stop the making of files itself. What is made
/// goes with its handle, whatever becomes of the program.
bool WindowsFileSystem::MayWrite(std::string_view folder) {
  Idle();
  WindowsPath named = TakeApart(folder);
  if (!named.Named() || !Handle(OpenExisting(named.Call(), FILE_ADD_FILE | FILE_ADD_SUBDIRECTORY)).IsOpen())
    return false;
  named.text.names.push_back("quillon-" + std::to_string(::GetCurrentProcessId()) + std::string(kPartMark));
  return Handle(OpenPatiently(named.Call(), GENERIC_WRITE | DELETE, FILE_SHARE_DELETE, CREATE_NEW,
                              FILE_ATTRIBUTE_TEMPORARY | FILE_FLAG_DELETE_ON_CLOSE))
      .IsOpen();
}

std::uint64_t WindowsFileSystem::FreeSpace(std::string_view path) {
  Idle();
  WindowsPath named = TakeApart(path);
  if (!named.Named()) return 0;
  for (;;) {
    ULARGE_INTEGER free;
    if (::GetDiskFreeSpaceExW(named.Call().c_str(), &free, nullptr, nullptr) != 0) return free.QuadPart;
    if (named.text.names.empty()) return 0;
    named.text.names.pop_back();
  }
}

WindowsFileSystem::Disk WindowsFileSystem::DiskOf(std::string_view path) {
  Idle();
  WindowsPath named = TakeApart(path);
  if (!named.Named()) return {};
  for (;;) {
    ULARGE_INTEGER free, whole;
    if (::GetDiskFreeSpaceExW(named.Call().c_str(), &free, &whole, nullptr) != 0) {
      std::wstring volume(named.Call().size() + MAX_PATH, L'\0');
      if (::GetVolumePathNameW(named.Call().c_str(), volume.data(), static_cast<DWORD>(volume.size())) == 0)
        return {};
      volume.resize(volume.find(L'\0'));
      return {UpperCase(Narrow(volume)), whole.QuadPart};
    }
    if (named.text.names.empty()) return {};
    named.text.names.pop_back();
  }
}

void WindowsFileSystem::Touched(std::string_view path, bool exists) {
  const WindowsPath named = TakeApart(path);
  if (exists && named.Named()) unflushed_.insert(named.Call());
}

/// What waits to be flushed goes with its file or folder.
void WindowsFileSystem::FollowMove(const std::wstring& from, const std::wstring& to, bool folder) {
  if (!folder) {
    unflushed_.erase(from);
    unflushed_.insert(to);
    return;
  }
  std::unordered_set<std::wstring> moved;
  for (const auto& path : unflushed_) {
    const bool below = path.starts_with(from) && (path.size() == from.size() || path[from.size()] == L'\\');
    moved.insert(below ? to + path.substr(from.size()) : path);
  }
  unflushed_ = std::move(moved);
}

/// A whole disk is flushed for an administrator only, so each file is. The device of a disk is waited for
/// once, with the last of its files.
FileCode WindowsFileSystem::Flush(std::string_view) {
  constexpr std::size_t kDriveLength = 7;  // of "\\?\C:\"
  FileCode result = FileCode::Ok;
  std::map<std::wstring, std::wstring> lastOfDisk;
  for (const auto& path : unflushed_) {
    Idle();
    const Handle file(OpenToFlush(path));
    if (!file.IsOpen()) continue;  // gone since
    if (!FlushFile(file.Get(), false)) result = LastCode();
    lastOfDisk[path.substr(0, kDriveLength)] = path;
  }
  for (const auto& [disk, path] : lastOfDisk) {
    const Handle file(OpenToFlush(path));
    if (file.IsOpen() && !FlushFile(file.Get(), true)) result = LastCode();
  }
  unflushed_.clear();
  return result;
}

}  // namespace

std::unique_ptr<FileSystem> MakeHostFileSystem() { return std::make_unique<WindowsFileSystem>(); }

}  // namespace quillon
