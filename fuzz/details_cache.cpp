// The memory of the catalogue, with a right checksum whatever it holds.
#include "catalogue/DetailsCache.h"
#include "core/FlatFile.h"
#include "fuzz/Target.h"

namespace quillon::fuzz {

void Try(std::string_view bytes) {
  World world;
  const std::string path = world.Get().app.DetailsCacheFile(), mark = "Quillon's routes 1\n";
  const bool sealed = bytes.starts_with(mark) && bytes.size() > mark.size() + 4;
  std::string cache = sealed ? std::string(bytes.substr(0, bytes.size() - 4)) : mark + std::string(bytes);
  Seal(cache);
  world.Memory().Put(path, cache);
  const std::vector<RouteFile> routes = {{"foo", 9, 1}, {"coastal_v1", 9, 1}};
  const auto contents = ContentsOf(world.Get(), routes, [](auto, auto) {});
  Require(contents.size() == routes.size(), "another number of routes");
  // The second time it finds what the first one has left.
  const auto again = ContentsOf(world.Get(), routes, [](auto, auto) {});
  for (std::size_t i = 0; i < routes.size(); ++i)
    Require(contents[i].description == again[i].description, "another description");
}

}  // namespace quillon::fuzz
