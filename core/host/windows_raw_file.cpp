#include <windows.h>

#include <algorithm>
#include <utility>

#include "core/host/RawFile.h"
#include "core/host/windows_errors.h"
#include "core/host/windows_file_facts.h"
#include "core/host/windows_new_file.h"
#include "core/host/windows_paths.h"

namespace quillon {
namespace {

// A handle of the platform is a pointer; no open file has -1.
HANDLE ToHandle(std::intptr_t handle) { return reinterpret_cast<HANDLE>(handle); }
std::intptr_t ToNumber(HANDLE handle) { return reinterpret_cast<std::intptr_t>(handle); }

HANDLE OpenNew(const std::wstring& path) {
  constexpr DWORD kShared = FILE_SHARE_READ | FILE_SHARE_DELETE;
  const auto open = [&] {
    return OpenPatiently(path, GENERIC_WRITE, kShared, CREATE_NEW, FILE_ATTRIBUTE_NORMAL);
  };
  const HANDLE handle = open();
  const bool taken = handle == INVALID_HANDLE_VALUE && ::GetLastError() == ERROR_FILE_EXISTS;
  return taken && RemoveAnyFile(path) ? open() : handle;
}

/// A place in a file, for a call.
OVERLAPPED PlaceAt(std::uint64_t offset) {
  OVERLAPPED place = {};
  place.Offset = static_cast<DWORD>(offset);
  place.OffsetHigh = static_cast<DWORD>(offset >> 32);
  return place;
}

constexpr std::size_t kMostOfOneCall = std::size_t{1} << 30;  // of one call

}  // namespace

RawFile::RawFile(std::string hostPath) : hostPath_(std::move(hostPath)) {
  handle_ = ToNumber(OpenNew(CallPath(hostPath_)));
  if (handle_ < 0) code_ = LastCode();
}

RawFile::~RawFile() {
  if (handle_ < 0) return;
  ::CloseHandle(ToHandle(handle_));
  RemoveAnyFile(CallPath(hostPath_));
}

FileCode RawFile::Write(std::string_view bytes) {
  if (code_ == FileCode::Ok) code_ = WriteAll(ToHandle(handle_), bytes);
  return code_;
}

/// The platform moves the place of the next Write with it: it has to go back to the end.
FileCode RawFile::WriteAt(std::uint64_t offset, std::string_view bytes) {
  LARGE_INTEGER place;
  place.QuadPart = static_cast<LONGLONG>(offset);
  if (code_ == FileCode::Ok && ::SetFilePointerEx(ToHandle(handle_), place, nullptr, FILE_BEGIN) == 0)
    code_ = LastCode();
  Write(bytes);
  place.QuadPart = 0;
  if (code_ == FileCode::Ok && ::SetFilePointerEx(ToHandle(handle_), place, nullptr, FILE_END) == 0)
    code_ = LastCode();
  return code_;
}

FileCode RawFile::Keep(std::time_t modified) {
  if (code_ != FileCode::Ok) return code_;
  if (modified > 0) {
    const FILETIME time = FileTimeOf(modified);
    ::SetFileTime(ToHandle(handle_), nullptr, nullptr, &time);
  }
  if (::CloseHandle(ToHandle(handle_)) == 0) {
    code_ = LastCode();
    RemoveAnyFile(CallPath(hostPath_));
  }
  handle_ = -1;
  return code_;
}

RawInput::RawInput(const std::string& hostPath)
    : handle_(ToNumber(OpenExisting(CallPath(hostPath), GENERIC_READ))) {}

RawInput::~RawInput() {
  if (IsOpen()) ::CloseHandle(ToHandle(handle_));
}

std::uint64_t RawInput::Size() const {
  LARGE_INTEGER size;
  return ::GetFileSizeEx(ToHandle(handle_), &size) != 0 ? static_cast<std::uint64_t>(size.QuadPart) : 0;
}

bool RawInput::ReadInto(std::uint64_t offset, char* bytes, std::size_t& count) const {
  const std::size_t wanted = std::exchange(count, 0);
  while (count < wanted) {
    OVERLAPPED place = PlaceAt(offset + count);
    DWORD part = 0;
    if (::ReadFile(ToHandle(handle_), bytes + count,
                   static_cast<DWORD>(std::min(wanted - count, kMostOfOneCall)), &part, &place) == 0)
      return ::GetLastError() == ERROR_HANDLE_EOF;
    if (part == 0) break;
    count += part;
  }
  return true;
}

}  // namespace quillon
