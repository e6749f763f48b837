#include "core/host/posix_file_acts.h"

#include <fcntl.h>
#include <unistd.h>

#include <cerrno>

#include "core/host/posix_errors.h"
#include "core/host/posix_file_facts.h"
#include "core/host/posix_new_file.h"

namespace quillon {

FileCode CopyInto(const std::string& source, const Target& target, const std::function<void()>& idle) {
  // Must not wait for someone at the other end of a pipe.
  const Descriptor in(::open(source.c_str(), O_RDONLY | O_CLOEXEC | O_NONBLOCK));
  struct stat file;
  if (!in.IsOpen() || ::fstat(in.Number(), &file) != 0) return CodeOf(errno, source);
  if (!S_ISREG(file.st_mode)) return FileCode::AccessDenied;
  if (target.Replaces() && file.st_dev == target.old.st_dev && file.st_ino == target.old.st_ino)
    return FileCode::SharingViolation;

  NewFile out(target.host, target.Replaces(), file.st_mode & 0777);
  const timespec times[2] = {{0, UTIME_OMIT}, file.st_mtim};
  int error = out.Error();
  if (error == 0)
    error = CopyBytes(in.Number(), out.Number(), static_cast<std::uint64_t>(file.st_size), idle);
  if (error == 0 && ::futimens(out.Number(), times) != 0) error = errno;
  if (error == 0) error = out.Publish();
  return CodeOf(error, target.host);
}

FileCode DeleteAt(const std::string& host) {
  FoundFile file;
  if (const int error = Inspect(host, file); error != 0) return CodeOf(error, host);
  if ((file.attributes & (kFolder | kReadOnly)) != 0) return FileCode::AccessDenied;
  return ::unlink(host.c_str()) == 0 ? FileCode::Ok : CodeOf(errno, host);
}

}  // namespace quillon
