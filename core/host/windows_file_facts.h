// What the platform tells of one file.
#pragma once

#include <windows.h>

#include <functional>
#include <string>
#include <utility>

#include "core/host/FileSystem.h"

namespace quillon {

/// An open file, closed by the destructor.
class Handle {
 public:
  explicit Handle(HANDLE handle = INVALID_HANDLE_VALUE) : handle_(handle) {}
  ~Handle() { Close(); }
  Handle(const Handle&) = delete;
  Handle& operator=(const Handle&) = delete;

  HANDLE Get() const { return handle_; }
  bool IsOpen() const { return handle_ != INVALID_HANDLE_VALUE; }
  /// False when the system has an error to tell only now.
  bool Close() {
    const HANDLE handle = std::exchange(handle_, INVALID_HANDLE_VALUE);
    return handle == INVALID_HANDLE_VALUE || ::CloseHandle(handle) != 0;
  }

 private:
  HANDLE handle_;
};

/// Whether what has these attributes, and `tag` when it is a reparse point, stands for something elsewhere. A
/// placeholder of a file in some cloud and a compressed file are reparse points, too, but files.
bool IsLink(DWORD attributes, DWORD tag);

/// The attributes less the read-only mark of a folder: that keeps nobody from changing what is in it.
DWORD WithoutVainMarks(DWORD attributes);

/// Attributes and kind of what stands at `path`; the name is as the disk spells it.
FileCode Inspect(const std::wstring& path, FoundFile& file);

/// The same for all names in a folder, "." and ".." included, in the platform's order; `each` says whether to
/// go on.
FileCode ListFolder(const std::wstring& folder, const std::function<bool(FoundFile&&)>& each);

/// The attributes; INVALID_FILE_ATTRIBUTES when nothing is there, and `code` says why.
DWORD AttributesOf(const std::wstring& path, FileCode& code);
inline bool Holds(DWORD attributes, DWORD bit) {
  return attributes != INVALID_FILE_ATTRIBUTES && (attributes & bit) != 0;
}

/// The platform's opening of a file, while another program holds it again and again.
HANDLE OpenPatiently(const std::wstring& path, DWORD access, DWORD share, DWORD how, DWORD flags);

/// Follows links. `access` 0 asks only about the file. Waits while another program holds the file.
HANDLE OpenExisting(const std::wstring& path, DWORD access);

/// Identity and state of what stands at `path`; follows links.
FileCode GetFacts(const std::wstring& path, BY_HANDLE_FILE_INFORMATION& facts, FILE_BASIC_INFO& times);

/// Nanoseconds since 1970.
std::int64_t SinceEpoch(std::int64_t fileTime);
FILETIME FileTimeOf(std::int64_t secondsSinceEpoch);

}  // namespace quillon
