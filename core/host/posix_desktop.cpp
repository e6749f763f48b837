#include <fcntl.h>
#include <spawn.h>
#include <sys/file.h>
#include <sys/stat.h>
#include <sys/wait.h>
#include <unistd.h>

#include <array>
#include <cerrno>
#include <cstdlib>
#include <filesystem>
#include <fstream>
#include <optional>
#include <system_error>
#include <thread>
#include <vector>

#include "core/host/Desktop.h"

extern char** environ;

namespace quillon {
namespace {

namespace fs = std::filesystem;

std::string Environment(const char* name) {
  const char* value = std::getenv(name);
  return value ? value : "";
}

fs::path Home() { return Environment("HOME").empty() ? fs::path("/") : fs::path(Environment("HOME")); }

fs::path XdgFolder(const char* variable, const char* below) {
  const std::string value = Environment(variable);
  return value.empty() ? Home() / below : fs::path(value);
}

/// What user-dirs.dirs says of the desktop: XDG_DESKTOP_DIR="$HOME/Desktop".
std::optional<fs::path> ConfiguredDesktop() {
  if (const std::string value = Environment("XDG_DESKTOP_DIR"); !value.empty()) return value;
  std::ifstream file(XdgFolder("XDG_CONFIG_HOME", ".config") / "user-dirs.dirs");
  constexpr std::string_view kKey = "XDG_DESKTOP_DIR=\"", kHome = "$HOME";
  for (std::string line; std::getline(file, line);) {
    if (!line.starts_with(kKey)) continue;
    line.erase(0, kKey.size());
    line.resize(std::min(line.find('"'), line.size()));
    if (line.starts_with(kHome)) return Home().string() + line.substr(kHome.size());
    return line;
  }
  return std::nullopt;
}

DesktopAnswer Known(bool answer) {
  std::promise<bool> known;
  known.set_value(answer);
  return known.get_future();
}

/// Its status is the answer. Whoever ends first, the program or the child, nobody is left behind.
DesktopAnswer AnswerOf(pid_t child) {
  std::promise<bool> promise;
  DesktopAnswer answer = promise.get_future();
  try {
    std::thread([child, promise = std::move(promise)]() mutable {
      int status = 0;
      while (::waitpid(child, &status, 0) < 0 && errno == EINTR) continue;
      promise.set_value(WIFEXITED(status) && WEXITSTATUS(status) == 0);
    }).detach();
  } catch (const std::system_error&) {  // it is not waited for
    return Known(true);
  }
  return answer;
}

/// In a session of its own, so that it outlives the program's terminal. It has nothing to read.
DesktopAnswer StartDetached(std::vector<std::string> words) {
  std::vector<char*> arguments;
  for (auto& word : words) arguments.push_back(word.data());
  arguments.push_back(nullptr);
  posix_spawnattr_t attributes;
  ::posix_spawnattr_init(&attributes);
  ::posix_spawnattr_setflags(&attributes, POSIX_SPAWN_SETSID);
  posix_spawn_file_actions_t actions;
  ::posix_spawn_file_actions_init(&actions);
  ::posix_spawn_file_actions_addopen(&actions, STDIN_FILENO, "/dev/null", O_RDONLY, 0);
  pid_t child = 0;
  const int failed = ::posix_spawnp(&child, arguments[0], &actions, &attributes, arguments.data(), environ);
  ::posix_spawn_file_actions_destroy(&actions);
  ::posix_spawnattr_destroy(&attributes);
  return failed != 0 ? Known(false) : AnswerOf(child);
}

bool IsPipe(int handle) {
  struct stat facts = {};
  return ::fstat(handle, &facts) == 0 && S_ISFIFO(facts.st_mode);
}

int OpenPipe(const std::string& path, int mode) {
  const int handle = ::open(path.c_str(), mode | O_NONBLOCK | O_NOFOLLOW | O_CLOEXEC);
  if (handle < 0 || IsPipe(handle)) return handle;
  ::close(handle);
  return -1;
}

std::string PipeOfCalls(const std::string& lockPath) { return lockPath + ".calls"; }

/// A named pipe: without a reader nobody can write to it, so one that is left behind does no harm.
class CallPipe : public StartCalls {
 public:
  CallPipe(std::string path, int handle) : path_(std::move(path)), handle_(handle) {}
  ~CallPipe() override {
    ::unlink(path_.c_str());
    ::close(handle_);
  }

  bool Any() override {
    bool any = false;
    for (std::array<char, 64> calls{}; ::read(handle_, calls.data(), calls.size()) > 0;) any = true;
    return any;
  }

 private:
  const std::string path_;
  const int handle_;
};

class FileLock : public InstanceLock {
 public:
  explicit FileLock(int handle) : handle_(handle) {}
  ~FileLock() override { ::close(handle_); }

 private:
  int handle_;
};

}  // namespace

std::string GetSpecialFolder(SpecialFolder folder) {
  if (folder == SpecialFolder::CommonPrograms) return {};  // packages lay their own entries
  const fs::path path = folder == SpecialFolder::Desktop
                            ? ConfiguredDesktop().value_or(Home() / "Desktop")
                            : XdgFolder("XDG_DATA_HOME", ".local/share") / "applications";
  std::error_code failed;
  fs::create_directories(path, failed);
  return fs::is_directory(path, failed) ? path.string() : std::string();
}

DesktopAnswer OpenWithDesktop(const std::string& hostPath) { return StartDetached({"xdg-open", hostPath}); }

DesktopAnswer ExploreWithDesktop(const std::string& hostPath) { return OpenWithDesktop(hostPath); }

DesktopAnswer RunCommand(const std::string& command, const std::string& hostFolder) {
  return StartDetached({"/bin/sh", "-c", "cd \"$1\" && " + command, "sh", hostFolder});
}

std::string ExecutableFolder() {
  std::error_code failed;
  return fs::read_symlink("/proc/self/exe", failed).parent_path().string();
}

std::string AbsoluteHostPath(const std::string& path) {
  if (path.empty()) return {};
  std::error_code failed;
  std::string normal = fs::absolute(path, failed).lexically_normal().string();
  while (normal.size() > 1 && normal.ends_with('/')) normal.pop_back();
  return normal;
}

std::unique_ptr<InstanceLock> TakeInstanceLock(const std::string& hostPath) {
  int handle = ::open(hostPath.c_str(), O_RDWR | O_CREAT | O_CLOEXEC, 0666);
  // Another user's file can still be locked.
  if (handle < 0) handle = ::open(hostPath.c_str(), O_RDONLY | O_CLOEXEC);
  // Where no lock can be held, as in a read-only folder, there is no second instance to fear either.
  if (handle < 0) return std::make_unique<FileLock>(handle);
  if (::flock(handle, LOCK_EX | LOCK_NB) == 0 || errno != EWOULDBLOCK)
    return std::make_unique<FileLock>(handle);
  ::close(handle);
  return nullptr;
}

std::unique_ptr<StartCalls> HearStartCalls(const std::string& hostPath) {
  const std::string pipe = PipeOfCalls(hostPath);
  ::mkfifo(pipe.c_str(), 0600);
  const int handle = OpenPipe(pipe, O_RDONLY);
  return handle < 0 ? nullptr : std::make_unique<CallPipe>(pipe, handle);
}

bool CallRunningInstance(const std::string& hostPath) {
  const int handle = OpenPipe(PipeOfCalls(hostPath), O_WRONLY);
  if (handle < 0) return false;
  const bool called = ::write(handle, "!", 1) == 1;
  ::close(handle);
  return called;
}

}  // namespace quillon
