// What comes before the driver: files that are known to be no routes, and routes that come as programs.
#include <set>

#include "core/text/Text.h"
#include "tests/intake/IntakeTest.h"
#include "tests/world/Programs.h"

namespace quillon {
namespace {

const std::string kNote = "quillon_zipped.txt";

class ZipTriageTest : public IntakeTest {
 protected:
  /// A route as a self-extracting program.
  static std::string SelfExtracting(const std::string& name, const ZipShape& shape,
                                    const std::vector<ZipEntry>& extra = {}) {
    return ZipBytes(RouteEntries(name, extra), shape);
  }
  static ZipEntry Program(const std::string& name, const std::string& data) {
    return {.name = name, .data = data, .deflated = true};
  }
  std::string InFolder(const std::string& folder, const std::string& file) const {
    return ReadBytes(AppPath("original_zips\\" + folder + "\\" + file));
  }
  const ZipShape elf_ = {.stub = SmallElf()}, pe_ = {.stub = SmallPe(), .offsetsPastStub = true};
};

TEST_F(ZipTriageTest, ARouteInAProgramBecomesAPlainZip) {
  const std::map<std::string, ZipShape> shapes = {{"elf", elf_},
                                                  {"elf_past", {.stub = SmallElf(), .offsetsPastStub = true}},
                                                  {"pe", {.stub = SmallPe()}},
                                                  {"pe_past", pe_}};
  std::map<std::string, std::string> originals;
  for (const auto& [zip, shape] : shapes) {
    Drop(zip + ".zip",
         {Entry("Docs/Readme.txt", "outer"), Program("Sub/Route.EXE", SelfExtracting(zip, shape))});
    originals[zip] = ReadBytes(Download(zip + ".zip"));
  }
  MakeReadOnly(Download("pe.zip"));
  EXPECT_EQ(Run("add"), 0);
  for (const auto& [zip, original] : originals) {
    EXPECT_EQ(Fate("Quillon-" + zip), "ADD ALL qnz") << zip;
    EXPECT_EQ(Fate(zip), "Installed");
    EXPECT_TRUE(InFolder("Installed", zip + ".zip") == original);
    EXPECT_EQ(NameOf("Quillon-" + zip), zip);
  }
  auto expected = RouteEntries("");
  for (const std::string name : {"Docs/Readme.txt", "Quillon_Zipped.txt"}) expected.push_back(Entry(name));
  Strings names;
  for (const auto& entry : expected) names.push_back(LowerCase(ReplaceAll(entry.name, "/", "\\")));
  std::sort(names.begin(), names.end());
  EXPECT_EQ(Entries("Quillon-pe_past"), names) << "the program itself stays behind";
  EXPECT_EQ(Unzipped(AppPath("routes\\Quillon-elf.qnz")).at(kNote),
            ReadBytes(DataPath("misc_info\\Quillon_Zipped.txt")));
  EXPECT_EQ(Captions("frmZipCheck"), Strings{"Checking .zip for non-standard files..."});
  EXPECT_EQ(Names(Download("")), Strings{});
  EXPECT_EQ(Finish(), "Finished adding 4 new routes.");
}

TEST_F(ZipTriageTest, WhereNamesClashTheProgramsFileWinsAndTheNoteBeatsAll) {
  Drop("clash.zip", {Entry("INSTALL.TXT", "outer"), Entry("quillon_zipped.TXT", "outer"),
                     Program("a.exe", SelfExtracting("Clash", elf_, {Entry("Install.txt", "inner")}))});
  Run("add");
  const auto entries = Unzipped(AppPath("routes\\Quillon-clash.qnz"));
  EXPECT_EQ(entries.at("install.txt"), "inner");
  EXPECT_EQ(entries.at(kNote), ReadBytes(DataPath("misc_info\\Quillon_Zipped.txt")));
}

TEST_F(ZipTriageTest, AProgramThatHoldsAZipGoesOnToTheRebuilding) {
  Drop("nested.zip",
       {Program("route.exe", ZipBytes({Entry("route.zip", ZipBytes(RouteEntries("Nested")))}, pe_))});
  Run("add");
  EXPECT_EQ(Fate("nested"), "Installed");
  EXPECT_EQ(Fate("Quillon-nested"), "");
  EXPECT_EQ(Fate("Quillon-Quillon-nested"), "ADD ALL qnz");
  EXPECT_EQ(NameOf("Quillon-Quillon-nested"), "Nested");
}

TEST_F(ZipTriageTest, WhatIsNoArchiveStaysAsItWas) {
  const std::string whole = SelfExtracting("Cut", pe_);
  auto secret = RouteEntries("Secret");
  secret.back().encrypted = true;
  auto folders = RouteEntries("Folders");
  std::erase_if(folders, [](const ZipEntry& entry) { return !Contains(entry.name, "/"); });
  const std::map<std::string, ZipEntry> programs = {
      {"installer", Program("setup.exe", SmallPe() + std::string(5000, 'x'))},
      {"text", Entry("routes.exe.txt", "no program")},
      {"folder", {.name = "my.exe", .folder = true}},
      {"below", Entry("my.exe/a.txt")},
      {"empty", Entry(".exe")},
      {"cut", Program("a.exe", whole.substr(0, whole.size() - 40))},
      {"broken", {.name = "a.exe", .data = whole, .deflated = true, .badCrc = true}},
      {"only_folders", Program("a.exe", ZipBytes(folders, pe_))},
      {"password", Program("a.exe", ZipBytes(secret, pe_))},
      {"out", Program("a.exe", ZipBytes({Entry("a.txt"), Entry("../../evil.txt")}, pe_))}};
  std::map<std::string, std::string> originals;
  for (const auto& [zip, program] : programs) {
    Drop(zip + ".zip", RouteEntries(zip, {program}));
    originals[zip] = ReadBytes(Download(zip + ".zip"));
  }
  EXPECT_EQ(Run("add"), 0);
  for (const auto& [zip, original] : originals) {
    EXPECT_EQ(Fate(zip), "Not_Installed EXE") << zip;
    EXPECT_TRUE(InFolder("Not_Installed", zip + ".zip") == original) << zip;
  }
  EXPECT_EQ(Finish(), "No new routes added.");
}

TEST_F(ZipTriageTest, OfTwoProgramsOnlyTheFirstIsOpened) {
  Drop("two.zip", {Program("b.exe", SelfExtracting("B", elf_)), Program("a.exe", SelfExtracting("A", pe_))});
  Run("add");
  EXPECT_EQ(Fate("two"), "Installed");
  EXPECT_EQ(Fate("Quillon-two"), "EXE");
}

TEST_F(ZipTriageTest, KnownNonRoutesAreSetAside) {
  const std::string list = DataPath("misc_info\\files.tsl");
  Write(list, "Viewer.zip\r\nabsent.zip\r\n\r\nTool.EXE\r\n" + std::string("viewer.zip"));
  Drop("viewer.ZIP", RouteEntries("Viewer"));
  Write(Download("tool.exe"), "tool");
  MakeReadOnly(Download("tool.exe"));
  EXPECT_EQ(Run("add"), 0);
  EXPECT_EQ(Names(Download("")), Strings{});
  EXPECT_EQ(InFolder("Not_Installed", "tool.exe"), "tool");
  EXPECT_EQ(Fate("viewer"), "Not_Installed MSC");
  EXPECT_EQ(Ini("misc_info\\routereport.ini", "Patch or other", "MSC:Tool.EXE"), "");
  std::vector<int> values;
  for (const auto& bar : Events("bar"))
    if (bar["screen"] == "frmZipCheck") values.push_back(bar["value"]);
  EXPECT_EQ(values, (std::vector<int>{10, 20})) << "what is absent does not count";
  EXPECT_EQ(Finish(), "No new routes added.");
  EXPECT_EQ(Last("colour")["colour"], 221);

  Remove(list);
  EXPECT_EQ(Run("add"), 1);
  EXPECT_EQ(LastError(), 53);
  EXPECT_EQ(LastErrorPath(), App() + "\\resources\\Do_Not_Delete!\\misc_info\\files.tsl");
}

TEST_F(ZipTriageTest, ANameThatIsTakenEndsItBeforeAnythingChanges) {
  const std::vector<ZipEntry> route = {Program("a.exe", SelfExtracting("A", elf_))};
  Drop("plain.zip", RouteEntries("Plain"));
  Drop("route.zip", route);
  Drop("Quillon-route.zip", RouteEntries("Left"));
  auto before = Tree(Download(""));
  EXPECT_EQ(Run("add"), 1);
  EXPECT_EQ(LastError(), 58);
  EXPECT_EQ(LastErrorPath(), App() + "\\downloaded_routes\\Quillon-route.zip");
  EXPECT_TRUE(Tree(Download("")) == before);

  // Half a rebuilt zip, as a crash leaves it, is no obstacle.
  fs::rename(Download("Quillon-route.zip"), Download("Quillon-route.tmp"));
  Drop("same.zip", {route[0], Entry("A.Zip")});
  before = Tree(Download(""));
  EXPECT_EQ(Run("add"), 1);
  EXPECT_EQ(LastError(), 58);
  EXPECT_EQ(LastErrorPath(), App() + "\\downloaded_routes\\same.zip");
  Remove(Download("same.zip"));
  EXPECT_EQ(Run("add"), 0);
  EXPECT_EQ(Fate("Quillon-route"), "ADD ALL qnz");
  EXPECT_EQ(Fate("route"), "Installed");
  EXPECT_EQ(Fate("plain"), "Installed ADD ALL qnz");
}

TEST_F(ZipTriageTest, TwoHundredZipsEndWhereTheyBelong) {
  const std::string bad = ZipBytes(RouteEntries("Bad"));
  int expected = 0;
  std::map<std::string, std::string> fates;
  const auto drop = [&](const std::string& zip, const std::vector<ZipEntry>& entries,
                        const std::string& fate) {
    Drop(zip + ".zip", entries);
    fates[zip] = fate;
  };
  for (int i = 0; i < 200; ++i) {
    const std::string zip = "zip " + std::to_string(i);
    switch (i % 12) {
      case 0:
        Write(Download(zip + ".zip"), bad.substr(0, bad.size() / 2));
        fates[zip] = "bad_zip_files BAD";
        break;
      case 3: drop(zip, {Program("setup.exe", SmallPe())}, "Not_Installed EXE"); break;
      case 6: drop(zip, {Entry("a.zip"), Entry("b.zip")}, "Not_Installed MSC"); break;
      case 9: drop(zip, {Entry("route/tiles/a.t")}, "Not_Installed MSC"); break;
      case 1: drop(zip, {Program("route.exe", SelfExtracting("Route " + zip, pe_))}, "Installed"); break;
      default:
        drop(zip, RouteEntries(i % 2 == 0 ? "Of one name" : "Route " + zip), "Installed ADD ALL qnz");
        break;
    }
    if (i % 3 != 0) ++expected;
  }
  EXPECT_EQ(Run("add"), 0);
  for (const auto& [zip, fate] : fates) EXPECT_EQ(Fate(zip), fate) << zip;
  EXPECT_EQ(Finish(), "Finished adding " + std::to_string(expected) + " new routes.");
  EXPECT_EQ(Names(Download("")), Strings{});
  EXPECT_EQ(Run("routes"), 0);
  const auto rows = Texts("row");
  EXPECT_EQ(rows.size(), static_cast<std::size_t>(expected));
  EXPECT_EQ(std::set<std::string>(rows.begin(), rows.end()).size(), rows.size())
      << "each has a name of its own";
  const std::string page = ReadBytes(DataPath("misc_info\\routereport.html"));
  for (const std::string count :
       {"added:</u> <font color = #009911>133", "required:</u> <font color = #DD0000>17",
        "misc.:</u> <font color = #DD0000>33", "files.:</u> <font color = #DD0000>17"})
    EXPECT_TRUE(Contains(page, count)) << count;
}

}  // namespace
}  // namespace quillon
