#include "checkup/GameFiles.h"

#include <algorithm>
#include <iterator>

#include "core/FolderWay.h"
#include "core/text/Text.h"

namespace quillon {
namespace {

constexpr std::string_view kRoutes = "\\Routes\\";

using Folder = std::shared_ptr<const std::string>;

GameFile Listed(const Folder& folder, const std::string& shownFolder, const FoundFile& found) {
  return {folder, shownFolder + found.name, found.size, found.modified};
}

class Walker {
 public:
  explicit Walker(FileSystem& host) : host_(host), way_(host) {}

  void Walk(const std::string& folder, const std::string& shown, bool link) {
    if (!way_.Enter(folder, link)) return;
    std::vector<FoundFile> found;
    host_.Find(folder + "*.*", found);
    const auto shared = std::make_shared<const std::string>(folder);
    const bool services = folder.ends_with("\\services\\"), activities = folder.ends_with("\\activities\\");
    for (const auto& entry : found) {
      if (entry.dots() || entry.special) continue;
      const std::string name = LowerCase(entry.name);
      if (entry.folder())
        Walk(folder + name + "\\", shown + entry.name + "\\", entry.link);
      else if (services && name.ends_with(".srv"))
        lists.lstServices.push_back(Listed(shared, shown, entry));
      else if (activities && name.ends_with(".act"))
        lists.lstAllActivities.push_back(Listed(shared, shown, entry));
    }
    way_.Leave();
  }

  RouteFileLists lists;

 private:
  FileSystem& host_;
  FolderWay way_;
};

void Sort(std::vector<GameFile>& files) {
  std::vector<std::pair<std::string, GameFile>> keyed;
  keyed.reserve(files.size());
  for (auto& file : files) keyed.emplace_back(UpperCase(file.Path()), std::move(file));
  std::stable_sort(keyed.begin(), keyed.end(),
                   [](const auto& a, const auto& b) { return ComesBefore(a.first, b.first); });
  std::transform(keyed.begin(), keyed.end(), files.begin(),
                 [](auto& pair) { return std::move(pair.second); });
}

}  // namespace

std::string GameFile::Name() const { return LowerCase(FileNameOf(shown)); }

void AddAsListed(std::vector<GameFile>& files, std::vector<GameFile> more) {
  const auto before = [](const GameFile& a, const GameFile& b) {
    return ComesBefore(UpperCase(a.Path()), UpperCase(b.Path()));
  };
  std::vector<GameFile> all;
  all.reserve(files.size() + more.size());
  auto rest = files.begin();
  const auto moveUpTo = [&](auto end) {
    std::move(rest, end, std::back_inserter(all));
    rest = end;
  };
  for (auto& file : more) {
    moveUpTo(std::lower_bound(rest, files.end(), file, before));
    if (rest == files.end() || rest->Path() != file.Path()) all.push_back(std::move(file));
  }
  moveUpTo(files.end());
  files = std::move(all);
}

std::vector<GameFile> ListGameFiles(Program& program, const std::string& folder, std::string_view extension) {
  std::vector<FoundFile> found;
  program.files.Host().Find(folder + "*" + std::string(extension), found);
  const auto shared = std::make_shared<const std::string>(folder);
  std::vector<GameFile> files;
  files.reserve(found.size());
  for (const auto& entry : found)
    if (!entry.folder() && !entry.special) files.push_back(Listed(shared, "", entry));
  return files;
}

RouteFileLists WalkRoutes(Program& program) {
  Walker walker(program.files.Host());
  walker.Walk(program.BelowGame(kRoutes), "", false);
  Sort(walker.lists.lstServices);
  Sort(walker.lists.lstAllActivities);
  return std::move(walker.lists);
}

FileOfRoute TakeApart(const Program& program, const std::string& path, std::string_view kind) {
  std::string lower = path;  // letters beyond ASCII may change their length
  std::transform(lower.begin(), lower.end(), lower.begin(),
                 [](char c) { return c >= 'A' && c <= 'Z' ? static_cast<char>(c + 32) : c; });
  const std::size_t cut = lower.find(kind) + kind.size();
  FileOfRoute file{path.substr(0, cut), path.substr(cut), {}};
  file.route = ReplaceAll(ReplaceAll(file.folder, program.BelowGame(kRoutes), ""), kind, "");
  return file;
}

}  // namespace quillon
