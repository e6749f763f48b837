#include "loading/TerrainCache.h"

#include <array>

#include "core/archive/ArchiveWriter.h"

namespace quillon {
namespace {

constexpr int kFewestEntries = 7;

std::string FolderIn(const std::string& path) { return path.substr(0, path.rfind('\\') + 1); }

/// The pattern may match by a name's start: files are taken under the plain extension only.
std::string RawName(const std::string& name) { return name.substr(0, name.rfind('.')) + ".raw"; }

}  // namespace

/// The game makes anew what a damaged cache lacks, so its faults are passed over.
ArchiveReader TerrainCache::Reader(const std::string& cache) {
  ArchiveReader reader(program_.files, [] {});
  reader.InputFile = cache;
  reader.KeepFolders = false;
  reader.ReadDirectory();
  return reader;
}

void TerrainCache::SizeTest(const std::string& cache) {
  if (program_.files.FileExists(cache) && Reader(cache).EntryCount() < kFewestEntries)
    program_.files.KillReadOnly(cache);
}

std::vector<std::string> TerrainCache::TerrainFiles() const {
  std::vector<std::string> files;
  for (const auto* pattern :
       {"\\Tiles\\*_e.raw", "\\Tiles\\*_n.raw", "\\LO_Tiles\\*_e.raw", "\\LO_Tiles\\*_n.raw"}) {
    const std::string path = WorkingRoute + pattern;
    for (const auto& name : program_.files.ListFiles(path)) files.push_back(FolderIn(path) + RawName(name));
  }
  return files;
}

void TerrainCache::Gather(const std::string& PreviousZip) {
  if (PreviousZip == kNoData || !program_.files.FileExists(program_.app.RouteFile(PreviousZip))) return;
  const std::string cache = program_.app.TerrainCache(PreviousZip),
                    temporary = program_.app.TerrainCacheTemp(PreviousZip);
  SizeTest(cache);
  if (program_.files.FileExists(cache)) return;
  texts_.SetTerrainInfo(
      "Quillon is gathering the terrain files from the previously loaded route so it will load much faster "
      "the next time you drive it in Train Simulator.  This will only need to be done once per route.",
      true);
  const std::vector<std::string> files = TerrainFiles();
  Pack(temporary, files);
  program_.files.Rename(temporary, cache);
  program_.files.Flush(cache);
  // Nothing goes before the cache stands: a run that is cut short here is not started again.
  FileCount count(progress_, files.size());
  for (const auto& file : files) {
    program_.files.KillIfThere(file);
    count();
  }
  SizeTest(cache);
}

void TerrainCache::Pack(const std::string& archive, const std::vector<std::string>& files) {
  ArchiveWriter writer(program_.files);
  writer.ArchiveFile = archive;
  writer.PrepareRebuild(WorkingRoute + "\\");
  for (const auto& file : files) writer.AddFiles(file);
  writer.OnProgress = [this](const ArchiveWriter& running) {
    progress_.Value(running.PercentDone());
    progress_.Detail(running.BytesDone(), running.BytesToDo(), "bytes");
    progress_.Yield();
  };
  writer.Zip();
  progress_.Detail(0, 0, {});
}

void TerrainCache::Clear() {
  constexpr std::array<const char*, 4> kPatterns = {"\\Tiles\\*.raw", "\\LO_Tiles\\*.raw", "\\LO_Tiles\\*.t",
                                                    "\\Tiles\\*.t"};
  std::uint64_t all = 0;
  for (const auto* pattern : kPatterns) all += program_.files.ListFiles(WorkingRoute + pattern).size();
  FileCount count(progress_, all);
  for (const auto* pattern : kPatterns) {
    const std::string path = WorkingRoute + pattern;
    for (const auto& name : program_.files.ListFiles(path)) {
      program_.files.KillReadOnly(FolderIn(path) + name);
      count();
    }
  }
}

void TerrainCache::Restore(const std::string& LoadZip) {
  const std::string cache = program_.app.TerrainCache(LoadZip);
  if (!program_.files.FileExists(cache)) return;
  ArchiveReader reader = Reader(cache);
  reader.OutputFolder = WorkingRoute + "\\Tiles\\";
  reader.AddFilter("*_e.raw");
  reader.AddFilter("*_n.raw");
  reader.OnProgress = [this](const ArchiveReader& running) {
    progress_.Value(running.PercentDone());
    progress_.Detail(running.BytesDone(), running.BytesToDo(), "bytes");
    progress_.Yield();
  };
  progress_.Caption("Optimizing terrain generation speed...");
  reader.Extract();
  progress_.Detail(0, 0, {});
}

}  // namespace quillon
