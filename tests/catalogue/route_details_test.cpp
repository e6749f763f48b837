// What is known of all routes: its sources, its memory, and what a removal leaves of it.
#include "tests/world/TestProgram.h"

namespace quillon {
namespace {

class RouteDetailsTest : public ProgramTest {
 protected:
  RouteDetailsTest() {
    FirstRun();
    options.answerYes = true;
  }
  /// The row of a route, after `routes --details`.
  Event Details(const std::string& zip) {
    EXPECT_EQ(Run(Command{.name = "routes", .details = true}), 0);
    for (const auto& event : Events("route"))
      if (event["zip"] == zip) return event;
    return Event::object();
  }
};

TEST_F(RouteDetailsTest, TellsOfEachRouteWhatItsFileTheStoresAndTheGameHold) {
  ASSERT_EQ(AddRoute("foo.zip", "Foo"), 0);
  ASSERT_EQ(AddRoute("bar.zip", "Bar", {Entry("route\\activities\\more.act", "more")}), 0);
  Write(AppPath("routes\\Saves\\foo\\one.sav"), "1");
  Event foo = Details("foo");
  EXPECT_EQ(foo["name"], "Foo");
  EXPECT_EQ(foo["activities"], 1);
  EXPECT_EQ(foo["saves"], 1);
  EXPECT_EQ(foo["packed"], ReadBytes(AppPath("routes\\foo.qnz")).size());
  EXPECT_EQ(foo["files"], Unzipped(AppPath("routes\\foo.qnz")).size());
  EXPECT_EQ(foo["added"], Ini("dates.ini", "Added", "foo"));
  EXPECT_EQ(foo["lastLoaded"], "");
  EXPECT_EQ(Texts("route", "zip"), (Strings{"bar", "foo"}));
  EXPECT_EQ(Details("bar")["activities"], 2);

  ASSERT_EQ(Run("load", "Foo"), 0);
  Play("Activities\\own.act");
  Write(GamePath("Saves\\Quillon-route\\two.sav"), "2");
  foo = Details("foo");
  EXPECT_TRUE(foo["loaded"].get<bool>());
  EXPECT_EQ(foo["activities"], 2) << "of the loaded route those of the game count";
  EXPECT_EQ(foo["saves"], 2);
  EXPECT_EQ(foo["lastLoaded"], Ini("dates.ini", "Loaded", "foo"));
  EXPECT_NE(foo["lastLoaded"], "");
}

TEST_F(RouteDetailsTest, AChangedFileIsReadAnewAndADamagedMemoryIsForgotten) {
  ASSERT_EQ(AddRoute("foo.zip", "Foo"), 0);
  const int files = Details("foo")["files"];
  const auto more = RouteEntries("Foo", {Entry("route\\more.txt", "more")});
  Write(AppPath("routes\\foo.qnz"), ZipBytes(more));
  EXPECT_EQ(Details("foo")["files"], files + 1);
  for (const std::string damaged : {"", "Quillon's routes 1\n", "Quillon's routes 1\n\x03foo nonsense"}) {
    Write(DataPath("routes.cache"), damaged);
    EXPECT_EQ(Details("foo")["files"], files + 1);
  }
  Write(AppPath("routes\\foo.qnz"), "no zip");
  EXPECT_EQ(Details("foo")["files"], 0);
}

TEST_F(RouteDetailsTest, ARemovedRouteIsForgottenAndItsLikeBeginsAnew) {
  ASSERT_EQ(AddRoute("foo.zip", "Foo"), 0);
  SetIni("dates.ini", "Loaded", "foo", "2001-01-01T00:00:00");
  SetIni("misc_info\\playable.ini", "foo", "Of", "7");
  EXPECT_FALSE(Details("foo")["playable"].is_null());
  ASSERT_EQ(Run("remove", "Foo"), 0);
  EXPECT_EQ(Ini("dates.ini", "Added", "foo") + Ini("dates.ini", "Loaded", "foo"),
            std::string(kMissing) + kMissing);
  ASSERT_EQ(Run(Command{.name = "shelf", .putBack = 1}), 0);
  const Event foo = Details("foo");
  EXPECT_TRUE(foo["playable"].is_null());
  EXPECT_EQ(foo["lastLoaded"], "");
  EXPECT_NE(foo["added"], "") << "without a note the time of its file counts";
}

}  // namespace
}  // namespace quillon
