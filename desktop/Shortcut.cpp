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
  // What is installed for all users has its entry in the menu that they share.
  for (const SpecialFolder menu : {SpecialFolder::Programs, SpecialFolder::CommonPrograms}) {
    const std::string programs = GetSpecialFolder(menu), shortcut = programs + std::string(kInPrograms);
    if (programs.empty() || !files.FileExists(shortcut)) continue;
    files.TryCopy(shortcut, desktop + std::string(kOnDesktop));
    return;
  }
}

void RemoveDesktopShortcut(Files& files) {
  const std::string desktop = GetSpecialFolder(SpecialFolder::Desktop);
  if (desktop.empty()) return;
  const std::string shortcut = desktop + std::string(kOnDesktop);
  if (files.FileExists(shortcut)) files.Kill(shortcut);
}

void MakeProgramsShortcut(Files& files, const std::string& target) {
  const std::string programs = GetSpecialFolder(SpecialFolder::Programs);
  if (programs.empty()) return;
  files.MakeFolders(programs + "\\Ostrand\\Quillon");
  files.WriteAll(programs + std::string(kInPrograms), ShortcutContent(target));
}

}  // namespace quillon
