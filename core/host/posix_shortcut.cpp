#include <algorithm>
#include <fstream>
#include <iterator>
#include <string_view>
#include <system_error>

#include "core/host/Desktop.h"
#include "core/host/StandardPath.h"

namespace quillon {
namespace {

namespace fs = std::filesystem;

constexpr std::string_view kHead = "[Desktop Entry]\n",
                           kFolderKey = "\nX-Quillon-Folder=", kOlderFolder = "\nURL=file://";

/// An argument of a command line, as the key Exec has it.
std::string Argument(std::string_view text) {
  std::string quoted = "\"";
  for (const char c : text) {
    if (std::string_view("\"`$\\").find(c) != std::string_view::npos) quoted += '\\';
    if (c == '%') quoted += '%';
    quoted += c;
  }
  return quoted + '"';
}

/// The value of any key.
std::string Value(std::string_view text) {
  constexpr std::string_view kPlain = "\\\n\t\r", kLetters = "\\ntr";
  std::string value;
  for (const char c : text) {
    const auto at = kPlain.find(c);
    value += at == kPlain.npos ? std::string(1, c) : std::string{'\\', kLetters[at]};
  }
  return value;
}

std::string TextOf(std::string_view value) {
  constexpr std::string_view kPlain = "\\\n\t\r ", kLetters = "\\ntrs";
  std::string text;
  for (std::size_t i = 0; i < value.size(); ++i) {
    const auto at = value[i] == '\\' && i + 1 < value.size() ? kLetters.find(value[i + 1]) : kLetters.npos;
    text += at == kLetters.npos ? value[i] : kPlain[at];
    if (at != kLetters.npos) ++i;
  }
  return text;
}

std::string BytesOf(const fs::path& path) {
  std::ifstream file(path, std::ios::binary);
  return {std::istreambuf_iterator<char>(file), {}};
}

/// In one step, as a desktop may look at any time.
void PlaceFile(const fs::path& path, std::string_view bytes, fs::perms permissions) {
  std::error_code failed;
  const fs::path part = path.native() + std::string(".part~");
  std::ofstream file(part, std::ios::binary | std::ios::trunc);
  file << bytes;
  file.close();
  if (file) fs::permissions(part, permissions, failed);
  if (file && !failed) fs::rename(part, path, failed);
  if (!file || failed) fs::remove(part, failed);
}

fs::path EntryBeside(const std::string& shortcut) { return ToPath(shortcut).replace_extension(".desktop"); }

/// File managers leave out what a folder's list of hidden names tells.
void SetHidden(const fs::path& path, bool hidden) {
  const fs::path list = path.parent_path() / ".hidden";
  const std::string before = BytesOf(list), name = path.filename().string() + '\n';
  std::string names = before;
  if (!names.empty() && !names.ends_with('\n')) names += '\n';
  const auto at = ('\n' + names).find('\n' + name);
  if (hidden == (at != names.npos)) return;
  if (hidden)
    names += name;
  else
    names.erase(at, name.size());
  std::error_code failed;
  if (names.empty())
    fs::remove(list, failed);
  else
    PlaceFile(list, names, fs::perms(0644));
}

}  // namespace

std::string ShortcutContent(const std::string& hostFolder) {
  return std::string(kHead) +
         "Type=Application\nName=Downloaded MSTS routes\nComment=Put downloaded route zips here\n"
         "Icon=folder-download\nCategories=Game;Simulation;\nTerminal=false\nExec=xdg-open " +
         Value(Argument(hostFolder)) + std::string(kFolderKey) + Value(hostFolder) + '\n';
}

std::string ShortcutTarget(const std::string& bytes) {
  if (!bytes.starts_with(kHead)) return {};
  for (const auto key : {kFolderKey, kOlderFolder}) {
    const auto at = bytes.find(key);
    if (at == bytes.npos) continue;
    const auto begin = at + key.size();
    const std::string value = bytes.substr(begin, bytes.find('\n', begin) - begin);
    return key == kFolderKey ? TextOf(value) : value;
  }
  return {};
}

// A desktop knows an entry by its name's end, and the classic name has another.
void ShowShortcut(const std::string& hostPath) {
  const std::string bytes = BytesOf(ToPath(hostPath));
  if (ShortcutTarget(bytes).empty()) return;
  PlaceFile(EntryBeside(hostPath), bytes, fs::perms(0755));
  SetHidden(ToPath(hostPath), true);
}

void ForgetShortcut(const std::string& hostPath) {
  std::error_code failed;
  fs::remove(EntryBeside(hostPath), failed);
  SetHidden(ToPath(hostPath), false);
}

}  // namespace quillon
