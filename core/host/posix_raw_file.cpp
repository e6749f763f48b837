#include <fcntl.h>
#include <sys/stat.h>
#include <unistd.h>

#include <cerrno>
#include <utility>

#include "core/host/RawFile.h"
#include "core/host/posix_errors.h"

namespace quillon {
namespace {

int OpenNew(const char* path) {
  constexpr int kFlags = O_WRONLY | O_CREAT | O_EXCL | O_NOFOLLOW | O_CLOEXEC;
  int handle = ::open(path, kFlags, 0666);
  if (handle < 0 && errno == EEXIST && ::unlink(path) == 0) handle = ::open(path, kFlags, 0666);
  return handle;
}

int Fd(std::intptr_t handle) { return static_cast<int>(handle); }

}  // namespace

RawFile::RawFile(std::string hostPath) : hostPath_(std::move(hostPath)) {
  handle_ = OpenNew(hostPath_.c_str());
  if (handle_ < 0) code_ = CodeOf(errno, hostPath_);
}

RawFile::~RawFile() {
  if (handle_ < 0) return;
  ::close(Fd(handle_));
  ::unlink(hostPath_.c_str());
}

FileCode RawFile::Write(std::string_view bytes) {
  while (code_ == FileCode::Ok && !bytes.empty()) {
    const auto count = ::write(Fd(handle_), bytes.data(), bytes.size());
    if (count >= 0)
      bytes.remove_prefix(static_cast<std::size_t>(count));
    else if (errno != EINTR)
      code_ = CodeOf(errno, hostPath_);
  }
  return code_;
}

FileCode RawFile::WriteAt(std::uint64_t offset, std::string_view bytes) {
  while (code_ == FileCode::Ok && !bytes.empty()) {
    const auto count = ::pwrite(Fd(handle_), bytes.data(), bytes.size(), static_cast<off_t>(offset));
    if (count >= 0) {
      bytes.remove_prefix(static_cast<std::size_t>(count));
      offset += static_cast<std::uint64_t>(count);
    } else if (errno != EINTR) {
      code_ = CodeOf(errno, hostPath_);
    }
  }
  return code_;
}

FileCode RawFile::Keep(std::time_t modified) {
  if (code_ != FileCode::Ok) return code_;
  if (modified > 0) {
    const timespec times[2] = {{modified, 0}, {modified, 0}};
    ::futimens(Fd(handle_), times);
  }
  if (::close(Fd(handle_)) != 0) {
    code_ = CodeOf(errno, hostPath_);
    ::unlink(hostPath_.c_str());
  }
  handle_ = -1;
  return code_;
}

RawInput::RawInput(const std::string& hostPath)
    : handle_(::open(hostPath.c_str(), O_RDONLY | O_CLOEXEC | O_NONBLOCK)) {}

RawInput::~RawInput() {
  if (IsOpen()) ::close(Fd(handle_));
}

std::uint64_t RawInput::Size() const {
  struct stat file;
  return ::fstat(Fd(handle_), &file) == 0 ? static_cast<std::uint64_t>(file.st_size) : 0;
}

bool RawInput::ReadInto(std::uint64_t offset, char* bytes, std::size_t& count) const {
  const std::size_t wanted = std::exchange(count, 0);
  while (count < wanted) {
    const auto part = ::pread(Fd(handle_), bytes + count, wanted - count, static_cast<off_t>(offset + count));
    if (part < 0 && errno != EINTR) return false;
    if (part == 0) break;
    if (part > 0) count += static_cast<std::size_t>(part);
  }
  return true;
}

}  // namespace quillon
