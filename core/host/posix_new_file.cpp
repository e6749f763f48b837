#include "core/host/posix_new_file.h"

#include <fcntl.h>
#include <linux/fs.h>
#include <sys/ioctl.h>
#include <unistd.h>

#include <algorithm>
#include <array>
#include <cerrno>
#include <climits>
#include <cstddef>
#include <utility>

#include "core/host/FileSystem.h"

namespace quillon {
namespace {

constexpr std::size_t kBufferSize = 65536;
constexpr std::uint64_t kBetweenIdles = 8u << 20;  // bytes that a disk copies without being felt

std::string HostFolder(const std::string& host) {
  return host.substr(0, std::max<std::size_t>(host.rfind('/'), 1));
}

/// The longest names have no room for the mark.
std::string PartName(const std::string& host) {
  const std::size_t start = host.rfind('/') + 1;
  const std::size_t kept = std::min<std::size_t>(host.size() - start, NAME_MAX - kPartMark.size());
  return host.substr(0, start + kept).append(kPartMark);
}

std::string OpenFileName(int file) { return "/proc/self/fd/" + std::to_string(file); }

/// Without it an unnamed file can't get a name.
bool HasOpenFileNames() {
  static const bool has = ::access("/proc/self/fd", X_OK) == 0;
  return has;
}

/// Lets the host copy, by sharing blocks or inside its kernel. What it leaves, `size`, is the caller's.
void CopyInside(int source, int target, std::uint64_t& size, const std::function<void()>& idle) {
  if (::ioctl(target, FICLONE, source) == 0) {
    size = 0;
    return;
  }
  while (size > 0) {
    const auto count = ::copy_file_range(source, nullptr, target, nullptr, std::min(size, kBetweenIdles), 0);
    if (count == 0 || (count < 0 && errno != EINTR)) return;
    if (count > 0) size -= static_cast<std::uint64_t>(count);
    if (size > 0) idle();
  }
}

}  // namespace

void Descriptor::Reset(int number) {
  Close();
  number_ = number;
}

int Descriptor::Close() {
  const int number = std::exchange(number_, -1);
  return number < 0 || ::close(number) == 0 ? 0 : errno;
}

int WriteAll(int file, std::string_view bytes) {
  while (!bytes.empty()) {
    const auto count = ::write(file, bytes.data(), bytes.size());
    if (count < 0 && errno != EINTR) return errno;
    if (count > 0) bytes.remove_prefix(static_cast<std::size_t>(count));
  }
  return 0;
}

int ReadAll(int file, std::size_t size, std::string& bytes) {
  bytes.resize(size);
  std::size_t filled = 0;
  while (filled < size) {
    const auto count = ::read(file, bytes.data() + filled, size - filled);
    if (count < 0 && errno != EINTR) return errno;
    if (count == 0) break;
    if (count > 0) filled += static_cast<std::size_t>(count);
  }
  bytes.resize(filled);
  return 0;
}

int CopyBytes(int source, int target, std::uint64_t size, const std::function<void()>& idle) {
  // For small files two plain calls are the cheapest; sharing blocks would have to wait for fresh ones to be
  // written.
  if (size > kBufferSize) CopyInside(source, target, size, idle);
  std::array<char, kBufferSize> buffer;
  while (size > 0) {
    const auto count = ::read(source, buffer.data(), std::min<std::uint64_t>(size, buffer.size()));
    if (count == 0) return 0;
    if (count < 0 && errno != EINTR) return errno;
    if (count < 0) continue;
    const auto length = static_cast<std::size_t>(count);
    if (const int error = WriteAll(target, {buffer.data(), length}); error != 0) return error;
    size -= length;
    if (size > 0) idle();
  }
  return 0;
}

NewFile::NewFile(std::string host, bool replace, mode_t mode) : host_(std::move(host)) {
  if (replace || !OpenUnnamed(mode)) OpenPart(mode);
}

NewFile::~NewFile() {
  if (!part_.empty()) ::unlink(part_.c_str());
}

bool NewFile::OpenUnnamed(mode_t mode) {
  if (!HasOpenFileNames()) return false;
  file_.Reset(::open(HostFolder(host_).c_str(), O_TMPFILE | O_WRONLY | O_CLOEXEC, mode));
  return file_.IsOpen();
}

void NewFile::OpenPart(mode_t mode) {
  constexpr int kFlags = O_WRONLY | O_CREAT | O_EXCL | O_CLOEXEC;
  part_ = PartName(host_);
  int file = ::open(part_.c_str(), kFlags, mode);
  // A rest of a run that was ended.
  if (file < 0 && errno == EEXIST && ::unlink(part_.c_str()) == 0) file = ::open(part_.c_str(), kFlags, mode);
  if (file < 0) {
    error_ = errno;
    part_.clear();
  }
  file_.Reset(file);
}

int NewFile::Publish() {
  if (part_.empty()) {
    // The short way is for new kernels, and for the superuser.
    if (::linkat(file_.Number(), "", AT_FDCWD, host_.c_str(), AT_EMPTY_PATH) != 0 &&
        ::linkat(AT_FDCWD, OpenFileName(file_.Number()).c_str(), AT_FDCWD, host_.c_str(),
                 AT_SYMLINK_FOLLOW) != 0)
      return errno;
    return file_.Close();
  }
  if (const int error = file_.Close(); error != 0) return error;
  if (::rename(part_.c_str(), host_.c_str()) != 0) return errno;
  part_.clear();
  return 0;
}

}  // namespace quillon
