// The desktop around the program: opening things, the user's special folders, the one running instance.
#pragma once

#include <memory>
#include <string>
#include <string_view>

namespace quillon {

/// The classic numbers of the user's folders.
enum class SpecialFolder { Programs = 2, Desktop = 16 };

/// The folder in the system's form, made when it is missing; empty when there is none.
std::string GetSpecialFolder(SpecialFolder folder);

/// Opens a file or address with the user's program for it; returns at once. `hostPath` is the host's name.
void OpenWithDesktop(const std::string& hostPath);

/// Shows a folder in the file explorer; returns at once.
void ExploreWithDesktop(const std::string& hostPath);

/// The bytes of a shortcut file to a folder, as this desktop understands it.
std::string ShortcutContent(const std::string& hostFolder);

/// The folder of the running executable, without a closing separator.
std::string ExecutableFolder();

/// An absolute, normal host path for what a user typed; "" for "".
std::string AbsoluteHostPath(const std::string& path);

/// Held by the one running instance of an installation.
class InstanceLock {
 public:
  virtual ~InstanceLock() = default;
};

/// Null when another process holds the lock of the installation whose lock file is `hostPath`. A file left
/// behind by a process that died never blocks.
std::unique_ptr<InstanceLock> TakeInstanceLock(const std::string& hostPath);

}  // namespace quillon
