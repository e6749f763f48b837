// File helpers of the system: the classic statements, which raise run-time errors, and the routines that do
// not.
#pragma once

#include <cstdint>
#include <functional>
#include <string>
#include <string_view>
#include <vector>

#include "core/Random.h"
#include "core/RunTimeError.h"
#include "core/host/FileSystem.h"

namespace quillon {

/// The classic number that stands for a failure.
ErrorNumber NumberOf(FileCode code);

/// Throws the RunTimeError that stands for `code` after an attempt to change something; nothing for Ok.
void RaiseFileError(FileCode code, std::string_view path);

/// Room to be left beside the files that are counted: for lists, folders, and what is put away.
inline constexpr std::uint64_t kRoomReserve = 4u << 20;

/// What a file of `size` bytes takes of a disk: whole blocks of 4 KB. Never overflows.
std::uint64_t RoomFor(std::uint64_t size);

/// Who sees what CopyAllFiles tells of itself, whoever called it.
class CopyMeter {
 public:
  virtual ~CopyMeter() = default;
  /// Nothing matched: `caption` belongs on the bar of frmInitProg.
  virtual void CopyFoundNothing(std::string_view caption) = 0;
  /// One more entry is done: `position` belongs on the bar of frmCleanUp.
  virtual void CopyMoved(int position) = 0;
  /// A copy of `path` that may fail in silence has failed: its user should know.
  virtual void CopyFailed(std::string_view path, FileCode code) = 0;
};

/// Paths are the system's texts. Wildcards are allowed where it says so.
class Files {
 public:
  /// All three outlive the object.
  Files(FileSystem& host, Random& random, CopyMeter& meter) : host_(host), random_(random), meter_(meter) {}

  FileSystem& Host() { return host_; }

  /// True when a file or folder matches; wildcards allowed.
  bool FileExists(std::string_view path);
  bool IsPathAFolder(std::string_view path);
  /// Acts on the first 255 characters of `path`; a failure is nobody's concern.
  void SetAttributes(std::string_view path, std::uint32_t attributes);
  /// Names of the files, not folders, that match, in directory order; none when the folder is missing.
  std::vector<std::string> ListFiles(std::string_view pattern);

  // Statements: each raises a RunTimeError that names the path when it fails.
  void MakeFolder(std::string_view path);
  void MakeFolderIfMissing(std::string_view path);
  /// Makes every missing folder on the way.
  void MakeFolders(std::string_view path);
  /// Deletes a file, or all files that match; none at all is error 53.
  void Kill(std::string_view path);
  /// SetAttributes with 32, then Kill.
  void KillReadOnly(std::string_view path);
  /// The same for whatever matches, read-only or not, if anything does: what FileExists can't find is passed
  /// over.
  void KillIfThere(std::string_view path);
  void Rename(std::string_view from, std::string_view to);
  void FileCopy(std::string_view from, std::string_view to);
  /// The same with many, several at once; `copied` hears of each, in order. The first that fails raises.
  void FileCopyMany(const std::vector<FileSystem::CopyOrder>& orders,
                    const std::function<void(std::size_t index)>& copied);
  /// The whole file, or its first `limit` bytes.
  std::string ReadAll(std::string_view path, std::uint64_t limit = kNoLimit);
  void WriteAll(std::string_view path, std::string_view bytes);
  std::uint64_t Size(std::string_view path);
  /// Raises error 61 when fewer than `bytes` are free where `path` lies.
  void RequireRoom(std::string_view path, std::uint64_t bytes);
  /// Raises error 75 when the file or folder is there and can't be changed. A folder is changed by making and
  /// removing names in it.
  void RequireWritable(std::string_view path);

  /// What was written so far to the disk that holds `path` outlives a power cut from here on.
  void Flush(std::string_view path);

  /// Copies, and does not mind a failure.
  void TryCopy(std::string_view from, std::string_view to);

  /// Whether both are files of the same size and time, or of the same bytes.
  bool AreEqual(std::string_view a, std::string_view b);

  /// Called after each file of a work on many; may be empty.
  using Each = std::function<void()>;

  /// Deletes a folder with all it holds; links in it are unlinked, not followed. 0, -1 when `folder` is no
  /// folder or no path to be trusted, or the number of the error that ended it.
  int DelTree(std::string_view folder, const Each& each = {});

  /// Copies what matches `pattern` from `source` to `destination`, both with a closing backslash, replacing
  /// what is there; copies that fail are passed over. Returns how many entries were handled, "." and ".." and
  /// folders included; `failed`, when given, gets the names of the files that did not come.
  int CopyAllFiles(std::string_view source, std::string_view destination, std::string_view pattern,
                   const Each& each = {}, std::vector<std::string>* failed = nullptr);
  /// The same with each of the `names`, which have no wildcards; several at once.
  int CopyNamedFiles(std::string_view source, std::string_view destination,
                     const std::vector<std::string>& names, std::vector<std::string>* failed = nullptr);

  /// Calls `action` with folder (closing backslash) and name of each file below `searchPath`, which ends in
  /// "*.*". Links to folders are passed over.
  using WalkAction = std::function<void(const std::string& folder, const std::string& name)>;
  void Walk(std::string_view searchPath, const WalkAction& action);
  /// The same, but links to folders are entered, save those that lead back into a folder on the way to them.
  void WalkThroughLinks(std::string_view searchPath, const WalkAction& action);

  /// Deletes what a process that was ended has left half written below `searchPath`.
  void PartSweep(std::string_view searchPath);
  /// Deletes every file below `searchPath` whose name begins with "ts-bak-" or "ostr-".
  void BackupSweep(std::string_view searchPath);

 private:
  void WalkFolder(const std::string& folder, const WalkAction& action, class FolderWay* way);
  void MoveCopyBar();
  int DelTreeOf(const std::string& folder, const Each& each);
  void RaiseAboutFile(FileCode code, std::string_view path, const char* denied = kNoPermission);
  void RaiseAboutCopy(FileCode code, std::string_view from, std::string_view to);

  FileSystem& host_;
  Random& random_;
  CopyMeter& meter_;
  int copyBar_ = 0;
};

/// Whether a file name begins with "ts-bak-" or "ostr-".
bool IsBackup(std::string_view name);

/// A list on disk that grows line by line; each line is on the disk when Add returns.
class ListFile {
 public:
  /// Empties the file, or keeps it when `append` is set. Raises RunTimeErrors, as Add does.
  ListFile(Files& files, std::string path, bool append = false);
  void Add(std::string_view line);

 private:
  std::string path_;
  std::unique_ptr<OutputFile> file_;
};

}  // namespace quillon
