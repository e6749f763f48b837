#include "catalogue/RouteMap.h"

#include <gtest/gtest.h>

#include "tests/world/HostFiles.h"
#include "tests/world/ZipMaker.h"

namespace quillon {
namespace {

RouteMap MapOf(const Strings& storedNames) {
  const TestFolder folder;
  std::vector<ZipEntry> entries;
  for (const auto& name : storedNames)
    entries.push_back({.name = name, .data = name.ends_with('/') ? "" : "x"});
  MakeZip(folder.Host("a.zip"), entries);
  HostFiles host;
  ArchiveReader archive(host.files);
  archive.InputFile = folder.Path("a.zip");
  archive.ReadDirectory();
  return MapRoute(archive);
}

TEST(RouteMap, FourPassesFindTheRoot) {
  const std::vector<std::pair<Strings, std::string>> cases = {
      {{"a/b/Tiles/t.t"}, "a\\b\\"},
      {{"A/World/w.w", "B/Tiles/t.t", "C/Tiles/t.t"}, "b\\"},         // tiles before world, the first of them
      {{"Tiles/t.t", "World/w.w", "Deep/x/TILES/t.t"}, "deep\\x\\"},  // an inner one before one at the top
      {{"Route/World/w.w", "Tiles/t.t"}, ""},                         // tiles at the top before any world
      {{"World/w.w", "x/y.s"}, ""},
      {{"World/w.w", "x/World/w.w"}, "x\\"},
      {{"R/LO_TILES/t.t", "R/Inner/World/w.w"}, "r\\inner\\"},  // no "tiles" of its own
      {{"R/Tiles/Tiles/t.t"}, "r\\"},
      {{"R/Tiles/", "S/World/w.w"}, "r\\"},
      {{"R/mytiles/t.t", "tiles.txt"}, ""},
      {{"/R/Tiles/t.t"}, "r\\"},
      {{}, ""}};
  for (const auto& [names, prefix] : cases)
    EXPECT_EQ(MapOf(names).RouteRootPrefix, prefix) << testing::PrintToString(names);
}

TEST(RouteMap, CutsTheRootOffEveryNameThatHoldsIt) {
  // "xyab\f.s" and "x\ab\g.s" hold the prefix further behind: they are cut from their start all the same.
  const auto map = MapOf({"AB/Tiles/t.t", "Readme.txt", "XYab/f.s", "x/ab/g.s", "AB/Shapes/\x8E.S"});
  EXPECT_EQ(map.lstRouteStrippedPath,
            (Strings{"tiles\\t.t", "readme.txt", "b\\f.s", "b\\g.s", "shapes\\\xC3\xA4.s"}));
  EXPECT_EQ(map.lstUnzipThese[2], "xyab\\f.s");
  EXPECT_EQ(map.entries, (std::vector<int>{0, 1, 2, 3, 4}));
}

TEST(RouteMap, RefusesTerrainBackupsFoldersAndConsists) {
  const auto map =
      MapOf({"R/", "R/Tiles/", "R/Tiles/a_E.RAW", "R/Tiles/a_n.raw", "R/World/w.BK", "R/x.Con",
             "R/Tiles/a_y.raw", "R/Tiles/e.raw", "R/_f.raw", "R/x.cons", "R/w.bk.w", "R/icon.dat"});
  EXPECT_EQ(map.lstRouteStrippedPath,
            (Strings{"tiles\\a_y.raw", "tiles\\e.raw", "_f.raw", "x.cons", "w.bk.w", "icon.dat"}));
  EXPECT_EQ(map.entries.front(), 6);
}

}  // namespace
}  // namespace quillon
