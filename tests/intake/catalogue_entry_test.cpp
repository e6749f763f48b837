// A route's name, its number among equals, and what a second intake of it leaves alone.
#include "catalogue/RouteName.h"
#include "core/text/Text.h"
#include "tests/intake/IntakeTest.h"
#include "tests/world/HostFiles.h"

namespace quillon {
namespace {

class CatalogueEntryTest : public IntakeTest {
 protected:
  /// Adds a route with the given bytes as its track file.
  int AddTrack(const std::string& zip, const std::string& bytes) {
    Drop(zip + ".zip", {Entry("r/tiles/a.t"), Entry("r/r.trk", bytes)});
    return Run("add");
  }
};

TEST(RouteNameTest, StandsBetweenNameAndDescription) {
  const auto apart = [](std::size_t distance) {
    const std::string name = "Name ( \"Foo\" )";
    return name + std::string(distance - name.size(), ' ') + "Description";
  };
  const std::vector<std::pair<std::string, std::string>> names = {
      {"Name ( \"Foo\" )\r\nDescription ( \"x\" )", "Foo"},
      {"nAME ( Foo )\ndESCRIPTION", "Foo"},
      {"Name ( \"Foo (West) Line\" )\nDescription", "Foo (West"},
      {"Name (  \"  Foo  \"Bar\" \"  )\nDescription", "Foo  Bar"},
      {"FileName ( xyz )\nName ( \"Foo\" )\nDescription", "xyz"},
      {"Names ( a )\nName ( \"b\" )\nDescription", "b"},
      {"Name ( a\tb\n)Description", "a b"},
      {apart(32767), "Foo"}};
  for (const auto& [text, name] : names) EXPECT_EQ(RouteNameFrom(text, "x.trk"), name) << text;
  const std::vector<std::pair<std::string, int>> errors = {{"Name ( \"Foo\" )", 5},
                                                           {"Description ( x )", 5},
                                                           {"Description ( x )\nName ( \"Foo\" )", 5},
                                                           {"Name Foo Description", 5},
                                                           {apart(32768), 6}};
  for (const auto& [text, number] : errors)
    EXPECT_EQ(ErrorOf([text = text] { RouteNameFrom(text, "x.trk"); }),
              std::pair(number, std::string("x.trk")))
        << text;
}

TEST_F(CatalogueEntryTest, NamesAreReadFromTheEncodingsOfTheGame) {
  AddTrack("ansi", "Name ( \"Z\xFCrich \x80\" ) Description");
  EXPECT_EQ(NameOf("ansi") + Ini("scripts.ini", "ansi", "Script"),
            "Z\xC3\xBCrich \xE2\x82\xACZ\xC3\xBCrich \xE2\x82\xAC");
  EXPECT_EQ(ZipOf(NameOf("ansi")), "ansi");
}

TEST_F(CatalogueEntryTest, ATrackFileWithoutANameEndsTheIntakeAndLeavesTheRouteFile) {
  EXPECT_EQ(AddTrack("nameless", "Name ( \"Foo\" )"), 1);
  EXPECT_EQ(LastError(), 5);
  EXPECT_TRUE(LastErrorPath().ends_with("r.trk"));
  EXPECT_TRUE(Exists(AppPath("routes\\nameless.qnz")));
  EXPECT_EQ(NameOf("nameless"), kMissing);
  EXPECT_EQ(Run("routes"), 0);
  EXPECT_EQ(Texts("row"), Strings{"There has been an error.  Please run Cleanup."});
}

TEST_F(CatalogueEntryTest, EqualNamesAreNumbered) {
  Drop("a.zip", RouteEntries("Foo"));
  Drop("b.zip", RouteEntries("Foo"));
  Run("add");
  EXPECT_EQ(NameOf("a") + ", " + NameOf("b"), "Foo, Foo (2)");
  EXPECT_EQ(ZipOf("Foo") + ZipOf("Foo (2)"), "ab");
  EXPECT_EQ(Ini("scripts.ini", "b", "Script"), "Foo");
  EXPECT_EQ(Ini("routes.ini", "Versions", "Foo"), "2");
  EXPECT_EQ(Current({"Zip", "Temp"}), "b|Foo (2)");

  // A removed route's name is free, and the count goes on.
  const std::vector<std::array<std::string, 3>> cases = {
      {"c", "Foo", "Foo"}, {"d", "Foo (2)", "Foo (2)"}, {"e", "", "Foo (3)"}};
  for (const auto& [zip, removed, name] : cases) {
    DeleteSection("routes.ini", removed);
    AddRoute(zip + ".zip", "Foo");
    EXPECT_EQ(NameOf(zip), name);
  }
  SetIni("routes.ini", "Versions", "Foo", "1");  // every number is taken: the last one is used again
  AddRoute("f.zip", "Foo");
  EXPECT_EQ(NameOf("f") + ZipOf("Foo (2)"), "Foo (2)f");
}

TEST_F(CatalogueEntryTest, AKnownZipKeepsItsName) {
  AddRoute("foo.zip", "Foo");
  Write(AppPath("routes\\terrain_cache\\foo.qnc"), "cache");
  MakeReadOnly(AppPath("routes\\terrain_cache\\foo.qnc"));
  SetIni("routes.ini", "Current", "Temp", "Elsewhere");
  const std::string catalogue = ReadBytes(DataPath("routes.ini"));

  Drop("foo.zip", RouteEntries("Bar"));
  const std::string bytes = ReadBytes(Download("foo.zip"));
  EXPECT_EQ(Run("add"), 0);
  EXPECT_EQ(ReadBytes(DataPath("routes.ini")), catalogue);
  EXPECT_EQ(Ini("scripts.ini", "foo", "Script"), "Bar");
  EXPECT_EQ(ReadBytes(AppPath("routes\\foo.qnz")), bytes);
  EXPECT_FALSE(Exists(AppPath("routes\\terrain_cache\\foo.qnc")));
  EXPECT_EQ(Fate("foo"), "Installed ALL qnz");
  EXPECT_EQ(Finish(), "Finished adding 1 new route.");
}

}  // namespace
}  // namespace quillon
