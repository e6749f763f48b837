// The memory of the Checkup, its checksum right whatever it holds; and the causes that it leaves.
#include "checkup/CauseFile.h"
#include "checkup/FactsCache.h"
#include "core/FlatFile.h"
#include "fuzz/Target.h"

namespace quillon::fuzz {

/// As the whole file, or as the facts of the only file in it.
std::string CacheOf(std::string_view bytes, const GameFile& file) {
  std::string cache = "Quillon's facts 2\n";
  if (bytes.starts_with(cache)) {
    cache = bytes.substr(0, std::max(bytes.size(), cache.size() + 4) - 4);
  } else {
    AddNumber(cache, 1);
    AddText(cache, file.Path());
    for (const std::uint64_t number : {0ul, file.size, 1ul}) AddNumber(cache, number);
    AddText(cache, bytes);
    AddText(cache, "engine");
  }
  Seal(cache);
  return cache;
}

void Try(std::string_view bytes) {
  World world;
  const GameFile file{std::make_shared<const std::string>("\\game\\trains\\consists\\"), "a.con", 9, 1};
  world.Memory().Put(world.Get().app.FactsCacheFile(), CacheOf(bytes, file));
  world.Memory().Put("\\causes.json", bytes);
  FactsCache cache(world.Get());
  cache.Open();
  std::vector<FileFacts> facts(1);
  if (cache.Take(FileKind::Consist, file, facts[0]))
    for (const auto item : facts[0].items) Require(item < cache.Items().size(), "an item that is not there");
  cache.Save({{FileKind::Consist, std::vector{file}, facts}});
  ReadCauses(world.Get(), "\\causes.json");
  ReadCauseCounts(world.Get(), "\\causes.json");
}

}  // namespace quillon::fuzz
