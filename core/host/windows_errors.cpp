#include "core/host/windows_errors.h"

namespace quillon {
namespace {

constexpr DWORD kDiskQuotaExceeded = 1295;  // not every compiler's headers know it

}  // namespace

FileCode CodeOf(DWORD error) {
  switch (error) {
    case ERROR_SUCCESS: return FileCode::Ok;
    case ERROR_FILE_NOT_FOUND:
    case ERROR_NO_MORE_FILES: return FileCode::FileNotFound;
    case ERROR_PATH_NOT_FOUND:
    case ERROR_INVALID_DRIVE:
    case ERROR_NOT_READY:
    case ERROR_BAD_NETPATH:
    case ERROR_BAD_NET_NAME: return FileCode::PathNotFound;
    case ERROR_ACCESS_DENIED:
    case ERROR_WRITE_PROTECT:
    case ERROR_NETWORK_ACCESS_DENIED:
    case ERROR_DELETE_PENDING:
    case ERROR_PRIVILEGE_NOT_HELD:
    case ERROR_CANT_ACCESS_FILE: return FileCode::AccessDenied;
    case ERROR_SHARING_VIOLATION:
    case ERROR_LOCK_VIOLATION:
    case ERROR_USER_MAPPED_FILE:
    case ERROR_BUSY: return FileCode::SharingViolation;
    case ERROR_HANDLE_DISK_FULL:
    case ERROR_DISK_FULL:
    case kDiskQuotaExceeded: return FileCode::DiskFull;
    case ERROR_INVALID_NAME:
    case ERROR_BAD_PATHNAME:
    case ERROR_FILENAME_EXCED_RANGE: return FileCode::InvalidName;
    case ERROR_FILE_EXISTS: return FileCode::FileExists;
    case ERROR_ALREADY_EXISTS: return FileCode::AlreadyExists;
    case ERROR_DIR_NOT_EMPTY: return FileCode::DirectoryNotEmpty;
    case ERROR_DIRECTORY: return FileCode::NotADirectory;
    default: return FileCode::Failed;
  }
}

FileCode LastCode() {
  const FileCode code = CodeOf(::GetLastError());
  return code == FileCode::Ok ? FileCode::Failed : code;
}

}  // namespace quillon
