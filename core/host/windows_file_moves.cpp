#include "core/host/windows_file_moves.h"

#include <exception>

#include "core/host/windows_errors.h"
#include "core/host/windows_file_facts.h"
#include "core/host/windows_new_file.h"
#include "core/host/windows_patience.h"
#include "core/host/windows_text.h"

namespace quillon {
namespace {

/// No exception may pass through the platform's copying: it ends that, and goes on afterwards.
struct CopyWatch {
  const std::function<void()>& idle;
  std::exception_ptr thrown;

  static DWORD CALLBACK Turn(LARGE_INTEGER, LARGE_INTEGER, LARGE_INTEGER, LARGE_INTEGER, DWORD, DWORD, HANDLE,
                             HANDLE, LPVOID data) {
    auto& watch = *static_cast<CopyWatch*>(data);
    try {
      watch.idle();
      return PROGRESS_CONTINUE;
    } catch (...) {
      watch.thrown = std::current_exception();
      return PROGRESS_CANCEL;
    }
  }
};

/// A folder that may be moved, and is refused all the same, holds something that is open.
bool IsInUseBelow(const std::wstring& folder, const std::wstring& to) {
  return Handle(OpenExisting(folder, DELETE)).IsOpen() &&
         Handle(OpenExisting(to.substr(0, to.rfind(L'\\')), FILE_ADD_SUBDIRECTORY)).IsOpen();
}

/// To another disk. The platform's own way leaves half a file when it is cut short, and the old one when that
/// can't be deleted.
FileCode MoveAcross(const std::wstring& from, const std::wstring& to, const std::function<void()>& idle) {
  FileCode code = FileCode::Ok;
  if (AttributesOf(to, code) != INVALID_FILE_ATTRIBUTES) return FileCode::AlreadyExists;
  PartFile part(to);
  code = CopyBytes(from, part.Name(), idle);
  if (code != FileCode::Ok) return code;
  {
    const Handle copy(OpenToFlush(part.Name()));
    if (copy.IsOpen() && !FlushFile(copy.Get(), true)) return LastCode();
  }
  code = part.Publish(true);
  if (code != FileCode::Ok) return code;
  if (!RemoveAnyFile(from)) {
    code = LastCode();
    FileCode found = FileCode::Ok;
    // When somebody else has deleted it, the copy is the only one.
    if (AttributesOf(from, found) == INVALID_FILE_ATTRIBUTES) return FileCode::Ok;
    RemoveAnyFile(to);
    return code;
  }
  return FileCode::Ok;
}

/// Whether all that is left in a folder is deleted, and only still open somewhere.
bool IsEmptySoon(const std::wstring& folder) {
  constexpr DWORD kShareAll = FILE_SHARE_READ | FILE_SHARE_WRITE | FILE_SHARE_DELETE;
  constexpr DWORD kAsItself = FILE_FLAG_BACKUP_SEMANTICS | FILE_FLAG_OPEN_REPARSE_POINT;
  bool goes = true;
  const FileCode code = ListFolder(folder, [&](FoundFile&& file) {
    if (file.dots()) return true;
    const Handle open(::CreateFileW((folder + L"\\" + Widen(file.name)).c_str(), 0, kShareAll, nullptr,
                                    OPEN_EXISTING, kAsItself, nullptr));
    goes = !open.IsOpen() && IsDeletePending(::GetLastError());
    return goes;
  });
  return code == FileCode::Ok && goes;
}

}  // namespace

FileCode CopyBytes(const std::wstring& from, const std::wstring& to, const std::function<void()>& idle) {
  CopyWatch watch{idle, nullptr};
  const bool copied = Patiently(from, [&] {
    return ::CopyFileExW(from.c_str(), to.c_str(), &CopyWatch::Turn, &watch, nullptr, 0) != 0;
  });
  const FileCode code = copied ? FileCode::Ok : LastCode();
  if (watch.thrown) std::rethrow_exception(watch.thrown);
  return code;
}

FileCode MoveNamed(const std::wstring& from, const std::wstring& to, bool folder,
                   const std::function<void()>& idle) {
  DWORD error = ERROR_SUCCESS;
  const auto move = [&] {
    if (::MoveFileExW(from.c_str(), to.c_str(), 0) != 0) return true;
    error = ::GetLastError();
    const bool held = folder && error == ERROR_ACCESS_DENIED && IsInUseBelow(from, to);
    ::SetLastError(held ? ERROR_SHARING_VIOLATION : error);
    return false;
  };
  if (Patiently(from, move)) return FileCode::Ok;
  if (error == ERROR_NOT_SAME_DEVICE && !folder) return MoveAcross(from, to, idle);
  // What a folder on its way into itself is told.
  return error == ERROR_INVALID_PARAMETER ? FileCode::SharingViolation : CodeOf(error);
}

FileCode RemoveEmptyFolder(const std::wstring& folder) {
  // The mark of a folder means nothing, except here.
  const DWORD attributes = ::GetFileAttributesW(folder.c_str());
  const bool marked = Holds(attributes, kReadOnly);
  if (marked) ::SetFileAttributesW(folder.c_str(), attributes & ~DWORD{kReadOnly});
  const auto remove = [&] {
    if (::RemoveDirectoryW(folder.c_str()) != 0) return true;
    const DWORD error = ::GetLastError();
    ::SetLastError(error == ERROR_DIR_NOT_EMPTY && IsEmptySoon(folder) ? ERROR_DELETE_PENDING : error);
    return false;
  };
  if (Patiently(folder, remove)) return FileCode::Ok;
  const FileCode code = LastCode();
  if (marked) ::SetFileAttributesW(folder.c_str(), attributes);
  return code;
}

}  // namespace quillon
