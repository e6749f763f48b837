#include <dirent.h>
#include <fcntl.h>
#include <sys/stat.h>
#include <sys/statvfs.h>
#include <unistd.h>

#include <algorithm>
#include <cerrno>
#include <climits>
#include <cstdio>
#include <cstdlib>
#include <future>
#include <iterator>
#include <unordered_set>
#include <utility>

#include "core/host/FileSystem.h"
#include "core/host/Wildcards.h"
#include "core/host/Workers.h"
#include "core/host/posix_errors.h"
#include "core/host/posix_file_acts.h"
#include "core/host/posix_file_facts.h"
#include "core/host/posix_folder_tree.h"
#include "core/host/posix_new_file.h"
#include "core/host/posix_paths.h"
#include "core/text/Text.h"

namespace quillon {
namespace {

class PosixOutputFile final : public OutputFile {
 public:
  explicit PosixOutputFile(int number) : file_(number) {}
  FileCode Write(std::string_view bytes) override { return CodeOf(WriteAll(file_.Number(), bytes), {}); }

 private:
  Descriptor file_;
};

constexpr std::size_t kManyNames = 2000;
constexpr std::size_t kTogether = 256;  // files that are copied or deleted before the caller hears of them

/// Whether the name under which a copy is written first could be that of another copy.
bool SharesPartName(std::string_view upperPath) {
  const std::string_view name = upperPath.substr(LastSeparator(upperPath) + 1);
  return name.size() > NAME_MAX - kPartMark.size() || name.ends_with(".PART~");
}

class PosixFileSystem final : public FileSystem {
 public:
  FileCode Find(std::string_view pattern, std::vector<FoundFile>& found) override;
  bool Matches(std::string_view pattern) override;
  FileCode GetAttributes(std::string_view path, std::uint32_t& attributes) override;
  FileCode SetAttributes(std::string_view path, std::uint32_t attributes) override;
  FileCode GetSize(std::string_view path, std::uint64_t& size) override;
  FileCode Delete(std::string_view path) override;
  FileCode Move(std::string_view from, std::string_view to) override;
  FileCode Copy(std::string_view from, std::string_view to) override;
  void CopyMany(const std::vector<CopyOrder>& orders, const HearsDone& done) override;
  void DeleteMany(const std::vector<std::string>& paths, const HearsDone& done) override;
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
  std::string ExistingPart(std::string_view path);
  void BeginPass() override;
  void EndPass() override;

  void StartCall();
  Place Look(std::string_view path);
  Place Locate(std::string_view path);
  FileCode FindOne(std::string_view path, std::vector<FoundFile>& found);
  FileCode LocateTarget(std::string_view path, Target& target);
  struct CopyTask {
    std::string source;  // a host path
    Target target;
    FileCode code = FileCode::Ok;
  };
  CopyTask Prepare(const CopyOrder& order);
  void Finish(const CopyTask& task);
  FileCode Respell(const Place& place);
  FileCode MoveAcross(const Place& source, const Place& place);

