#include "core/host/windows_new_file.h"

#include <algorithm>
#include <array>
#include <utility>

#include "core/host/windows_errors.h"
#include "core/host/windows_file_facts.h"
#include "core/host/windows_patience.h"

namespace quillon {
namespace {

constexpr std::size_t kLongestName = 255;
constexpr DWORD kMostAtOnce = 1u << 30;  // of one call

/// The longest names have no room for the mark.
std::wstring PartName(const std::wstring& path) {
  const std::size_t start = path.rfind(L'\\') + 1;
  const std::size_t kept = std::min(path.size() - start, kLongestName - kPartMark.size());
  return path.substr(0, start + kept).append(kPartMark.begin(), kPartMark.end());
}

/// A file that is in use can't be replaced, either; the platform says that it is forbidden.
FileCode WhyNotReplaced(const std::wstring& path, FileCode told) {
  if (told != FileCode::AccessDenied) return told;
  const Handle file(OpenExisting(path, DELETE));
  return !file.IsOpen() && ::GetLastError() == ERROR_SHARING_VIOLATION ? FileCode::SharingViolation : told;
}

}  // namespace

PartFile::PartFile(std::wstring path) : path_(std::move(path)), part_(PartName(path_)) {
  if (::GetFileAttributesW(part_.c_str()) != INVALID_FILE_ATTRIBUTES) RemoveAnyFile(part_);
}

PartFile::~PartFile() {
  if (!part_.empty()) RemoveAnyFile(part_);
}

FileCode PartFile::Publish(bool flush) {
  const DWORD flags = MOVEFILE_REPLACE_EXISTING | (flush ? MOVEFILE_WRITE_THROUGH : 0);
  // Programs that look through every new file hold it for a moment.
  if (!Patiently(path_, [&] { return ::MoveFileExW(part_.c_str(), path_.c_str(), flags) != 0; }))
    return WhyNotReplaced(path_, LastCode());
  part_.clear();
  return FileCode::Ok;
}

HANDLE OpenToFlush(const std::wstring& path) {
  const HANDLE file = OpenExisting(path, GENERIC_WRITE);
  const DWORD attributes = ::GetFileAttributesW(path.c_str());
  if (file != INVALID_HANDLE_VALUE || attributes == INVALID_FILE_ATTRIBUTES ||
      !Holds(attributes, kReadOnly) || Holds(attributes, kFolder))
    return file;
  ::SetFileAttributesW(path.c_str(), attributes & ~DWORD{kReadOnly});
  const HANDLE opened = OpenExisting(path, GENERIC_WRITE);
  ::SetFileAttributesW(path.c_str(), attributes);
  return opened;
}

bool FlushFile(HANDLE file, bool wait) {
  using Flush = LONG(WINAPI*)(HANDLE, ULONG, PVOID, ULONG, PVOID);
  constexpr ULONG kNoDeviceSync = 2;
  static const auto flush = reinterpret_cast<Flush>(
      reinterpret_cast<void*>(::GetProcAddress(::GetModuleHandleW(L"ntdll.dll"), "NtFlushBuffersFileEx")));
  std::array<ULONG_PTR, 2> status = {};
  if (!wait && flush != nullptr && flush(file, kNoDeviceSync, nullptr, 0, status.data()) >= 0) return true;
  return ::FlushFileBuffers(file) != 0;
}

FileCode WriteAll(HANDLE file, std::string_view bytes) {
  while (!bytes.empty()) {
    const auto size = static_cast<DWORD>(std::min<std::size_t>(bytes.size(), kMostAtOnce));
    DWORD written = 0;
    if (::WriteFile(file, bytes.data(), size, &written, nullptr) == 0) return LastCode();
    if (written == 0) return FileCode::DiskFull;
    bytes.remove_prefix(written);
  }
  return FileCode::Ok;
}

bool RemoveAnyFile(const std::wstring& path) {
  if (::DeleteFileW(path.c_str()) != 0) return true;
  ::SetFileAttributesW(path.c_str(), FILE_ATTRIBUTE_NORMAL);
  return Patiently(path, [&] { return ::DeleteFileW(path.c_str()) != 0; });
}

}  // namespace quillon
