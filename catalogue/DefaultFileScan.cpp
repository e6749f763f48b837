#include "catalogue/DefaultFileScan.h"

#include <algorithm>
#include <array>
#include <unordered_set>

#include "core/text/Text.h"

namespace quillon {
namespace {

constexpr std::array<std::string_view, 7> kSources = {
    "\\TEMPLATE",       "\\Routes\\USA2",    "\\Routes\\USA1",   "\\Routes\\JAPAN2",
    "\\Routes\\JAPAN1", "\\Routes\\EUROPE2", "\\Routes\\EUROPE1"};

constexpr std::array<std::string_view, 8> kSkippedFolders = {"\\world\\", "\\lo_tiles\\",  "\\traffic\\",
                                                             "\\tiles\\", "\\td\\",        "\\services\\",
                                                             "\\paths\\", "\\activities\\"};

bool IsSkipped(const std::string& folder) {
  const std::string lower = LowerCase(folder);
  return std::any_of(kSkippedFolders.begin(), kSkippedFolders.end(),
                     [&](std::string_view end) { return lower.ends_with(end); });
}

bool WorkingRouteHasFolder(const std::string& place) {
  const std::string folder = UpperCase(CutBackslash(FolderOf(place)));
  return std::any_of(kWorkingRouteFolders.begin(), kWorkingRouteFolders.end(),
                     [&](std::string_view known) { return UpperCase(known) == folder; });
}

}  // namespace

/// A route's own track file and its like: named after the route, at its top. Another route that got them
/// would have two track files, and a packed route must never lose its own.
bool DefaultFileScan::BelongsToOneRoute(const DefaultFile& file) {
  return FolderOf(file.place) == "\\" && EqualNoCase(CutAtLastDot(file.name), FileNameOf(file.source));
}

void DefaultFileScan::ForEachFile(const std::function<void(const DefaultFile&)>& action) {
  const FileSystem::Pass pass(program_.files.Host());
  std::unordered_set<std::string> places;
  for (const auto source : kSources) {
    const std::string top = program_.BelowGame(source);
    // Names are lowered as they come; the folder of the source keeps its spelling.
    program_.files.WalkThroughLinks(
        top + "\\*.*", [&](const std::string& foundFolder, const std::string& foundName) {
          const std::string below = LowerCase(std::string_view(foundFolder).substr(top.size()));
          if (IsSkipped(top + below)) return;
          const std::string name = LowerCase(foundName);
          if (places.insert(below + name).second) action({source, top + below, name, below + name});
        });
  }
}

void DefaultFileScan::Run() {
  program_.Step("Making the list of default files");
  ListFile stuff(program_.files, program_.app.StuffList(), true);
  ForEachFile([&](const DefaultFile& file) { stuff.Add(file.folder + file.name); });
}

void DefaultFileScan::DeriveLists() {
  program_.Step("Listing the default files of the game");
  std::string copyFiles, fileList;
  ForEachFile([&](const DefaultFile& file) {
    if (BelongsToOneRoute(file)) return;
    if (WorkingRouteHasFolder(file.place))
      copyFiles += std::string(file.source.substr(1)) + file.place + "\r\n";
    fileList += file.place.substr(1) + "\r\n";
  });
  const auto fillWhenEmpty = [&](const std::string& path, const std::string& lines) {
    if (!program_.files.FileExists(path) || program_.files.Size(path) == 0)
      program_.files.WriteAll(path, lines);
  };
  fillWhenEmpty(program_.app.CopyFilesList(), copyFiles);
  fillWhenEmpty(program_.app.FileList(), fileList);
}

}  // namespace quillon
