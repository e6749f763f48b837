#include <pthread.h>
#include <unistd.h>

#include <array>
#include <cstdlib>
#include <map>
#include <stdexcept>
#include <system_error>

#include "core/host/ProfileFunctions.h"
#include "tests/world/Host.h"

namespace quillon {
namespace {

constexpr uid_t kNobody = 65534;

// What decides where the desktop's folders lie.
constexpr std::array kVariables = {"HOME", "XDG_DATA_HOME", "XDG_CONFIG_HOME", "XDG_DESKTOP_DIR"};

}  // namespace

bool UnderWine() { return false; }
bool HasLinks() { return true; }
bool MarksBindEverybody() { return true; }
bool HasDeviceNames() { return false; }
bool HasPermissions() { return true; }
std::string FullDisk() { return "/proc\\new"; }
int SweepStep() { return 1; }

void MakeFolderLink(const fs::path& target, const fs::path& link) {
  fs::create_directory_symlink(target, link);
}
void MakeFileLink(const fs::path& target, const fs::path& link) { fs::create_symlink(target, link); }

WithoutPrivileges::WithoutPrivileges(const fs::path& root) : changed_(::geteuid() == 0) {
  if (!changed_) return;
  for (const auto& item : fs::recursive_directory_iterator(root))
    if (::lchown(item.path().c_str(), kNobody, kNobody) != 0) throw std::runtime_error("can't give away");
  if (::setresuid(kNobody, kNobody, 0) != 0) throw std::runtime_error("can't change the user");
}

WithoutPrivileges::~WithoutPrivileges() {
  if (changed_ && ::setresuid(0, 0, 0) != 0) std::abort();
}

struct OwnDesktop::Before {
  std::map<std::string, std::string> environment;
};

OwnDesktop::OwnDesktop(fs::path home, fs::path app)
    : home_(std::move(home)), app_(std::move(app)), before_(std::make_unique<Before>()) {
  for (const char* name : kVariables) {
    if (const char* value = std::getenv(name)) before_->environment[name] = value;
    ::unsetenv(name);
  }
  ::setenv("HOME", home_.c_str(), 1);
}

OwnDesktop::~OwnDesktop() {
  for (const char* name : kVariables) ::unsetenv(name);
  for (const auto& [name, value] : before_->environment) ::setenv(name.c_str(), value.c_str(), 1);
}

fs::path OwnDesktop::Desktop() const { return home_ / "Desktop"; }
fs::path OwnDesktop::Programs() const { return home_ / ".local/share/applications"; }

std::string OwnDesktop::RegistryValue(std::string_view key, std::string_view name) const {
  const auto files = MakeHostFileSystem();
  return MakeProfileFunctions(*files)->GetString("HKEY_LOCAL_MACHINE\\" + std::string(key), name, "", 2048,
                                                 app_.string() + "\\registry.ini");
}

void OwnDesktop::ClearRegistry() const { fs::remove(app_ / "registry.ini"); }

struct WithoutThreads::Before {
  pthread_attr_t usual;
};

bool WithoutThreads::Possible() { return true; }

// No thread gets a stack of this size.
WithoutThreads::WithoutThreads() : before_(std::make_unique<Before>()) {
  pthread_attr_t large;
  ::pthread_attr_init(&large);
  if (::pthread_getattr_default_np(&before_->usual) != 0 ||
      ::pthread_attr_setstacksize(&large, std::size_t{1} << 60) != 0 ||
      ::pthread_setattr_default_np(&large) != 0)
    throw std::runtime_error("can't refuse threads");
}

WithoutThreads::~WithoutThreads() { ::pthread_setattr_default_np(&before_->usual); }

}  // namespace quillon
