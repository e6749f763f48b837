#include "desktop/Shortcut.h"

#include "core/host/Desktop.h"

namespace quillon {
namespace {

constexpr std::string_view kInPrograms = "\\Ostrand\\Quillon\\Downloaded MSTS routes.lnk";
constexpr std::string_view kOnDesktop = "\\Downloaded MSTS routes.lnk";

}  // namespace

void MakeDesktopShortcut(Files& files) {
  const std::string programs = GetSpecialFolder(SpecialFolder::Programs);
  const std::string desktop = GetSpecialFolder(SpecialFolder::Desktop);
  if (programs.empty() || desktop.empty()) return;
  files.TryCopy(programs + std::string(kInPrograms), desktop + std::string(kOnDesktop));
}

void RemoveDesktopShortcut(Files& files) {
  const std::string desktop = GetSpecialFolder(SpecialFolder::Desktop);
  if (desktop.empty()) return;
  const std::string shortcut = desktop + std::string(kOnDesktop);
  if (files.FileExists(shortcut)) files.Kill(shortcut);
}

void MakeProgramsShortcut(Files& files, const std::string& target) {
  const std::string programs = GetSpecialFolder(SpecialFolder::Programs);
  const std::string content = ShortcutContent(target);
  if (programs.empty() || content.empty()) return;
  files.MakeFolders(programs + "\\Ostrand\\Quillon");
  files.WriteAll(programs + std::string(kInPrograms), content);
}

}  // namespace quillon
