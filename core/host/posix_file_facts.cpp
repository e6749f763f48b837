#include "core/host/posix_file_facts.h"

#include <fcntl.h>

#include <cerrno>
#include <cstdio>

namespace quillon {

int Inspect(const std::string& host, FoundFile& file) {
  struct stat own, target;
  if (::lstat(host.c_str(), &own) != 0) return errno;
  file.link = S_ISLNK(own.st_mode);
  const bool leads = file.link && ::stat(host.c_str(), &target) == 0;
  const bool toFolder = leads && S_ISDIR(target.st_mode);
  const struct stat& meant = leads ? target : own;
  const mode_t mode = meant.st_mode;
  file.size = static_cast<std::uint64_t>(meant.st_size);
  file.modified = ModifiedOf(meant);
  file.special = !S_ISREG(mode) && !S_ISDIR(mode);
  file.attributes = S_ISDIR(own.st_mode) || toFolder ? kFolder : kArchive;
  if (!file.link && IsReadOnly(own)) file.attributes |= kReadOnly;
  return 0;
}

int Status(const std::string& host, struct stat& found) {
  return ::stat(host.c_str(), &found) == 0 || ::lstat(host.c_str(), &found) == 0 ? 0 : errno;
}

int SetReadOnly(const std::string& host, bool readOnly) {
  constexpr mode_t kAnyWrite = S_IWUSR | S_IWGRP | S_IWOTH;
  struct stat file;
  if (::lstat(host.c_str(), &file) != 0) return errno;
  const mode_t mode = readOnly ? file.st_mode & ~kAnyWrite : file.st_mode | S_IWUSR;
  if (S_ISLNK(file.st_mode) || mode == file.st_mode) return 0;
  return ::chmod(host.c_str(), mode & 07777) == 0 ? 0 : errno;
}

int RenameToFree(const std::string& from, const std::string& to) {
  if (::renameat2(AT_FDCWD, from.c_str(), AT_FDCWD, to.c_str(), RENAME_NOREPLACE) == 0) return 0;
  if (errno != EINVAL && errno != ENOSYS) return errno;
  // A disk that can't look and rename in one step, or a folder on its way into itself.
  struct stat taken;
  if (::lstat(to.c_str(), &taken) == 0) return EEXIST;
  return ::rename(from.c_str(), to.c_str()) == 0 ? 0 : errno;
}

}  // namespace quillon
