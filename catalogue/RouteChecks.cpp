#include "catalogue/RouteChecks.h"

#include <algorithm>

#include "core/archive/ArchiveCheck.h"

namespace quillon {

std::string NeededDamage(const std::vector<int>& damaged, const ArchiveReader& archive, const RouteMap& map) {
  for (const int entry : map.entries)
    if (std::binary_search(damaged.begin(), damaged.end(), entry))
      return archive.Entries()[static_cast<std::size_t>(entry)].name;
  return {};
}

std::string RouteChecks::StampOf(const std::string& zip) const {
  FileSystem::Stamp stamp;
  if (program_.files.Host().GetStamp(program_.app.RouteFile(zip), stamp) != FileCode::Ok) return {};
  return std::to_string(stamp.size) + " " + std::to_string(stamp.modified);
}

void RouteChecks::Note(const std::string& zip, const std::string& damage) const {
  const auto batch = program_.ini.Batch();
  program_.ini.WriteIni(zip, "Checked", StampOf(zip), program_.app.ChecksIni());
  program_.ini.WriteIni(zip, "Damaged", damage, program_.app.ChecksIni());
}

void RouteChecks::Require(const std::string& zip, const ArchiveReader& archive, const RouteMap& map,
                          Progress& progress) const {
  const auto refuse = [&](const std::string& reason) {
    throw RunTimeError(ErrorNumber::InvalidFileFormat, archive.InputFile, reason);
  };
  if (map.unreadable >= 0) {
    const ArchiveEntry& entry = archive.Entries()[static_cast<std::size_t>(map.unreadable)];
    refuse(entry.name + " can't be unpacked: " + entry.Obstacle());
  }
  const std::string file = program_.app.ChecksIni();
  std::string damage = program_.ini.ReadIni(zip, "Damaged", "", file);
  if (program_.ini.ReadIni(zip, "Checked", "", file) != StampOf(zip)) {
    program_.Step("Checking the route file of " + zip);
    const auto damaged = DamagedEntries(program_.files, archive, [&](std::uint64_t done, std::uint64_t all) {
      progress.Detail(done, all, "bytes");
      progress.Yield();
    });
    progress.Detail(0, 0, {});
    damage = NeededDamage(damaged, archive, map);
    Note(zip, damage);
  }
  if (!damage.empty()) refuse("the data of " + damage + " are damaged");
}

}  // namespace quillon
