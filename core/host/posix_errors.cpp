#include "core/host/posix_errors.h"

#include <sys/stat.h>

#include <cerrno>

namespace quillon {
namespace {

bool HasFolder(const std::string& host) {
  const auto slash = host.rfind('/');
  struct stat found;
  return slash == 0 || (slash != host.npos && ::stat(host.substr(0, slash).c_str(), &found) == 0);
}

}  // namespace

FileCode CodeOf(int error, const std::string& host) {
  switch (error) {
    case 0: return FileCode::Ok;
    case ENOENT: return HasFolder(host) ? FileCode::FileNotFound : FileCode::PathNotFound;
    case ENOTDIR: return FileCode::PathNotFound;
    case EACCES:
    case EPERM:
    case EROFS:
    case EISDIR: return FileCode::AccessDenied;
    case ENOSPC:
    case EDQUOT: return FileCode::DiskFull;
    case ENAMETOOLONG:
    case EINVAL: return FileCode::InvalidName;
    case EEXIST: return FileCode::AlreadyExists;
    case ENOTEMPTY: return FileCode::DirectoryNotEmpty;
    case ETXTBSY:
    case EBUSY: return FileCode::SharingViolation;
    default: return FileCode::Failed;
  }
}

}  // namespace quillon
