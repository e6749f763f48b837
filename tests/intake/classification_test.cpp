// Which zip is what, where each goes, and what is told of it.
#include "tests/intake/IntakeTest.h"

namespace quillon {
namespace {

class ClassificationTest : public IntakeTest {};

TEST_F(ClassificationTest, EachKindGoesToItsPlace) {
  const std::string inner = ZipBytes({Entry("a.txt")});
  const std::map<std::string, std::pair<std::string, std::vector<ZipEntry>>> zips = {
      {"good", {"Installed ADD ALL qnz", RouteEntries("Good")}},
      {"route.v1", {"Installed ADD ALL qnz", RouteEntries("Dotted")}},
      {"two", {"Not_Installed MSC", RouteEntries("Two", {Entry("A.Zip", inner), Entry("b.zip", inner)})}},
      {"two_and_exe", {"Not_Installed MSC", {Entry("setup.exe"), Entry("a.zip"), Entry("b.zip")}}},
      {"folder", {"Not_Installed MSC", {Entry("my.zipfiles/a.txt"), Entry("my.zipfiles/b.txt")}}},
      {"patch", {"Not_Installed MSC", {Entry("route/tiles/a.t"), Entry("readme.txt")}}},
      {"nothing", {"Not_Installed MSC", {}}},
      {"setup", {"Not_Installed EXE", {Entry("Setup.EXE", "program")}}},
      {"both", {"Not_Installed EXE", {Entry("setup.exe"), Entry("a.zip", inner)}}},
      {"text", {"Not_Installed EXE", RouteEntries("Text", {Entry("routes.exe.txt")})}}};
  for (const auto& [zip, kind] : zips) Drop(zip + ".zip", kind.second);
  Drop("UPPER.ZIP", RouteEntries("Upper"));
  EXPECT_EQ(Run("add"), 0);
  for (const auto& [zip, kind] : zips) EXPECT_EQ(Fate(zip), kind.first) << zip;
  EXPECT_EQ(Fate("UPPER"), "Installed ADD ALL qnz");
  EXPECT_EQ(Names(Download("")), Strings{});
  EXPECT_EQ(Finish(), "Finished adding 3 new routes.");
  EXPECT_EQ(Last("colour")["colour"], 49152);
  EXPECT_EQ(Last("bar")["value"], 100);
  EXPECT_EQ(NameOf("route.v1"), "Dotted");
}

TEST_F(ClassificationTest, WhatCannotBeReadIsBadAndLeavesNothingElse) {
  const std::string route = ZipBytes(RouteEntries("Cut")), cut = route.substr(0, route.size() - 30);
  Write(Download("cut.zip"), cut);
  Write(Download("empty.zip"), "");
  Drop("secret.zip", RouteEntries("Secret", {{.name = "route/x.s", .data = "x", .encrypted = true}}));
  Drop("out.zip", RouteEntries("Out", {Entry("../../../evil.txt", "evil")}));
  Drop("broken.zip", RouteEntries("Broken"), {.directoryShift = 5});
  const auto before = Names(Root());
  EXPECT_EQ(Run("add"), 0);
  for (const std::string zip : {"cut", "empty", "secret", "out", "broken"})
    EXPECT_EQ(Fate(zip), "bad_zip_files BAD") << zip;
  EXPECT_EQ(Names(Root()), before);
  EXPECT_EQ(Finish(), "No new routes added.");
  EXPECT_TRUE(Events("colour").empty());
  EXPECT_EQ(ReadBytes(AppPath("original_zips\\bad_zip_files\\cut.zip")), cut);
}

TEST_F(ClassificationTest, DamagedDataCostsNoMoreThanTheirOwnFile) {
  AddRoute("damaged.zip", "Damaged", {{.name = "notes.txt", .data = "notes", .badCrc = true}});
  EXPECT_EQ(Fate("damaged"), "Installed ADD ALL qnz");
  EXPECT_EQ(NameOf("damaged"), "Damaged");
  EXPECT_EQ(Stored("route_info\\damaged"), (Strings{"readme.txt", "route.trk"}));

  const ZipEntry huge = {.name = "a.txt", .data = "a", .toldSize = std::uint64_t{1} << 45};
  AddRoute("huge.zip", "Huge", {huge});
  EXPECT_EQ(Fate("huge"), "bad_zip_files BAD");
}

TEST_F(ClassificationTest, NothingToAddStartsAFreshRecord) {
  AddRoute("foo.zip", "Foo");
  EXPECT_EQ(Run("add"), 0);
  std::string empty;
  for (const auto& section : kRecord) empty += "[" + section.first + "]\r\n=\r\n";
  EXPECT_EQ(ReadBytes(DataPath("misc_info\\routereport.ini")), empty);
}

TEST_F(ClassificationTest, TellsItsStepsInOrder) {
  Drop("b.zip", {Entry("patch.txt")});
  Drop("A.zip", RouteEntries("A"));
  Run("add");
  EXPECT_EQ(Captions("frmInitProg"),
            (Strings{"Verifying file integrity of A.zip", "Verifying file integrity of b.zip",
                     "Generating route info...", "Verifying... A.zip", "Verifying... b.zip",
                     "Extracting info from A.zip", "Extracting activities from A.zip",
                     "Extracting activity services from A.zip", "Extracting activity paths from A.zip",
                     "Extracting activity traffic from A.zip", "Extracting consists from A.zip",
                     "Extracting images from A.zip", "Optimizing route compression...",
                     "Creating compressed route files...", "Finishing Up!", "Finished adding 1 new route."}));
  Drop("c.zip", {Entry("patch.txt")});
  Run("add");
  const auto captions = Captions("frmInitProg");
  EXPECT_EQ(Strings(captions.end() - 4, captions.end()),
            (Strings{"Creating compressed route files...", "No new routes found.", "Finishing Up!",
                     "No new routes added."}));
}

TEST_F(ClassificationTest, ReadOnlyZipsAreNoObstacle) {
  for (const std::string added : {"ADD ", ""}) {
    Drop("route.zip", RouteEntries("Route"));
    Drop("bad.zip", RouteEntries("Bad"), {.directoryShift = 5});
    Drop("patch.zip", {Entry("patch.txt")});
    for (const std::string zip : {"route.zip", "bad.zip", "patch.zip"}) MakeReadOnly(Download(zip));
    EXPECT_EQ(Run("add"), 0);
    EXPECT_EQ(Fate("route"), "Installed " + added + "ALL qnz");
    EXPECT_EQ(Fate("bad"), "bad_zip_files BAD");
    EXPECT_EQ(Fate("patch"), "Not_Installed MSC");
    MakeReadOnly(AppPath("routes\\route.qnz"));
  }
}

}  // namespace
}  // namespace quillon
