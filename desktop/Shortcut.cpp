#include "desktop/Shortcut.h"

#include "core/host/Desktop.h"

namespace quillon {
namespace {

constexpr std::string_view kInPrograms = "\\Ostrand\\Quillon\\Downloaded MSTS routes.lnk";
constexpr std::string_view kOnDesktop = "\\Downloaded MSTS routes.lnk";

}  // namespace

void MakeDesktopShortcut(Files& files) {
  const std::string desktop = GetSpecialFolder(SpecialFolder::Desktop);
  if (desktop.empty()) return;
  const std::string onDesktop = desktop + std::string(kOnDesktop);
  // What is installed for all users has its entry in the menu that they share.
  for (const SpecialFolder menu : {SpecialFolder::Programs, SpecialFolder::CommonPrograms}) {
    const std::string programs = GetSpecialFolder(menu), shortcut = programs + std::string(kInPrograms);
    if (programs.empty() || !files.FileExists(shortcut)) continue;
    files.TryCopy(shortcut, onDesktop);
    ShowShortcut(files.Host().HostPath(onDesktop));
    return;
  }
}

void RemoveDesktopShortcut(Files& files) {
  const std::string desktop = GetSpecialFolder(SpecialFolder::Desktop);
  if (desktop.empty()) return;
  const std::string shortcut = desktop + std::string(kOnDesktop);
  if (files.FileExists(shortcut)) files.Kill(shortcut);
  ForgetShortcut(files.Host().HostPath(shortcut));
}

void MakeProgramsShortcut(Files& files, const std::string& target) {
  const std::string programs = GetSpecialFolder(SpecialFolder::Programs);
  const std::string content = ShortcutContent(target);
  if (programs.empty() || content.empty()) return;
  files.MakeFolders(programs + "\\Ostrand\\Quillon");
  const std::string shortcut = programs + std::string(kInPrograms);
  files.WriteAll(shortcut, content);
  ShowShortcut(files.Host().HostPath(shortcut));
}

void RenewShortcuts(Files& files, const std::string& target, const std::string& former) {
  const std::string programs = GetSpecialFolder(SpecialFolder::Programs);
  const auto isToRenew = [&](const std::string& shortcut) {
    if (!files.FileExists(shortcut)) return false;
    const std::string leadsTo = ShortcutTarget(files.ReadAll(shortcut));
    return leadsTo == target || (!leadsTo.empty() && leadsTo == former && !files.IsPathAFolder(former));
  };
  if (programs.empty() || !isToRenew(programs + std::string(kInPrograms))) return;
  MakeProgramsShortcut(files, target);
  const std::string desktop = GetSpecialFolder(SpecialFolder::Desktop);
  if (!desktop.empty() && isToRenew(desktop + std::string(kOnDesktop))) MakeDesktopShortcut(files);
}

}  // namespace quillon
