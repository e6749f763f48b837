// Zips: the directory, what intake asks of it, and all entries unpacked.
#include <filesystem>
#include <fstream>

#include "catalogue/RouteMap.h"
#include "core/archive/ArchiveCheck.h"
#include "core/archive/ArchiveReader.h"
#include "fuzz/Target.h"

namespace quillon::fuzz {

void Try(std::string_view bytes) {
  static World world{World::OnDisk()};
  Files& files = world.DiskFiles();
  std::ofstream(world.Folder() + "/a.zip", std::ios::binary) << bytes;
  ArchiveReader archive(files);
  archive.InputFile = world.Folder() + "\\a.zip";
  archive.ReadDirectory();
  BombIn(files, archive);
  MapRoute(archive);
  archive.FileWhereFolderIsWanted();
  std::uint64_t claimed = 0;
  for (const auto& entry : archive.Entries()) claimed = SaturatedSum(claimed, entry.size);
  if (claimed > 1u << 20) return;  // more is only slow
  bool whole = DamagedEntries(files, archive, [](auto, auto) {}).empty();
  for (const auto& entry : archive.Entries()) whole = whole && entry.Obstacle().empty();
  archive.OutputFolder = world.Folder() + "\\out\\";
  archive.AddFilter("*");
  try {
    archive.Extract();
  } catch (const RunTimeError& error) {
    Require(!whole || error.number() != 321, "whole to the check, damaged to the extraction");
  }
  std::filesystem::remove_all(world.Folder() + "/out");
  for (const auto& file : std::filesystem::directory_iterator(world.Folder()))
    Require(file.path().filename() == "a.zip" || file.path().filename() == "app", "written outside");
}

}  // namespace quillon::fuzz
