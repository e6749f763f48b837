// The target platform's file calls, by its texts (backslashes, no case) and its error codes.
#pragma once

#include <cstddef>
#include <cstdint>
#include <functional>
#include <memory>
#include <string>
#include <string_view>
#include <utility>
#include <vector>

namespace quillon {

/// Results of file calls: the target platform's own codes, as far as the system tells them apart.
enum class FileCode {
  Ok = 0,
  FileNotFound = 2,
  PathNotFound = 3,
  AccessDenied = 5,
  SharingViolation = 32,
  Failed = 31,  // a device fault: nothing better is known
  FileExists = 80,
  DiskFull = 112,
  InvalidName = 123,
  DirectoryNotEmpty = 145,
  AlreadyExists = 183,
  NotADirectory = 267,
};

/// For reading a whole file, however large.
inline constexpr std::uint64_t kNoLimit = ~std::uint64_t{0};

/// Attribute bits.
inline constexpr std::uint32_t kReadOnly = 1, kHidden = 2, kSystem = 4, kFolder = 16, kArchive = 32;

/// The end of the name that a file has while it is written; a process that was ended leaves such files.
inline constexpr std::string_view kPartMark = ".part~";

/// One name of a folder's listing.
struct FoundFile {
  std::string name;              // as it is spelled on the disk, without a path; with stand-ins for letters
                                 // that no text can tell
  std::uint32_t attributes = 0;  // attribute bits
  bool link = false;             // stands for something elsewhere: never followed by what deletes
  bool special = false;          // neither file nor folder: a pipe, a device, a link that leads nowhere
  std::uint64_t size = 0;        // bytes
  std::int64_t modified = 0;     // nanoseconds since 1970

  bool folder() const { return (attributes & kFolder) != 0; }
  bool dots() const { return name == "." || name == ".."; }
};

/// A file that is being written; the destructor closes it.
class OutputFile {
 public:
  virtual ~OutputFile() = default;
  /// Hands `bytes` to the platform at once, so that they outlive the process.
  virtual FileCode Write(std::string_view bytes) = 0;
};

/// The file calls. Paths are the system's texts: absolute, with backslashes, without regard to case. One
/// thread uses an object at a time.
class FileSystem {
 public:
  virtual ~FileSystem() = default;

  /// The names that match the last part of `pattern` (wildcards * and ?), in the platform's order: "." and
  /// ".." first where they match, then by upper-cased name. FileNotFound when nothing matches, PathNotFound
  /// without the folder.
  virtual FileCode Find(std::string_view pattern, std::vector<FoundFile>& found) = 0;

  /// Whether Find would find anything; does not look at more than it needs.
  virtual bool Matches(std::string_view pattern) {
    std::vector<FoundFile> found;
    return Find(pattern, found) == FileCode::Ok;
  }

  /// FileNotFound or PathNotFound when nothing is there.
  virtual FileCode GetAttributes(std::string_view path, std::uint32_t& attributes) = 0;
  /// Of a file or folder the read-only mark; a link has none and is left as it is.
  virtual FileCode SetAttributes(std::string_view path, std::uint32_t attributes) = 0;

  /// Bytes of a file.
  virtual FileCode GetSize(std::string_view path, std::uint64_t& size) = 0;

  /// Deletes one file, or a link to one; a read-only one is refused with AccessDenied, a wildcard with
  /// InvalidName.
  virtual FileCode Delete(std::string_view path) = 0;
  /// Renames a file or folder; a name that is taken is refused with AlreadyExists.
  virtual FileCode Move(std::string_view from, std::string_view to) = 0;
  /// What is to be copied, and under which name; both are paths of files.
  struct CopyOrder {
    std::string from, to;
  };
  /// Hears of one of many, on the caller's thread; `index` counts from 0 in the order in which they were
  /// given.
  using HearsDone = std::function<void(std::size_t index, FileCode code)>;

