// A route's name, its number among equals, and what a second intake of it leaves alone.
#include <filesystem>

#include "core/RunTimeError.h"
#include "core/Text.h"
#include "intake/RouteName.h"
#include "tests/intake/IntakeTest.h"

namespace quillon {
namespace {

class CatalogueEntryTest : public IntakeTest {
 protected:
  /// Adds a route with the given bytes as its track file.
  int AddTrack(const std::string& zip, const std::string& bytes) {
    program.Drop(zip + ".zip", {Entry("r/tiles/a.t"), Entry("r/r.trk", bytes)});
    return program.Run("add");
  }
};

/// The name in a track file, or the number of the error.
std::string NameIn(const std::string& text) {
  try {
    return RouteNameFrom(text, "x.trk");
  } catch (const RunTimeError& error) {
    EXPECT_EQ(error.path(), "x.trk");
    return "error " + std::to_string(error.number());
  }
}

TEST(RouteNameTest, StandsBetweenNameAndDescription) {
  EXPECT_EQ(NameIn("Name ( \"Foo\" )\r\nDescription ( \"x\" )"), "Foo");
  EXPECT_EQ(NameIn("nAME ( Foo )\ndESCRIPTION"), "Foo");
  EXPECT_EQ(NameIn("Name ( \"Foo (West) Line\" )\nDescription"), "Foo (West");
  EXPECT_EQ(NameIn("Name (  \"  Foo  \"Bar\" \"  )\nDescription"), "Foo  Bar");
  EXPECT_EQ(NameIn("FileName ( xyz )\nName ( \"Foo\" )\nDescription"), "xyz");
  EXPECT_EQ(NameIn("Names ( a )\nName ( \"b\" )\nDescription"), "b");
  EXPECT_EQ(NameIn("Name ( \"Foo\" )"), "error 5");
  EXPECT_EQ(NameIn("Description ( x )"), "error 5");
  EXPECT_EQ(NameIn("Description ( x )\nName ( \"Foo\" )"), "error 5");
  const auto apart = [](std::size_t distance) {
    const std::string name = "Name ( \"Foo\" )";
    return name + std::string(distance - name.size(), ' ') + "Description";
  };
  EXPECT_EQ(NameIn(apart(32767)), "Foo");
  EXPECT_EQ(NameIn(apart(32768)), "error 6");
}

TEST_F(CatalogueEntryTest, NamesAreReadFromEveryEncodingOfTheGame) {
  const std::string text = "Name ( \"Z\xC3\xBCrich \xE2\x82\xAC\" )\r\nDescription ( x )";
  AddTrack("utf16", EncodeGameText(text));
  AddTrack("utf8", text);
  AddTrack("mark", "\xEF\xBB\xBF" + text);
  AddTrack("ansi", "Name ( \"Z\xFCrich \x80\" )\r\nDescription ( x )");
  EXPECT_EQ(NameOf("utf16"), "Z\xC3\xBCrich \xE2\x82\xAC");
  for (const std::string zip : {"utf8", "mark", "ansi"})
    EXPECT_EQ(program.Ini("scripts.ini", zip, "Script"), NameOf("utf16")) << zip;
  EXPECT_EQ(ZipOf(NameOf("ansi")), "ansi");
}

TEST_F(CatalogueEntryTest, ATrackFileWithoutANameEndsTheIntakeAndLeavesTheRouteFile) {
  EXPECT_EQ(AddTrack("nameless", "Name ( \"Foo\" )"), 1);
  EXPECT_EQ(program.LastError(), 5);
  EXPECT_TRUE(program.LastErrorPath().ends_with("r.trk"));
  EXPECT_TRUE(program.Exists(program.AppPath("routes\\nameless.qnz")));
  EXPECT_EQ(NameOf("nameless"), program.kMissing);
  EXPECT_EQ(program.Run("routes"), 0);
  EXPECT_EQ(program.Texts("row"), Texts{"There has been an error.  Please run Cleanup."});
}

TEST_F(CatalogueEntryTest, EqualNamesAreNumbered) {
  program.Drop("a.zip", RouteEntries("Foo"));
  program.Drop("b.zip", RouteEntries("Foo"));
  program.Run("add");
  EXPECT_EQ(ZipOf("Foo"), "a");
  EXPECT_EQ(ZipOf("Foo (2)"), "b");
  EXPECT_EQ(NameOf("b"), "Foo (2)");
  EXPECT_EQ(program.Ini("scripts.ini", "b", "Script"), "Foo");
  EXPECT_EQ(program.Ini("routes.ini", "Versions", "Foo"), "2");
  EXPECT_EQ(program.Ini("routes.ini", "Current", "Zip"), "b");
  EXPECT_EQ(program.Ini("routes.ini", "Current", "Temp"), "Foo (2)");

  program.DeleteSection("routes.ini", "Foo");  // a removed route's name is free, and the count goes on
  program.AddRoute("c.zip", "Foo");
  EXPECT_EQ(NameOf("c"), "Foo");
  EXPECT_EQ(program.Ini("routes.ini", "Versions", "Foo"), "3");
  program.DeleteSection("routes.ini", "Foo (2)");
  program.AddRoute("d.zip", "Foo");
  EXPECT_EQ(NameOf("d"), "Foo (2)");
  program.AddRoute("e.zip", "Foo");
  EXPECT_EQ(NameOf("e"), "Foo (3)");

  program.SetIni("routes.ini", "Versions", "Foo", "1");  // every number is taken: the last one is used again
  program.AddRoute("f.zip", "Foo");
  EXPECT_EQ(NameOf("f"), "Foo (2)");
  EXPECT_EQ(ZipOf("Foo (2)"), "f");
}

TEST_F(CatalogueEntryTest, AKnownZipKeepsItsName) {
  program.AddRoute("foo.zip", "Foo");
  program.Write(program.AppPath("routes\\terrain_cache\\foo.qnc"), "cache");
  std::filesystem::permissions(program.AppPath("routes\\terrain_cache\\foo.qnc"),
                               std::filesystem::perms::owner_read);
  program.SetIni("routes.ini", "Current", "Temp", "Elsewhere");
  const std::string catalogue = program.ReadBytes(program.AppPath("resources\\Do_Not_Delete!\\routes.ini"));

  program.Drop("foo.zip", RouteEntries("Bar"));
  const std::string bytes = program.ReadBytes(program.Download("foo.zip"));
  EXPECT_EQ(program.Run("add"), 0);
  EXPECT_EQ(program.ReadBytes(program.AppPath("resources\\Do_Not_Delete!\\routes.ini")), catalogue);
  EXPECT_EQ(program.Ini("scripts.ini", "foo", "Script"), "Bar");
  EXPECT_EQ(program.ReadBytes(program.AppPath("routes\\foo.qnz")), bytes);
  EXPECT_FALSE(program.Exists(program.AppPath("routes\\terrain_cache\\foo.qnc")));
  EXPECT_EQ(Fate("foo"), "Installed ALL qnz");
  EXPECT_EQ(Finish(), "Finished adding 1 new route.");
}

TEST_F(CatalogueEntryTest, CleanUpTakesTheOriginalsInAgainWhenEntriesAreMissing) {
  program.AddRoute("bar.zip", "Bar");
  program.Drop("foo.zip", {Entry("route.zip", ZipBytes(RouteEntries("Foo")))});
  program.Run("add");
  ASSERT_EQ(ZipOf("Foo"), "Quillon-foo");
  program.DeleteSection("routes.ini", "Foo");
  program.DeleteSection("routes.ini", "Quillon-foo");
  EXPECT_EQ(program.Script("routes\nclean\n"), 0);
  EXPECT_EQ(ZipOf("Foo"), "Quillon-foo");
  EXPECT_EQ(NameOf("Quillon-foo"), "Foo");
  EXPECT_EQ(NameOf("bar"), "Bar");
  EXPECT_EQ(Fate("Quillon-foo"), "ADD ALL qnz");
  EXPECT_EQ(Fate("bar"), "Installed ALL qnz") << "in the same record";
  EXPECT_EQ(Fate("foo"), "Installed");
}

}  // namespace
}  // namespace quillon
