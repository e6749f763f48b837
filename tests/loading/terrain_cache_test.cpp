// Terrain on its way out of the working route and back.
#include "core/text/Text.h"
#include "tests/world/TestProgram.h"

namespace quillon {
namespace {

class TerrainCacheTest : public ProgramTest {
 protected:
  TerrainCacheTest() {
    EXPECT_EQ(FirstRun(), 0);
    for (const std::string name : {"valley", "hill"})
      StoreRoute(name, name,
                 {Entry(name + "/" + name + ".trk", "track"), Entry(name + "/Tiles/" + name + ".t")});
  }

  void Load(const std::string& name) { ASSERT_EQ(Run("load", name), 0) << Last("error"); }
  /// What the game leaves when it has driven so many tiles.
  void Drive(int tiles) const {
    for (int i = 0; i < tiles; ++i) {
      const std::string tile = "-" + std::to_string(10 + i);
      Play("Tiles\\" + tile + "_e.raw", tile + " errors");
      Play("Tiles\\" + tile + "_n.RAW", tile + " normals");
    }
  }
  std::string Cache(const std::string& name) const {
    return AppPath("routes\\terrain_cache\\" + name + ".qnc");
  }
  Strings Tiles() const { return Names(WorkingPath("Tiles")); }
};

TEST_F(TerrainCacheTest, ComesBackWithItsRouteAllInOneFolder) {
  Load("valley");
  Drive(3);
  Play("LO_Tiles\\far_e.raw", "far errors");
  Play("Tiles\\-10_y.raw", "heights");
  Load("hill");
  EXPECT_EQ(Tiles(), Strings{"hill.t"}) << "no tile of another route stays";
  EXPECT_EQ(Names(AppPath("routes\\terrain_cache")), Strings{"valley.qnc"});
  EXPECT_EQ(Unzipped(Cache("valley")).size(), 7u);
  EXPECT_EQ(Texts("text", "control", "frmLoad").front(), "lblRouteName");
  Strings told;
  for (const auto& event : Events("text"))
    if (event["control"] == "lblTerrainInfo" && event["visible"] == true) told.push_back(event["text"]);
  ASSERT_EQ(told.size(), 1u);
  EXPECT_TRUE(told[0].starts_with("Quillon is gathering the terrain files"));

  Load("valley");
  EXPECT_EQ(Captions("frmLoad").front(), "Optimizing terrain generation speed...");
  EXPECT_EQ(Tiles(), (Strings{"-10_e.raw", "-10_n.raw", "-11_e.raw", "-11_n.raw", "-12_e.raw", "-12_n.raw",
                              "far_e.raw", "valley.t"}));
  EXPECT_EQ(Working("Tiles\\far_e.raw"), "far errors");
  EXPECT_FALSE(Exists(WorkingPath("LO_Tiles\\far_e.raw")));
}

TEST_F(TerrainCacheTest, SixFilesMakeNoCacheAndAreGone) {
  Load("valley");
  Drive(3);
  Load("hill");
  EXPECT_FALSE(Exists(Cache("valley")));
  EXPECT_TRUE(Names(AppPath("routes\\terrain_cache")).empty());
  Load("valley");
  EXPECT_EQ(Tiles(), Strings{"valley.t"});
  EXPECT_EQ(Captions("frmLoad").front(), "Initializing parameters...");
}

TEST_F(TerrainCacheTest, AValidCacheIsNeverReplaced) {
  Load("valley");
  Drive(4);
  Load("hill");
  const std::string first = ReadBytes(Cache("valley"));
  Load("valley");
  Drive(6);
  Load("valley");  // put away and loaded again
  EXPECT_EQ(ReadBytes(Cache("valley")), first);
  EXPECT_EQ(Tiles().size(), 9u);
}

TEST_F(TerrainCacheTest, ADamagedCacheCostsOnlyItself) {
  Load("valley");
  Drive(5);
  Load("hill");
  Write(Cache("valley"), "no archive");
  Load("valley");
  EXPECT_EQ(Tiles(), Strings{"valley.t"});
  Drive(5);
  Load("hill");
  EXPECT_EQ(Unzipped(Cache("valley")).size(), 10u) << "the damaged one was deleted, the next one gathered";
}

TEST_F(TerrainCacheTest, ARouteThatLeftTheCatalogueIsNotGathered) {
  Load("valley");
  Drive(5);
  Remove(AppPath("routes\\valley.qnz"));
  Load("hill");
  EXPECT_FALSE(Exists(Cache("valley")));
  EXPECT_EQ(Tiles(), Strings{"hill.t"});
}

}  // namespace
}  // namespace quillon
