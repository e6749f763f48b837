#include <fcntl.h>
#include <spawn.h>
#include <sys/file.h>
#include <sys/wait.h>
#include <unistd.h>

#include <array>
#include <cerrno>
#include <cstdlib>
#include <filesystem>
#include <fstream>
#include <optional>

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

/// Starts a program and forgets it: a child in between lets the program be adopted by the system.
void StartDetached(const char* program, const std::string& argument) {
  const pid_t child = ::fork();
  if (child == 0) {
    std::string name = program, text = argument;
    std::array<char*, 3> arguments = {name.data(), text.data(), nullptr};
    pid_t ignored = 0;
    ::setsid();
    ::posix_spawnp(&ignored, program, nullptr, nullptr, arguments.data(), environ);
    ::_exit(0);
  }
  if (child > 0) ::waitpid(child, nullptr, 0);
}

class FileLock : public InstanceLock {
 public:
  explicit FileLock(int handle) : handle_(handle) {}
  ~FileLock() override { ::close(handle_); }

 private:
  int handle_;
};

}  // namespace

std::string GetSpecialFolder(SpecialFolder folder) {
  const fs::path path = folder == SpecialFolder::Desktop
                            ? ConfiguredDesktop().value_or(Home() / "Desktop")
                            : XdgFolder("XDG_DATA_HOME", ".local/share") / "applications";
  std::error_code failed;
  fs::create_directories(path, failed);
  return fs::is_directory(path, failed) ? path.string() : std::string();
}

void OpenWithDesktop(const std::string& hostPath) { StartDetached("xdg-open", hostPath); }

void ExploreWithDesktop(const std::string& hostPath) { StartDetached("xdg-open", hostPath); }

std::string ShortcutContent(const std::string& hostFolder) {
  return "[Desktop Entry]\nType=Link\nName=Downloaded MSTS routes\nIcon=folder-download\nURL=file://" +
         hostFolder + "\n";
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

}  // namespace quillon
