#include "shelf/OwnFiles.h"

#include <algorithm>
#include <array>

#include "core/text/Text.h"

namespace quillon {
namespace {

/// Terrain that the game makes again.
bool IsGenerated(std::string_view path) {
  const std::string lower = LowerCase(path);
  return lower.ends_with("_e.raw") || lower.ends_with("_n.raw");
}

}  // namespace

OwnFiles::OwnFiles(Program& program, std::vector<std::string> zips)
    : program_(program),
      files_(program.files),
      route_(program.BelowGame(kWorkingRoute)),
      zips_(std::move(zips)),
      placed_(program) {
  for (const auto& zip : zips_) archives_.emplace_back(files_, program.app.RouteFile(zip));
}

bool OwnFiles::IsOwn(const std::string& path) {
  FileSystem::Stamp stamp;
  if (path.ends_with(kPartMark) || files_.Host().GetStamp(path, stamp) != FileCode::Ok) return false;
  if (placed_.Covers(stamp.changed) && !placed_.IsNotedOwn(path) &&
      !placed_.IsNotedOwn(ReplaceAll(path, kBackupPrefix, "")))
    return false;
  std::vector<FoundFile> self;
  if (files_.Host().Find(path, self) != FileCode::Ok || self.front().link || self.front().folder())
    return false;
  return !IsGenerated(path) && !IsHeldElsewhere(path, stamp);
}

void OwnFiles::KeepBelow(Rescue& rescue, const std::string& folder, const Files::Each& each) {
  files_.Walk(folder + "\\*.*", [&](const std::string& place, const std::string& name) {
    KeepIfOwn(rescue, place + name);
    program_.watcher.Yield();
    if (each) each();
  });
}

void OwnFiles::KeepSaves(Rescue& rescue) {
  const std::string saves = program_.BelowGame(kWorkingSaves) + "\\";
  files_.Walk(saves + "*.*", [&](const std::string& folder, const std::string& name) {
    const bool isStored =
        folder == saves && std::any_of(zips_.begin(), zips_.end(), [&](const std::string& zip) {
          return files_.AreEqual(program_.app.Saves(zip) + "\\" + name, saves + name);
        });
    if (!isStored && !name.ends_with(kPartMark)) rescue.Keep(folder + name);
  });
}

bool OwnFiles::IsHeldElsewhere(const std::string& path, const FileSystem::Stamp& stamp) {
  const std::string below = path.substr(std::min(path.size(), route_.size()));
  const std::string uncovered = ReplaceAll(below, kBackupPrefix, "");
  // Only what a load that was cut short has begun to write: its route is the last.
  const bool halfWritten = zips_.size() > 1 && placed_.IsOfAnOpenLoad(stamp.changed) &&
                           archives_.back().HoldsLongerThan(FileNameOf(below), stamp.size);
  return halfWritten || IsHeldAs(below, path) || (uncovered != below && IsHeldAs(uncovered, path));
}

bool OwnFiles::IsHeldAs(const std::string& below, const std::string& path) {
  const auto holds = [&](ArchiveIndex& archive) { return archive.Holds(FileNameOf(below), path); };
  return IsInAStore(below, path) || std::any_of(archives_.begin(), archives_.end(), holds) ||
         IsOfTheGame(below, path);
}

bool OwnFiles::IsInAStore(const std::string& below, const std::string& path) {
  const auto last = below.rfind('\\');
  const std::string folder = UpperCase(below.substr(0, last == below.npos ? 0 : last));
  const std::string name(FileNameOf(below));
  using Store = std::string (Installation::*)(std::string_view) const;
  constexpr std::array<std::pair<std::string_view, Store>, 4> kStores = {
      {{"\\ACTIVITIES", &Installation::Activities},
       {"\\PATHS", &Installation::Paths},
       {"\\SERVICES", &Installation::Services},
       {"\\TRAFFIC", &Installation::Traffic}}};
  const auto equals = [&](const std::string& other) { return files_.AreEqual(other, path); };
  for (const auto& zip : zips_) {
    if (equals(program_.app.Custom(zip) + below)) return true;
    for (const auto& [place, store] : kStores)
      if (folder == place && (equals((program_.app.*store)(zip) + "\\" + name) ||
                              equals(program_.app.DefaultActivities() + folder + "\\" + zip + "\\" + name)))
        return true;
  }
  return false;
}

bool OwnFiles::IsOfTheGame(const std::string& below, const std::string& path) {
  const auto equals = [&](std::string_view folder) {
    return files_.AreEqual(program_.BelowGame(folder) + below, path);
  };
  return equals("\\TEMPLATE") || std::any_of(kDefaultRoutes.begin(), kDefaultRoutes.end(), equals) ||
         equals("\\Global") || equals(kExtras) ||
         files_.AreEqual(program_.app.EnvDefaults() + "\\" + std::string(FileNameOf(below)), path) ||
         files_.AreEqual(program_.BelowGame("\\Routes\\Europe2\\TerrTex\\Snow\\oegenfield3.ace"), path);
}

}  // namespace quillon
