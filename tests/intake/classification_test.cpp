// Which zip is what, where each goes, and what is told of it.
#include <filesystem>

#include "tests/intake/IntakeTest.h"

namespace quillon {
namespace {

class ClassificationTest : public IntakeTest {};

constexpr const char* kEmptyRecord =
    "[Added routes]\r\n=\r\n[Manual install]\r\n=\r\n[Patch or other]\r\n=\r\n[Bad zips]\r\n=\r\n[All "
    "installed]\r\n=\r\n";

TEST_F(ClassificationTest, EachKindGoesToItsPlace) {
  const std::string inner = ZipBytes({Entry("a.txt")});
  program.Drop("good.zip", RouteEntries("Good"));
  program.Drop("route.v1.zip", RouteEntries("Dotted"));
  program.Drop("UPPER.ZIP", RouteEntries("Upper"));
  program.Drop("two.zip", RouteEntries("Two", {Entry("A.Zip", inner), Entry("b.zip", inner)}));
  program.Drop("setup.zip", {Entry("Setup.EXE", "program")});
  program.Drop("both.zip", {Entry("setup.exe"), Entry("a.zip", inner)});
  program.Drop("two_and_exe.zip", {Entry("setup.exe"), Entry("a.zip"), Entry("b.zip")});
  program.Drop("folder.zip", {Entry("my.zipfiles/a.txt"), Entry("my.zipfiles/b.txt")});
  program.Drop("text.zip", RouteEntries("Text", {Entry("routes.exe.txt")}));
  program.Drop("patch.zip", {Entry("route/tiles/a.t"), Entry("readme.txt")});
  program.Drop("nothing.zip", {});
  EXPECT_EQ(program.Run("add"), 0);

  for (const std::string zip : {"good", "route.v1", "UPPER"})
    EXPECT_EQ(Fate(zip), "Installed ADD ALL qnz") << zip;
  for (const std::string zip : {"two", "two_and_exe", "folder", "patch", "nothing"})
    EXPECT_EQ(Fate(zip), "Not_Installed MSC") << zip;
  for (const std::string zip : {"setup", "both", "text"}) EXPECT_EQ(Fate(zip), "Not_Installed EXE") << zip;
  EXPECT_EQ(program.Names(program.AppPath("downloaded_routes")), Texts{});
  EXPECT_EQ(Finish(), "Finished adding 3 new routes.");
  EXPECT_EQ(program.Last("colour")["colour"], 49152);
  EXPECT_EQ(NameOf("route.v1"), "Dotted");
}

TEST_F(ClassificationTest, WhatCannotBeReadIsBadAndLeavesNothingElse) {
  const std::string route = ZipBytes(RouteEntries("Cut"));
  WriteBytes(program.Download("cut.zip"), route.substr(0, route.size() - 30));
  WriteBytes(program.Download("empty.zip"), "");
  WriteBytes(program.Download("garbage.zip"), std::string(3000, 'g'));
  program.Drop("secret.zip", RouteEntries("Secret", {{.name = "x.txt", .data = "x", .encrypted = true}}));
  program.Drop("out.zip", RouteEntries("Out", {Entry("../../../evil.txt", "evil")}));
  program.Drop("device.zip", RouteEntries("Device", {Entry("route/con.ace")}));
  program.Drop("broken.zip", RouteEntries("Broken"), {.directoryShift = 5});
  const auto before = program.Names(program.Root());
  EXPECT_EQ(program.Run("add"), 0);
  for (const std::string zip : {"cut", "empty", "garbage", "secret", "out", "device", "broken"})
    EXPECT_EQ(Fate(zip), "bad_zip_files BAD") << zip;
  EXPECT_EQ(program.Names(program.Root()), before);
  EXPECT_EQ(Finish(), "No new routes added.");
  EXPECT_TRUE(program.Events("colour").empty());
  EXPECT_EQ(program.ReadBytes(program.AppPath("original_zips\\bad_zip_files\\cut.zip")),
            route.substr(0, route.size() - 30));
}

TEST_F(ClassificationTest, DamagedDataCostsNoMoreThanTheirOwnFile) {
  std::vector<ZipEntry> entries = RouteEntries("Damaged");
  entries.push_back({.name = "notes.txt", .data = "notes", .badCrc = true});
  program.Drop("damaged.zip", entries);
  EXPECT_EQ(program.Run("add"), 0);
  EXPECT_EQ(Fate("damaged"), "Installed ADD ALL qnz");
  EXPECT_EQ(NameOf("damaged"), "Damaged");
  EXPECT_EQ(program.Names(program.AppPath("routes\\route_info\\damaged")),
            (Texts{"readme.txt", "route.trk"}));

  program.Drop("huge.zip",
               RouteEntries("Huge", {{.name = "a.txt", .data = "a", .toldSize = std::uint64_t{1} << 45}}));
  EXPECT_EQ(program.Run("add"), 1);
  EXPECT_EQ(program.LastError(), 61);
}

TEST_F(ClassificationTest, NothingToAddIsRedAndStartsAFreshRecord) {
  program.AddRoute("foo.zip", "Foo");
  EXPECT_EQ(program.Run("add"), 0);
  EXPECT_EQ(program.Captions("frmInitProg"), Texts{"No new routes found."});
  EXPECT_EQ(program.Last("colour")["colour"], 221);
  EXPECT_EQ(program.Last("bar")["value"], 100);
  EXPECT_EQ(program.ReadBytes(program.AppPath("resources\\Do_Not_Delete!\\misc_info\\routereport.ini")),
            kEmptyRecord);
}

TEST_F(ClassificationTest, TellsItsStepsInOrder) {
  program.Drop("b.zip", {Entry("patch.txt")});
  program.Drop("A.zip", RouteEntries("A"));
  program.Run("add");
  EXPECT_EQ(program.Captions("frmInitProg"),
            (Texts{"Verifying file integrity of A.zip", "Verifying file integrity of b.zip",
                   "Generating route info...", "Verifying... A.zip", "Verifying... b.zip",
                   "Extracting info from A.zip", "Extracting activities from A.zip",
                   "Extracting activity services from A.zip", "Extracting activity paths from A.zip",
                   "Extracting activity traffic from A.zip", "Extracting consists from A.zip",
                   "Extracting images from A.zip", "Optimizing route compression...",
                   "Creating compressed route files...", "Finishing Up!", "Finished adding 1 new route."}));
  program.Drop("c.zip", {Entry("patch.txt")});
  program.Run("add");
  const auto captions = program.Captions("frmInitProg");
  EXPECT_EQ(Texts(captions.end() - 4, captions.end()),
            (Texts{"Creating compressed route files...", "No new routes found.", "Finishing Up!",
                   "No new routes added."}));
}

TEST_F(ClassificationTest, ReadOnlyZipsAreNoObstacle) {
  namespace fs = std::filesystem;
  const auto protect = [](const std::string& path) { fs::permissions(path, fs::perms::owner_read); };
  for (int round = 0; round < 2; ++round) {
    program.Drop("route.zip", RouteEntries("Route"));
    program.Drop("bad.zip", RouteEntries("Bad"), {.directoryShift = 5});
    program.Drop("patch.zip", {Entry("patch.txt")});
    for (const std::string zip : {"route.zip", "bad.zip", "patch.zip"}) protect(program.Download(zip));
    EXPECT_EQ(program.Run("add"), 0);
    EXPECT_EQ(Fate("route"), round == 0 ? "Installed ADD ALL qnz" : "Installed ALL qnz");
    EXPECT_EQ(Fate("bad"), "bad_zip_files BAD");
    EXPECT_EQ(Fate("patch"), "Not_Installed MSC");
    protect(program.AppPath("routes\\route.qnz"));
  }
}

}  // namespace
}  // namespace quillon
