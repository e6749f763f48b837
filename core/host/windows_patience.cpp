#include "core/host/windows_patience.h"

#include <algorithm>
#include <mutex>

namespace quillon {
namespace {

// Milliseconds. Who holds many files would make each of them last.
constexpr DWORD kLongestWait = 2000, kWaitAfterOneInVain = 100, kMemory = 5000;
constexpr DWORD kFirstPause = 5, kLongestPause = 100;

/// Among what is refused only this is held by somebody: the file can be opened, but not for one alone.
bool IsOpenElsewhere(const std::wstring& path) {
  const HANDLE alone = ::CreateFileW(path.c_str(), DELETE, 0, nullptr, OPEN_EXISTING,
                                     FILE_FLAG_BACKUP_SEMANTICS | FILE_FLAG_OPEN_REPARSE_POINT, nullptr);
  if (alone == INVALID_HANDLE_VALUE) return ::GetLastError() == ERROR_SHARING_VIOLATION;
  ::CloseHandle(alone);
  return false;
}

bool IsHeld(const std::wstring& path, DWORD error) {
  switch (error) {
    case ERROR_SHARING_VIOLATION:
    case ERROR_LOCK_VIOLATION:
    case ERROR_USER_MAPPED_FILE: return true;
    // The platform has the same word for a file that goes, one that is in use, and a right that is missing.
    case ERROR_ACCESS_DENIED: return IsDeletePending(error) || IsOpenElsewhere(path);
    default: return IsDeletePending(error);
  }
}

/// What was waited for in vain last.
class InVain {
 public:
  /// How long `path` is worth waiting for, in milliseconds.
  DWORD WaitFor(const std::wstring& path) {
    const std::lock_guard lock(mutex_);
    if (path_.empty() || ::GetTickCount64() - since_ >= kMemory) return kLongestWait;
    return path == path_ ? 0 : kWaitAfterOneInVain;
  }
  void Remember(const std::wstring& path) {
    const std::lock_guard lock(mutex_);
    path_ = path;
    since_ = ::GetTickCount64();
  }

 private:
  std::mutex mutex_;
  std::wstring path_;
  ULONGLONG since_ = 0;
};

InVain& TheInVain() {
  static InVain inVain;
  return inVain;
}

}  // namespace

bool IsDeletePending(DWORD error) {
  using LastStatus = LONG(WINAPI*)();
  constexpr LONG kDeletePending = static_cast<LONG>(0xC0000056);
  if (error != ERROR_ACCESS_DENIED) return error == ERROR_DELETE_PENDING;
  static const auto lastStatus = reinterpret_cast<LastStatus>(
      reinterpret_cast<void*>(::GetProcAddress(::GetModuleHandleW(L"ntdll.dll"), "RtlGetLastNtStatus")));
  return lastStatus != nullptr && lastStatus() == kDeletePending;
}

bool Wait::Again(const std::wstring& path, DWORD error) {
  const bool again = IsHeld(path, error) && AgainWhileHeld(path);
  ::SetLastError(error);
  return again;
}

bool Wait::AgainWhileHeld(const std::wstring& path) {
  const ULONGLONG now = ::GetTickCount64();
  if (pause_ == 0) {
    const DWORD wait = TheInVain().WaitFor(path);
    if (wait == 0) return false;
    pause_ = kFirstPause;
    until_ = now + wait;
  }
  if (now >= until_) {
    TheInVain().Remember(path);
    return false;
  }
  ::Sleep(static_cast<DWORD>(std::min<ULONGLONG>(pause_, until_ - now)));
  pause_ = std::min(pause_ * 2, kLongestPause);
  return true;
}

}  // namespace quillon
