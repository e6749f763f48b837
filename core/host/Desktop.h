// The desktop around the program: opening things, the user's special folders, the one running instance.
#pragma once

#include <future>
#include <memory>
#include <string>
#include <string_view>

namespace quillon {

/// The classic numbers of the user's folders, and of those that all users share.
enum class SpecialFolder { Programs = 2, Desktop = 16, CommonPrograms = 23 };

/// The folder in the system's form, made when it is missing; empty when there is none.
std::string GetSpecialFolder(SpecialFolder folder);

/// Whether the desktop had a program for what was asked. It comes when the desktop tells, which may be never:
/// it need not be waited for.
using DesktopAnswer = std::future<bool>;

/// Opens a file or address with the user's program for it; returns at once. `hostPath` is the host's name. A
/// program starts in its own folder.
DesktopAnswer OpenWithDesktop(const std::string& hostPath);

/// Shows a folder in the file explorer; returns at once.
DesktopAnswer ExploreWithDesktop(const std::string& hostPath);

/// Runs a command line, as the platform takes them, in a folder; returns at once.
DesktopAnswer RunCommand(const std::string& command, const std::string& hostFolder);

/// The bytes of a shortcut file to a folder, as this desktop understands it.
std::string ShortcutContent(const std::string& hostFolder);

/// The host folder that such bytes lead to; empty when they are of another kind.
std::string ShortcutTarget(const std::string& bytes);

/// A shortcut file has come, or has gone: does what else this desktop needs to show and open it. A failure is
/// nobody's concern.
void ShowShortcut(const std::string& hostPath);
void ForgetShortcut(const std::string& hostPath);

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

/// Where the instance that holds the lock, and has a window, hears of other starts.
class StartCalls {
 public:
  virtual ~StartCalls() = default;
  /// Whether the program was started once more since the last question; never waits.
  virtual bool Any() = 0;
};

/// For the holder of the lock whose file is `hostPath`. Null where calls can't be heard.
std::unique_ptr<StartCalls> HearStartCalls(const std::string& hostPath);

/// Asks the holder of that lock to show its window; false when it has none.
bool CallRunningInstance(const std::string& hostPath);

}  // namespace quillon
