// What tests need of the machine they run on, where platforms differ.
#pragma once

#include <filesystem>
#include <memory>
#include <string>
#include <string_view>

namespace quillon {

namespace fs = std::filesystem;

/// Whether this is no Windows itself but a stand-in, which differs where it says so below.
bool UnderWine();

/// Whether links can be made here and are told from what they lead to. The stand-in follows them when it
/// deletes.
bool HasLinks();
inline constexpr const char* kNoLinks = "no links can be made here, or Wine would follow them";
/// `link` stands for `target`, which may be missing or relative to the link's folder.
void MakeFolderLink(const fs::path& target, const fs::path& link);
void MakeFileLink(const fs::path& target, const fs::path& link);

/// Whether a read-only mark stops the platform's own profile functions. The stand-in lets a superuser write.
bool MarksBindEverybody();

inline void MakeReadOnly(const fs::path& file) { fs::permissions(file, fs::perms(0444)); }

/// Whether a device has names such as CON.tar here, so that no file can.
bool HasDeviceNames();

/// Whether a folder can be shut here by permissions.
bool HasPermissions();

/// While one lives the process is no superuser, whom no permission stops; all below `root` belongs to it.
class WithoutPrivileges {
 public:
  explicit WithoutPrivileges(const fs::path& root);
  ~WithoutPrivileges();
  WithoutPrivileges(const WithoutPrivileges&) = delete;
  WithoutPrivileges& operator=(const WithoutPrivileges&) = delete;

 private:
  const bool changed_;
};

/// While one lives nothing can be made in the folder, nor removed from it.
class ShutFolder {
 public:
  explicit ShutFolder(fs::path folder) : folder_(std::move(folder)) {
    fs::permissions(folder_, fs::perms(0555));
  }
  ~ShutFolder() { fs::permissions(folder_, fs::perms(0755)); }
  ShutFolder(const ShutFolder&) = delete;
  ShutFolder& operator=(const ShutFolder&) = delete;

 private:
  const fs::path folder_;
};

/// While one lives the user's folders lie below `home`, and the registry is a test's own. They nest.
class OwnDesktop {
 public:
  /// `app` is the installation's folder.
  OwnDesktop(fs::path home, fs::path app);
  ~OwnDesktop();
  OwnDesktop(const OwnDesktop&) = delete;
  OwnDesktop& operator=(const OwnDesktop&) = delete;

  fs::path Desktop() const;
  fs::path Programs() const;
  /// A value below HKEY_LOCAL_MACHINE, its type in front as "string:" or "dword:"; empty without one.
  std::string RegistryValue(std::string_view key, std::string_view name) const;
  /// Takes away all that the system has in the registry.
  void ClearRegistry() const;

 private:
  struct Before;
  const fs::path home_, app_;
  const std::unique_ptr<Before> before_;
};

/// A path where nothing is ever free.
std::string FullDisk();

/// Of how many places in a long sweep one is tried: where starts and file calls are slow, not each.
int SweepStep();

/// While one lives no thread can be started; false where the platform always has one to give.
class WithoutThreads {
 public:
  WithoutThreads();
  ~WithoutThreads();
  WithoutThreads(const WithoutThreads&) = delete;
  WithoutThreads& operator=(const WithoutThreads&) = delete;

  static bool Possible();

 private:
  struct Before;
  std::unique_ptr<Before> before_;
};

}  // namespace quillon
