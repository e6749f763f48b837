#include "shelf/Shelf.h"

#include <algorithm>
#include <unordered_map>

#include "core/ReportPage.h"
#include "core/text/Text.h"

namespace quillon {
namespace {

constexpr std::uint64_t kMostBytes = 2ull << 30;

/// "2026-05-01 12-30-00 (2)" as "2026-05-01T12:30:00".
std::string IsoDate(const std::string& folder) {
  std::string date = folder.substr(0, 19);
  if (date.size() == 19) {
    date[10] = 'T';
    date[13] = date[16] = ':';
  }
  return date;
}

bool IsNewer(const ShelfEntry& a, const ShelfEntry& b) {
  const auto key = [](const ShelfEntry& entry) {
    return std::pair(entry.date, Shelf::CountOf(FileNameOf(entry.path)));
  };
  return key(a) != key(b) ? key(a) > key(b) : a.zip < b.zip;
}

}  // namespace

int Shelf::CountOf(std::string_view folderName) {
  const auto mark = folderName.find('(');
  return mark == folderName.npos ? 1 : NumericValue(folderName.substr(mark + 1));
}

std::string Shelf::PlaceOf(std::string_view path) const {
  const auto below = [&](const std::string& root) {
    return !root.empty() && EqualNoCase(path.substr(0, root.size() + 1), root + "\\");
  };
  const std::string &app = program_.app.App(), &game = program_.shared.TrainSimPath;
  // The application folder may lie below the game's, or the other way round.
  const bool appFirst = app.size() > game.size();
  if (below(app) && (appFirst || !below(game))) return "\\app" + std::string(path.substr(app.size()));
  if (below(game)) return "\\game" + std::string(path.substr(game.size()));
  return "\\elsewhere\\" + std::string(FileNameOf(path));
}

std::vector<ShelfEntry> Shelf::All() const {
  std::vector<ShelfEntry> entries;
  std::vector<FoundFile> routes, dates;
  const std::string root = program_.app.Rescued() + "\\";
  files_.Host().Find(root + "*.*", routes);
  for (const auto& route : routes) {
    if (!route.folder() || route.dots() || route.link) continue;
    files_.Host().Find(root + route.name + "\\*.*", dates);
    for (const auto& date : dates) {
      if (!date.folder() || date.dots() || date.link) continue;
      ShelfEntry entry{.zip = route.name, .date = IsoDate(date.name)};
      entry.path = root + route.name + "\\" + date.name;
      std::string reason;
      files_.Host().Read(entry.path + kShelfReason, reason, kNoLimit);
      entry.why = reason.substr(0, reason.find_first_of("\r\n"));
      for (const auto& [from, to] : WayBack(entry)) {
        std::uint64_t size = 0;
        files_.Host().GetSize(from, size);
        entry.bytes += size;
        ++entry.files;
      }
      entry.files += RenamesBack(entry).size();
      entries.push_back(std::move(entry));
    }
  }
  return entries;
}

std::vector<ShelfEntry> Shelf::List() const {
  std::vector<ShelfEntry> entries = All();
  std::erase_if(entries, [](const ShelfEntry& entry) { return entry.files == 0; });
  std::sort(entries.begin(), entries.end(), IsNewer);
  for (std::size_t i = 0; i < entries.size(); ++i) entries[i].number = static_cast<int>(i) + 1;
  return entries;
}

std::optional<ShelfEntry> Shelf::Find(int number) const {
  auto entries = List();
  if (number < 1 || number > static_cast<int>(entries.size())) return std::nullopt;
  return std::move(entries[static_cast<std::size_t>(number) - 1]);
}

std::vector<Shelf::Move> Shelf::WayBack(const ShelfEntry& entry) const {
  std::vector<Move> moves;
  const auto add = [&](const std::string& below, const std::string& root) {
    const std::string from = entry.path + below;
    files_.Walk(from + "\\*.*", [&](const std::string& folder, const std::string& name) {
      moves.push_back({folder + name, root + folder.substr(from.size()) + name});
    });
  };
  add("\\app", program_.app.App());
  add("\\game", program_.shared.TrainSimPath);
  add("\\elsewhere", entry.path + "\\elsewhere");
  return moves;
}

std::vector<Shelf::Move> Shelf::RenamesBack(const ShelfEntry& entry) const {
  std::vector<Move> renames;
  std::string lines;
  files_.Host().Read(entry.path + kShelfRenames, lines, kNoLimit);
  for (const auto& line : RecordLines(lines)) {
    const auto bar = line.find('|');
    if (bar == line.npos) continue;
    // A blank or a dot at the end of a name, where the host had one, does not come back.
    const std::string from = line.substr(0, line.find_last_not_of(" .", bar - 1) + 1),
                      to = line.substr(bar + 1);
    if (!EqualNoCase(from, to) && files_.FileExists(to)) renames.insert(renames.begin(), {to, from});
  }
  return renames;
}

std::string Shelf::ObstacleOf(const ShelfEntry& entry) const {
  for (const auto& [from, to] : RenamesBack(entry))
    if (files_.FileExists(to)) return to;
  for (const auto& [from, to] : WayBack(entry))
    if (files_.FileExists(to) && !files_.AreEqual(from, to)) return to;
  return {};
}

void Shelf::PutBack(const ShelfEntry& entry) const {
  const FileSystem::Pass pass(files_.Host());
  if (const std::string obstacle = ObstacleOf(entry); !obstacle.empty())
    throw RunTimeError(ErrorNumber::FileAlreadyExists, obstacle,
                       "another file stands there: move it away first, or take the rescued one from " +
                           files_.Host().HostPath(entry.path));
  const auto moves = WayBack(entry);
  std::uint64_t bytes = 0;
  for (const auto& [from, to] : moves)
    if (!files_.FileExists(to)) bytes += RoomFor(files_.Size(from));
  if (bytes > 0) files_.RequireRoom(program_.app.Routes(), bytes);
  for (const auto& [from, to] : moves) {
    if (files_.FileExists(to)) continue;
    files_.MakeFolders(CutBackslash(FolderOf(to)));
    files_.FileCopy(from, to);
  }
  for (const auto& [from, to] : RenamesBack(entry)) files_.Rename(from, to);
  files_.Flush(program_.app.App());
  if (!program_.shared.TrainSimPath.empty()) files_.Flush(program_.shared.TrainSimPath);
}

void Shelf::Drop(const ShelfEntry& entry) const {
  if (const int failed = files_.DelTree(entry.path); failed != 0)
    throw RunTimeError(ErrorNumber::PathFileAccessError, entry.path, "not all of it could be deleted");
  files_.Host().RemoveFolder(CutBackslash(FolderOf(entry.path)));  // the route's last rescue
}

void Shelf::Settle(std::string_view newest) const {
  auto entries = All();
  std::sort(entries.begin(), entries.end(), IsNewer);
  int number = 0;
  const std::uint64_t disk = files_.Host().DiskOf(program_.app.Rescued()).size;
  const std::uint64_t most = disk == 0 ? kMostBytes : std::min(kMostBytes, disk / 10);
  std::unordered_map<std::string, std::size_t> ofRoute;
  std::uint64_t bytes = 0;
  for (auto& entry : entries) {
    if (entry.files == 0) {
      Drop(entry);
      continue;
    }
    entry.number = ++number;
    bytes += entry.bytes;
    const bool isNew = EqualNoCase(entry.path, newest);
    const bool tooMany = ++ofRoute[UpperCase(entry.zip)] > kMostOfARoute;
    if (isNew) program_.watcher.ShelfChanged(entry, false);
    if (isNew || (!tooMany && bytes <= most)) continue;
    bytes -= entry.bytes;
    Drop(entry);
    program_.watcher.ShelfChanged(entry, true);
  }
}

}  // namespace quillon
