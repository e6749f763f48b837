// Archives of other formats, alone and behind a program, made into zips.
#include "core/archive/ForeignArchive.h"

#include <filesystem>
#include <fstream>

#include "core/archive/ArchiveCheck.h"
#include "fuzz/Target.h"

namespace quillon::fuzz {

void Try(std::string_view bytes) {
  static World world{World::OnDisk()};
  const std::string packed = world.Folder() + "\\a.7z", zip = world.Folder() + "\\a.zip";
  std::ofstream(world.Folder() + "/a.7z", std::ios::binary) << bytes;
  Files& files = world.DiskFiles();
  if (bytes.starts_with("MZ")) HasForeignArchive(files, packed, [] {});
  std::filesystem::remove(world.Folder() + "/a.zip");
  RebuildAsZip(files, {packed}, zip, [](auto, auto) {});
  // What was made of it is whole.
  ArchiveReader archive(files);
  archive.InputFile = zip;
  archive.ReadDirectory();
  Require(BombIn(files, archive).empty(), "a bomb was made");
  Require(DamagedEntries(files, archive, [](auto, auto) {}).empty(), "a damaged zip was made");
}

}  // namespace quillon::fuzz
