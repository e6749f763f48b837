// Files that appear under their names whole: bytes go to a file beside until Publish.
#pragma once

#include <windows.h>

#include <string>
#include <string_view>

#include "core/host/FileSystem.h"

namespace quillon {

/// The name that a file has until it is whole. Without Publish the destructor removes what stands there.
class PartFile {
 public:
  /// `path` is the file's name in the end. A rest of a run that was ended goes.
  explicit PartFile(std::wstring path);
  ~PartFile();
  PartFile(const PartFile&) = delete;
  PartFile& operator=(const PartFile&) = delete;

  const std::wstring& Name() const { return part_; }
  /// Gives the file its name, in place of a file that has it, in one step. `flush` waits until the name is on
  /// the disk.
  FileCode Publish(bool flush = false);

 private:
  std::wstring path_, part_;
};

/// For FlushFile; INVALID_HANDLE_VALUE when the file is gone. A read-only file gives nobody the right to
/// flush it: it is writable for that moment.
HANDLE OpenToFlush(const std::wstring& path);

/// Writes out what the platform holds back of an open file; with `wait` it returns when the device has all of
/// it and of what was flushed before. False: GetLastError tells why.
bool FlushFile(HANDLE file, bool wait);

FileCode WriteAll(HANDLE file, std::string_view bytes);

/// Takes the read-only mark off a file and deletes it.
bool RemoveAnyFile(const std::wstring& path);

}  // namespace quillon
