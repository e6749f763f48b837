#include "intake/RouteNeeds.h"

#include <algorithm>
#include <set>

#include "core/text/Text.h"

namespace quillon {
namespace {

constexpr std::uint64_t kLongestScript = 256u << 10;  // bytes
constexpr std::size_t kMostCopies = 3;                // that are told by name
constexpr std::size_t kLongestName = 200;             // bytes
constexpr int kMostScripts = 20;                      // that are read

/// The words of a command line; what stands in quotes is one.
std::vector<std::string> Words(std::string_view line) {
  std::vector<std::string> words;
  bool quoted = false, open = false;
  for (const char c : line) {
    if (c == '"') {
      quoted = !quoted;
    } else if (!quoted && (c == ' ' || c == '\t')) {
      open = false;
    } else {
      if (!open) words.emplace_back();
      open = true;
      words.back() += c;
    }
  }
  return words;
}

/// What a line of the script copies from outside the route's folder; empty for all others.
std::string CopiedFromGame(const std::string& line) {
  auto words = Words(line.starts_with('@') ? line.substr(1) : line);
  if (words.empty()) return {};
  const std::string command = LowerCase(words.front());
  if (command != "copy" && command != "xcopy" && command != "robocopy" && command != "move") return {};
  std::erase_if(words, [](const std::string& word) { return word.starts_with('/'); });
  return words.size() > 1 && Contains(words[1], "..") ? std::string(FirstCharacters(words[1], kLongestName))
                                                      : "";
}

std::string ScriptNeeds(const ArchiveReader& archive, int entry) {
  std::vector<std::string> copies;
  for (const auto& line : Lines(DecodeGameText(archive.Bytes(entry, kLongestScript))))
    if (auto copied = CopiedFromGame(Trim(line)); !copied.empty()) copies.push_back(std::move(copied));
  if (copies.empty()) return {};
  std::string text = archive.Entries()[static_cast<std::size_t>(entry)].name +
                     " would copy files of the game itself, which Quillon does not run: ";
  for (std::size_t i = 0; i < copies.size() && i < kMostCopies; ++i) text += (i > 0 ? ", " : "") + copies[i];
  if (copies.size() > kMostCopies) text += " and " + std::to_string(copies.size() - kMostCopies) + " more";
  return text;
}

}  // namespace

std::vector<std::string> RouteNeeds(const ArchiveReader& archive, const RouteMap& map) {
  std::vector<std::string> needs;
  std::set<std::string> gameFolders, trackFolders;
  int scripts = 0;
  for (int i = 0; i < archive.EntryCount(); ++i) {
    const std::string name = archive.LowerName(i);
    if ((name.ends_with(".bat") || name.ends_with(".cmd")) && ++scripts <= kMostScripts)
      if (auto need = ScriptNeeds(archive, i); !need.empty()) needs.push_back(std::move(need));
    if (name.ends_with(".trk")) trackFolders.insert(std::string(FolderOf(name)));
    for (const std::string_view folder : {"global\\", "trains\\"})
      // Consists are taken care of.
      if (!name.ends_with(".con") && !name.ends_with('\\') &&
          (name.starts_with(folder) || Contains(name, "\\" + std::string(folder))))
        gameFolders.insert(UpperCase(folder.substr(0, folder.size() - 1)));
  }
  for (const auto& folder : gameFolders)
    needs.push_back("its folder " + folder + " belongs into the game: copy it there by hand");
  trackFolders.erase(map.RouteRootPrefix);
  if (!trackFolders.empty())
    needs.push_back("it holds a second route, which is not loaded: " + CutBackslash(*trackFolders.begin()));
  return needs;
}

}  // namespace quillon