  FolderTree tree_;
  int passes_ = 0;
};

void PosixFileSystem::BeginPass() {
  if (passes_++ == 0) tree_.Clear();
}

void PosixFileSystem::EndPass() {
  if (--passes_ == 0) tree_.Clear();
}

/// Between passes others may have changed anything.
void PosixFileSystem::StartCall() {
  Idle();
  if (passes_ == 0) tree_.Clear();
}

Place PosixFileSystem::Locate(std::string_view path) {
  return passes_ > 0 ? tree_.LocateAgain(path) : tree_.Locate(TakeApart(path));
}

/// For calls that change no names: between passes one question is enough for a path that is spelled exactly.
Place PosixFileSystem::Look(std::string_view path) {
  if (passes_ > 0) return tree_.LocateAgain(path);
  const PathText text = TakeApart(path);
  if (text.code != FileCode::Ok || text.closed || text.names.empty()) return tree_.Locate(text);
  Place place;
  struct stat found;
  place.host = ExactHostPath(text);
  place.name = text.names.back();
  return ::lstat(place.host.c_str(), &found) == 0 ? place : tree_.Locate(text);
}

FileCode PosixFileSystem::FindOne(std::string_view path, std::vector<FoundFile>& found) {
  const Place place = Look(path);
  if (!place.Exists()) return place.code;
  if (place.closed || place.name.empty()) return FileCode::FileNotFound;
  FoundFile file;
  file.name = WithStandIns(place.name);
  if (const int error = Inspect(place.host, file); error != 0) return CodeOf(error, place.host);
  found.push_back(std::move(file));
  return FileCode::Ok;
}

FileCode PosixFileSystem::Find(std::string_view pattern, std::vector<FoundFile>& found) {
  StartCall();
  found.clear();
  PathText text = TakeApart(pattern, true);
  if (!text.wildcard) return FindOne(pattern, found);
  if (text.closed) return FileCode::FileNotFound;
  Wildcard wildcard(text.names.back());
  text.names.pop_back();
  std::string host;
  FileCode code;
  const auto folder = tree_.List(text, host, code);
  if (folder == nullptr) return code;

  // The root has no dots.
  if (!host.empty())
    for (const char* dots : {".", ".."})
      if (wildcard.Matches(dots)) found.push_back({.name = dots, .attributes = kFolder});
  const auto names = MatchingNames(*folder, wildcard);
  const auto inspect = [&](std::size_t from, std::size_t to, std::vector<FoundFile>& files) {
    for (std::size_t i = from; i < to; ++i) {
      FoundFile file;
      file.name = WithStandIns(names[i]);
      if (Inspect(host + "/" + std::string(names[i]), file) == 0) files.push_back(std::move(file));
    }
  };
  // Half of a big folder's names are asked about beside the others.
  const std::size_t half = names.size() < kManyNames ? names.size() : names.size() / 2;
  std::vector<FoundFile> others;
  auto beside =
      std::async(half < names.size() ? std::launch::async | std::launch::deferred : std::launch::deferred,
                 [&] { inspect(half, names.size(), others); });
  inspect(0, half, found);
  beside.get();
  std::move(others.begin(), others.end(), std::back_inserter(found));
  return found.empty() ? FileCode::FileNotFound : FileCode::Ok;
}

bool PosixFileSystem::Matches(std::string_view pattern) {
  PathText text = TakeApart(pattern, true);
  std::vector<FoundFile> found;
  if (!text.wildcard || text.closed || text.names.empty()) return Find(pattern, found) == FileCode::Ok;
  StartCall();
  Wildcard wildcard(text.names.back());
  text.names.pop_back();
  std::string host;
  FileCode code;
  const auto folder = tree_.List(text, host, code);
  if (folder == nullptr) return false;
  if (!host.empty() && (wildcard.Matches(".") || wildcard.Matches(".."))) return true;
  FoundFile file;
  return std::any_of(folder->children.begin(), folder->children.end(), [&](const auto& child) {
    return wildcard.Matches(child.first) && Inspect(host + "/" + child.second.name, file) == 0;
  });
}

FileCode PosixFileSystem::GetAttributes(std::string_view path, std::uint32_t& attributes) {
  StartCall();
  const Place place = Look(path);
  if (!place.Exists()) return place.code;
  FoundFile file;
  if (const int error = Inspect(place.host, file); error != 0) return CodeOf(error, place.host);
  attributes = file.attributes;
  return FileCode::Ok;
}

FileCode PosixFileSystem::SetAttributes(std::string_view path, std::uint32_t attributes) {
  StartCall();
  const Place place = Look(path);
  if (!place.Exists()) return place.code;
  return CodeOf(SetReadOnly(place.host, (attributes & kReadOnly) != 0), place.host);
}

FileCode PosixFileSystem::GetSize(std::string_view path, std::uint64_t& size) {
  StartCall();
  const Place place = Look(path);
  if (!place.Exists()) return place.code;
  struct stat file;
  if (const int error = Status(place.host, file); error != 0) return CodeOf(error, place.host);
  if (S_ISDIR(file.st_mode)) return FileCode::AccessDenied;
  size = static_cast<std::uint64_t>(file.st_size);
  return FileCode::Ok;
}

FileCode PosixFileSystem::GetStamp(std::string_view path, Stamp& stamp) {
  constexpr std::int64_t kNanoseconds = 1'000'000'000;
  StartCall();
  const Place place = Look(path);
  if (!place.Exists()) return place.code;
  struct stat file;
  if (const int error = Status(place.host, file); error != 0) return CodeOf(error, place.host);
  stamp.size = static_cast<std::uint64_t>(file.st_size);
  stamp.inode = file.st_ino;
  stamp.modified = ModifiedOf(file);
  stamp.changed = file.st_ctim.tv_sec * kNanoseconds + file.st_ctim.tv_nsec;
  return FileCode::Ok;
}

FileCode PosixFileSystem::Delete(std::string_view path) {
  StartCall();
  const Place place = Locate(path);
  if (!place.Exists()) return place.code;
  const FileCode code = DeleteAt(place.host);
  if (code == FileCode::Ok) tree_.Remove(place);
  return code;
}

void PosixFileSystem::DeleteMany(const std::vector<std::string>& paths, const HearsDone& done) {
  std::vector<Place> places;
  for (std::size_t begin = 0; begin < paths.size(); begin += places.size()) {
    StartCall();
    places.clear();
    for (std::size_t i = begin; i < paths.size() && places.size() < kTogether; ++i)
      places.push_back(Locate(paths[i]));
    OnAllProcessors(
        places.size(),
        [&](std::size_t i) {
          if (places[i].Exists()) places[i].code = DeleteAt(places[i].host);
        },
        [this](std::size_t) { Idle(); });
    for (const auto& place : places)
      if (place.Exists()) tree_.Remove(place);
    for (std::size_t i = 0; i < places.size(); ++i) done(begin + i, places[i].code);
  }
}

FileCode PosixFileSystem::Move(std::string_view from, std::string_view to) {
  StartCall();
  const Place source = Locate(from);
  if (!source.Exists()) return source.code;
  const Place place = Locate(to);
  if (place.Exists())
    return place.folder == source.folder && place.name == source.name ? Respell(place)
                                                                      : FileCode::AlreadyExists;
  if (place.code != FileCode::FileNotFound) return place.code;
  if (!Creatable(place.name)) return FileCode::InvalidName;
  const int error = RenameToFree(source.host, place.host);
  if (error == EXDEV) return MoveAcross(source, place);
  if (error == EINVAL) return FileCode::SharingViolation;  // a folder into itself
  if (error != 0) return CodeOf(error, place.host);
  tree_.Remove(source);
  tree_.Add(place, source.type);
  return FileCode::Ok;
}

/// The name stays, its spelling may change.
FileCode PosixFileSystem::Respell(const Place& place) {
  Place respelled = place;
  respelled.name = WithoutStandIns(DropTail(place.wanted));
  if (place.wanted == place.name || respelled.name == place.name || place.folder == nullptr)
    return FileCode::Ok;
  respelled.host.replace(place.host.size() - place.name.size(), std::string::npos, respelled.name);
  if (::rename(place.host.c_str(), respelled.host.c_str()) != 0) return CodeOf(errno, place.host);
  tree_.Remove(place);
  tree_.Add(respelled, place.type);
  return FileCode::Ok;
}

FileCode PosixFileSystem::MoveAcross(const Place& source, const Place& place) {
  FoundFile file;
  if (Inspect(source.host, file) != 0 || file.folder()) return FileCode::Failed;
  const CopyTask task{
      source.host, {place, place.host}, CopyInto(source.host, {place, place.host}, [this] { Idle(); })};
  if (task.code != FileCode::Ok) return task.code;
  Finish(task);
  if (::unlink(source.host.c_str()) != 0) return CodeOf(errno, source.host);
  tree_.Remove(source);
  return FileCode::Ok;
}

/// Refuses what can't be written. A link is followed; one that leads nowhere is left alone.
FileCode PosixFileSystem::LocateTarget(std::string_view path, Target& target) {
  target.place = Locate(path);
  target.host = target.place.host;
  const FileCode code = target.place.code;
  if (code != FileCode::Ok && code != FileCode::FileNotFound) return code;
  if (!Creatable(target.place.name))
    return target.place.folder ? FileCode::InvalidName : FileCode::AccessDenied;
  if (!target.Replaces()) return target.place.closed ? FileCode::InvalidName : FileCode::Ok;

  if (::lstat(target.host.c_str(), &target.old) != 0) return CodeOf(errno, target.host);
  if (S_ISLNK(target.old.st_mode)) {
    char real[PATH_MAX];
    if (::realpath(target.place.host.c_str(), real) == nullptr || ::stat(real, &target.old) != 0)
      return CodeOf(errno, target.host);
    target.host = real;
  }
  return S_ISREG(target.old.st_mode) && !IsReadOnly(target.old) ? FileCode::Ok : FileCode::AccessDenied;
}

FileCode PosixFileSystem::Copy(std::string_view from, std::string_view to) {
  CopyTask task = Prepare({std::string(from), std::string(to)});
  if (task.code == FileCode::Ok) task.code = CopyInto(task.source, task.target, [this] { Idle(); });
  Finish(task);
  return task.code;
}

PosixFileSystem::CopyTask PosixFileSystem::Prepare(const CopyOrder& order) {
  StartCall();
  CopyTask task;
  const Place source = Locate(order.from);
  task.source = source.host;
  task.code = source.Exists() ? LocateTarget(order.to, task.target) : source.code;
  return task;
}

void PosixFileSystem::Finish(const CopyTask& task) {
  if (task.code == FileCode::Ok && !task.target.Replaces()) tree_.Add(task.target.place, DT_REG);
}

void PosixFileSystem::CopyMany(const std::vector<CopyOrder>& orders, const HearsDone& done) {
  std::vector<CopyTask> tasks;
  for (std::size_t begin = 0; begin < orders.size(); begin += tasks.size()) {
    tasks.clear();
    // One that has to do with what another reads or makes comes after it.
    std::unordered_set<std::string> read, made;
    for (std::size_t i = begin; i < orders.size() && tasks.size() < kTogether; ++i) {
      const std::string from = UpperCase(orders[i].from), to = UpperCase(orders[i].to);
      if (made.contains(from) || made.contains(to) || read.contains(to)) break;
      const bool alone = SharesPartName(to);
      if (alone && !tasks.empty()) break;
      read.insert(from);
      made.insert(to);
      tasks.push_back(Prepare(orders[i]));
      if (alone) break;
    }
    // A single one is copied on this thread.
    std::function<void()> idle = [] {};
    if (tasks.size() == 1) idle = [this] { Idle(); };
    OnAllProcessors(
        tasks.size(),
        [&](std::size_t i) {
          if (tasks[i].code == FileCode::Ok) tasks[i].code = CopyInto(tasks[i].source, tasks[i].target, idle);
        },
        [this](std::size_t) { Idle(); });
    for (const auto& task : tasks) Finish(task);
    for (std::size_t i = 0; i < tasks.size(); ++i) done(begin + i, tasks[i].code);
  }
}

FileCode PosixFileSystem::CreateFolder(std::string_view path) {
  StartCall();
  const Place place = Locate(path);
  if (place.Exists()) return FileCode::AlreadyExists;
  if (place.code != FileCode::FileNotFound) return place.code;
  if (!Creatable(place.name)) return FileCode::InvalidName;
  if (::mkdir(place.host.c_str(), 0777) != 0) return CodeOf(errno, place.host);
  tree_.Add(place, DT_DIR);
  return FileCode::Ok;
}

FileCode PosixFileSystem::RemoveFolder(std::string_view path) {
  StartCall();
  const Place place = Locate(path);
  if (!place.Exists()) return place.code;
  FoundFile file;
  if (const int error = Inspect(place.host, file); error != 0) return CodeOf(error, place.host);
  if (!file.folder()) return FileCode::NotADirectory;
  const int result = file.link ? ::unlink(place.host.c_str()) : ::rmdir(place.host.c_str());
  if (result != 0) return CodeOf(errno, place.host);
  tree_.Remove(place);
  return FileCode::Ok;
}

FileCode PosixFileSystem::Read(std::string_view path, std::string& bytes, std::uint64_t limit) {
  StartCall();
  const Place place = Look(path);
  if (!place.Exists()) return place.code;
  const Descriptor in(::open(place.host.c_str(), O_RDONLY | O_CLOEXEC | O_NONBLOCK));
  struct stat file;
  if (!in.IsOpen() || ::fstat(in.Number(), &file) != 0) return CodeOf(errno, place.host);
  if (!S_ISREG(file.st_mode)) return FileCode::AccessDenied;
  const auto size = std::min(limit, static_cast<std::uint64_t>(file.st_size));
  return CodeOf(ReadAll(in.Number(), size, bytes), place.host);
}

FileCode PosixFileSystem::Replace(std::string_view path, std::string_view bytes) {
  StartCall();
  Target target;
  if (const FileCode code = LocateTarget(path, target); code != FileCode::Ok) return code;
  NewFile out(target.host, target.Replaces(), 0666);
  int error = out.Error();
  if (error == 0) error = WriteAll(out.Number(), bytes);
  if (error == 0 && target.Replaces() && ::fchmod(out.Number(), target.old.st_mode & 07777) != 0)
    error = errno;
  if (error == 0) error = out.Publish();
  if (error == 0 && !target.Replaces()) tree_.Add(target.place, DT_REG);
  return CodeOf(error, target.host);
}

FileCode PosixFileSystem::Open(std::string_view path, bool append, std::unique_ptr<OutputFile>& file) {
  StartCall();
  file.reset();
  Target target;
  if (const FileCode code = LocateTarget(path, target); code != FileCode::Ok) return code;
  const int number =
      ::open(target.host.c_str(), O_WRONLY | O_CREAT | O_CLOEXEC | (append ? O_APPEND : O_TRUNC), 0666);
  if (number < 0) return CodeOf(errno, target.host);
  file = std::make_unique<PosixOutputFile>(number);
  if (!target.Replaces()) tree_.Add(target.place, DT_REG);
  return FileCode::Ok;
}

std::string PosixFileSystem::HostPath(std::string_view path) {
  if (passes_ == 0) tree_.Clear();
  return Look(path).host;
}

void PosixFileSystem::Touched(std::string_view path, bool exists) {
  if (passes_ > 0) tree_.Touched(path, exists);
}

bool PosixFileSystem::MayWrite(std::string_view folder) {
  return ::access(HostPath(folder).c_str(), W_OK | X_OK) == 0;
}

/// The host's name of `path`, or of the nearest folder above that is there; empty without one.
std::string PosixFileSystem::ExistingPart(std::string_view path) {
  std::string host = HostPath(path);
  struct stat found;
  while (!host.empty() && ::stat(host.c_str(), &found) != 0) host.resize(host.rfind('/'));
  return host;
}

std::uint64_t PosixFileSystem::FreeSpace(std::string_view path) {
  const std::string host = ExistingPart(path);
  struct statvfs disk;
  if (host.empty() || ::statvfs(host.c_str(), &disk) != 0) return 0;
  return std::uint64_t{disk.f_bavail} * disk.f_frsize;
}

PosixFileSystem::Disk PosixFileSystem::DiskOf(std::string_view path) {
  const std::string host = ExistingPart(path);
  struct stat found;
  struct statvfs disk;
  if (host.empty() || ::stat(host.c_str(), &found) != 0 || ::statvfs(host.c_str(), &disk) != 0) return {};
  return {std::to_string(found.st_dev), std::uint64_t{disk.f_blocks} * disk.f_frsize};
}

FileCode PosixFileSystem::Flush(std::string_view path) {
  Idle();
  const std::string host = ExistingPart(path);
  const Descriptor place(::open(host.c_str(), O_RDONLY | O_CLOEXEC | O_NONBLOCK));
  if (!place.IsOpen()) return host.empty() ? FileCode::PathNotFound : CodeOf(errno, host);
  // Some network disks have no such call: they write when a file is closed.
  if (::syncfs(place.Number()) != 0 && errno != EINVAL && errno != ENOSYS && errno != ENOTSUP)
    return CodeOf(errno, host);
  return FileCode::Ok;
}

}  // namespace

std::unique_ptr<FileSystem> MakeHostFileSystem() { return std::make_unique<PosixFileSystem>(); }

}  // namespace quillon
