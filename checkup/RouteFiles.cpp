#include "checkup/RouteFiles.h"

#include <algorithm>

#include "core/Text.h"

namespace quillon {
namespace {

constexpr std::string_view kRoutes = "\\Routes\\";

class Walker {
 public:
  explicit Walker(Program& program) : program_(program) {}

  void Walk(const std::string& folder) {
    std::vector<FoundFile> found;
    program_.files.Host().Find(folder + "*.*", found);
    const bool services = folder.ends_with("\\services\\"), activities = folder.ends_with("\\activities\\");
    for (const auto& entry : found) {
      if (entry.dots()) continue;
      const std::string name = LowerCase(entry.name);
      if (entry.folder()) {
        if (!entry.link) Walk(folder + name + "\\");
      } else if (services && name.ends_with(".srv")) {
        lists.lstServices.push_back(folder + name);
      } else if (activities && name.ends_with(".act")) {
        lists.lstAllActivities.push_back(folder + name);
      }
    }
  }

  RouteFileLists lists;

 private:
  Program& program_;
};

void Sort(std::vector<std::string>& paths) {
  std::vector<std::pair<std::string, std::string>> keyed;
  keyed.reserve(paths.size());
  for (auto& path : paths) keyed.emplace_back(UpperCase(path), std::move(path));
  std::stable_sort(keyed.begin(), keyed.end(),
                   [](const auto& a, const auto& b) { return ComesBefore(a.first, b.first); });
  std::transform(keyed.begin(), keyed.end(), paths.begin(),
                 [](auto& pair) { return std::move(pair.second); });
}

}  // namespace

RouteFileLists WalkRoutes(Program& program) {
  Walker walker(program);
  walker.Walk(program.BelowGame(kRoutes));
  Sort(walker.lists.lstServices);
  Sort(walker.lists.lstAllActivities);
  return std::move(walker.lists);
}

RouteFile TakeApart(const Program& program, const std::string& path, std::string_view kind) {
  std::string lower = path;  // letters beyond ASCII may change their length
  std::transform(lower.begin(), lower.end(), lower.begin(),
                 [](char c) { return c >= 'A' && c <= 'Z' ? static_cast<char>(c + 32) : c; });
  const std::size_t cut = lower.find(kind) + kind.size();
  RouteFile file{path.substr(0, cut), path.substr(cut), {}};
  file.route = ReplaceAll(ReplaceAll(file.folder, program.BelowGame(kRoutes), ""), kind, "");
  return file;
}

}  // namespace quillon