  /// Copies a file with its time and read-only mark. An existing target is replaced; a read-only one is
  /// refused.
  virtual FileCode Copy(std::string_view from, std::string_view to) = 0;
  /// Copies each as Copy does, as many at once as suits the host; `done` hears of each, in order. None starts
  /// long before those in front of it.
  virtual void CopyMany(const std::vector<CopyOrder>& orders, const HearsDone& done);
  /// Deletes each, likewise.
  virtual void DeleteMany(const std::vector<std::string>& paths, const HearsDone& done);
  /// One level only.
  virtual FileCode CreateFolder(std::string_view path) = 0;
  /// Removes an empty folder, or a link to one.
  virtual FileCode RemoveFolder(std::string_view path) = 0;

  /// The whole file, or its first `limit` bytes.
  virtual FileCode Read(std::string_view path, std::string& bytes, std::uint64_t limit) = 0;
  /// Replaces the whole file in one step: a reader, or a crash, meets the old bytes or the new ones. A
  /// read-only file is refused.
  virtual FileCode Replace(std::string_view path, std::string_view bytes) = 0;
  /// Opens for writing; the file is emptied, or kept and added to when `append` is set.
  virtual FileCode Open(std::string_view path, bool append, std::unique_ptr<OutputFile>& file) = 0;

  /// Identity of a file's present state, for caches: size, times and place. PathNotFound as GetAttributes has
  /// it.
  struct Stamp {
    std::uint64_t size = 0, inode = 0;
    std::int64_t modified = 0, changed = 0;  // nanoseconds since 1970
    bool operator==(const Stamp&) const = default;
  };
  virtual FileCode GetStamp(std::string_view path, Stamp& stamp) = 0;

  /// The host's name of `path`, existing or to be made, for libraries that open files themselves. A name that
  /// is new gets the spelling of the text. Empty when the text names nothing on any disk of this host. Never
  /// idles: it may be asked while a window is painted.
  virtual std::string HostPath(std::string_view path) = 0;
  /// Says that a library has made or removed the file at `path`.
  virtual void Touched(std::string_view path, bool exists) = 0;

  /// Whether names in the folder may be made and removed. Leaves nothing behind.
  virtual bool MayWrite(std::string_view folder) = 0;
  /// Bytes that a user may still write to the disk that holds `path`'s folder.
  virtual std::uint64_t FreeSpace(std::string_view path) = 0;
  /// The disk that holds `path`, or its folder while it is missing.
  struct Disk {
    std::string name;        // equal for equal disks; empty when there is none
    std::uint64_t size = 0;  // bytes
  };
  virtual Disk DiskOf(std::string_view path) = 0;

  /// What was written to the disk that holds `path`, by this object or by a library that told Touched, is on
  /// it when the call returns, names included: a power cut takes none of it back. Costs as long as the disk
  /// takes, so once a step, not once a file.
  virtual FileCode Flush(std::string_view path) = 0;

  /// While one lives, folders are listed once and remembered, so that a pass over thousands of files is
  /// linear. For passes during which no other program is expected to change the same folders.
  class Pass {
   public:
    explicit Pass(FileSystem& files) : files_(files) { files_.BeginPass(); }
    ~Pass() { files_.EndPass(); }
    Pass(const Pass&) = delete;
    Pass& operator=(const Pass&) = delete;

   private:
    FileSystem& files_;
  };

  /// `idle` is called between file calls and within long ones: time for other things.
  void SetIdle(std::function<void()> idle) { idle_ = std::move(idle); }

 protected:
  void Idle() const {
    if (idle_) idle_();
  }

 private:
  std::function<void()> idle_;

  virtual void BeginPass() = 0;
  virtual void EndPass() = 0;
};

inline void FileSystem::CopyMany(const std::vector<CopyOrder>& orders, const HearsDone& done) {
  for (std::size_t i = 0; i < orders.size(); ++i) done(i, Copy(orders[i].from, orders[i].to));
}

inline void FileSystem::DeleteMany(const std::vector<std::string>& paths, const HearsDone& done) {
  for (std::size_t i = 0; i < paths.size(); ++i) done(i, Delete(paths[i]));
}

/// The file calls of this machine.
std::unique_ptr<FileSystem> MakeHostFileSystem();

/// The target platform's wildcard rule on one name: "*.*" means all, a "?" at the end of a part may stand for
/// nothing.
bool MatchesPattern(std::string_view name, std::string_view pattern);

}  // namespace quillon
