#include "catalogue/DetailsCache.h"

#include <optional>
#include <string_view>
#include <unordered_map>

#include "catalogue/RouteName.h"
#include "core/FlatFile.h"
#include "core/archive/ArchiveReader.h"
#include "core/host/Workers.h"
#include "core/text/Text.h"

namespace quillon {
namespace {

/// Another form of the file gets another number.
constexpr std::string_view kMark = "Quillon's routes 1\n";

struct KeptRoute {
  std::uint64_t size = 0;
  std::int64_t modified = 0;
  RouteContent content;
};
using KeptRoutes = std::unordered_map<std::string, KeptRoute>;

KeptRoutes Load(Program& program) {
  KeptRoutes kept;
  std::string bytes;
  program.files.Host().Read(program.app.DetailsCacheFile(), bytes, kNoLimit);
  const auto content = Unsealed(kMark, bytes);
  if (!content) return kept;
  for (FlatReader reader(*content); !reader.Empty();) {
    KeptRoute& route = kept[std::string(reader.Text())];
    route.size = reader.Number();
    route.modified = static_cast<std::int64_t>(reader.Number());
    route.content.files = reader.Number();
    route.content.bytes = reader.Number();
    route.content.description = reader.Text();
    route.content.damaged = reader.Number() != 0;
  }
  return kept;
}

/// What can't be written is read again another time.
void Save(Program& program, const std::vector<RouteFile>& routes, const std::vector<RouteContent>& contents) {
  std::string bytes(kMark);
  for (std::size_t i = 0; i < routes.size(); ++i) {
    // A file that can't be opened may be whole.
    if (IsYoung(routes[i].modified) || contents[i].damaged) continue;
    AddText(bytes, routes[i].zip);
    AddNumber(bytes, routes[i].size);
    AddNumber(bytes, static_cast<std::uint64_t>(routes[i].modified));
    AddNumber(bytes, contents[i].files);
    AddNumber(bytes, contents[i].bytes);
    AddText(bytes, contents[i].description);
    AddNumber(bytes, contents[i].damaged ? 1 : 0);
  }
  Seal(bytes);
  program.files.Host().Replace(program.app.DetailsCacheFile(), bytes);
}

RouteContent Read(const std::string& hostPath) {
  RouteContent content;
  try {
    ZipFile zip(hostPath);
    for (const auto& entry : zip.Entries()) {
      if (entry.folder()) continue;
      ++content.files;
      content.bytes = SaturatedSum(content.bytes, entry.size);
    }
    content.description = RouteDescriptionFrom(TrackTextOf(zip).text);
  } catch (const Damage&) {
    content.damaged = content.files == 0;
  }
  return content;
}

/// The first track file by its name, as the listing of a folder has it.
std::optional<std::size_t> TrackEntryOf(const ZipFile& zip) {
  std::optional<std::size_t> found;
  std::string first;
  for (std::size_t i = 0; i < zip.Entries().size(); ++i) {
    std::string name = UpperCase(FileNameOf(zip.Entries()[i].name));
    if (!name.ends_with(".TRK") || (found && !ComesBefore(name, first))) continue;
    found = i;
    first = std::move(name);
  }
  return found;
}

}  // namespace

TrackText TrackTextOf(ZipFile& zip) {
  const auto entry = TrackEntryOf(zip);
  if (!entry) return {};
  struct Enough {};
  std::string bytes;
  try {
    zip.Unpack(*entry, [&](std::string_view piece) {
      bytes += piece;
      if (bytes.size() > kTrackHead) throw Enough();
    });
  } catch (const Enough&) {
    bytes.resize(kTrackHead);
  }
  return {zip.Entries()[*entry].name, DecodeGameText(bytes)};
}

std::vector<RouteFile> ListRouteFiles(Program& program) {
  std::vector<FoundFile> found;
  program.files.Host().Find(program.app.AnyRouteFile(), found);
  std::vector<RouteFile> routes;
  for (const auto& file : found)
    if (!file.folder()) routes.push_back({CutAtLastDot(file.name), file.size, file.modified});
  return routes;
}

std::vector<RouteContent> ContentsOf(Program& program, const std::vector<RouteFile>& routes,
                                     const std::function<void(std::size_t done, std::size_t all)>& tick) {
  KeptRoutes kept = Load(program);
  std::vector<RouteContent> contents(routes.size());
  std::vector<std::size_t> unread;
  std::vector<std::string> hostPaths;
  for (std::size_t i = 0; i < routes.size(); ++i) {
    const auto at = kept.find(routes[i].zip);
    if (at != kept.end() && at->second.size == routes[i].size && at->second.modified == routes[i].modified) {
      contents[i] = std::move(at->second.content);
      continue;
    }
    unread.push_back(i);
    hostPaths.push_back(program.files.Host().HostPath(program.app.RouteFile(routes[i].zip)));
  }
  OnAllProcessors(
      unread.size(), [&](std::size_t i) { contents[unread[i]] = Read(hostPaths[i]); },
      [&](std::size_t done) { tick(done, unread.size()); });
  if (!unread.empty() || kept.size() != routes.size()) Save(program, routes, contents);
  return contents;
}

}  // namespace quillon
