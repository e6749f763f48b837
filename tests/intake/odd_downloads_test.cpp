// Downloads that are no zips, or no good, or die on the way: what is known, and what comes with them, is none
// the worse.
#include "core/text/Text.h"
#include "tests/intake/IntakeTest.h"
#include "tests/world/FaultyFiles.h"
#include "tests/world/Programs.h"

namespace quillon {
namespace {

class OddDownloadsTest : public IntakeTest {
 protected:
  NamedTexts RouteFiles() const {
    auto files = Tree(AppPath("routes"));
    std::erase_if(files, [](const auto& file) { return !file.first.ends_with(".qnz"); });
    return files;
  }
  static bool HasBytes(const NamedTexts& files, const std::string& bytes) {
    return std::any_of(files.begin(), files.end(), [&](const auto& file) { return file.second == bytes; });
  }
  static std::string Nested(const std::string& inner) { return ZipBytes({Entry("route.zip", inner)}); }

  // Ends the intake with an error, once the stores are made.
  const ZipEntry odd_ = Entry("route/view.bmp", "BM" + std::string(9000, 'x'));
  const std::string noRoute_ = TarBytes({{"readme.txt", "no route"}});
};

TEST_F(OddDownloadsTest, WhatIsSetAsideSparesTheKnownRouteOfItsName) {
  const std::string line = ZipBytes(RouteEntries("Line")), odd = ZipBytes(RouteEntries("Odd", {odd_}));
  const std::vector<std::array<std::string, 4>> cases = {
      {".zip", line, ".zip", odd},
      {".zip", line, ".zip", line.substr(0, line.size() - 30)},
      {".zip", Nested(line), ".zip", Nested(odd)},
      {".zip", Nested(line), ".zip", Nested("garbage")},
      {".zip", line, ".tar", RouteTar("Odd", {odd_})},
      {".zip", line, ".tar", noRoute_},
      {".tar", RouteTar("Line"), ".tar", noRoute_},
      {".tar", RouteTar("Line"), ".tgz", noRoute_}};
  options.answerYes = true;
  NamedTexts installed;
  for (const auto& [known, bytes, ending, download] : cases) {
    const std::string stem = std::to_string(installed.size());
    SCOPED_TRACE(stem);
    ASSERT_EQ(AddDownload(stem + known, bytes), 0);
    installed[stem + known] = bytes;
    const auto routeFiles = RouteFiles(), stores = Tree(AppPath("routes\\activities"));
    const Strings rows = Rows();
    const bool ended = AddDownload(stem + ending, download) == 0;
    EXPECT_EQ(ended ? 0 : Run("add"), 0) << Last("error");
    EXPECT_TRUE(RouteFiles() == routeFiles && Tree(AppPath("routes\\activities")) == stores);
    EXPECT_TRUE(Originals("Installed") == installed);
    auto aside = Originals("Not_Installed");
    aside.merge(Originals("bad_zip_files"));
    EXPECT_TRUE(aside[stem + ending] == download) << "it is whole";
    EXPECT_EQ(Names(Download("")), Strings{});
    EXPECT_EQ(Rows(), rows);
    EXPECT_EQ(Run("load", rows.back()), 0) << Last("error");
  }
  const auto rows = RowsFromOriginals();
  EXPECT_TRUE(rows.size() == cases.size() && rows.back() == "Line (8)") << rows.back();
}

TEST_F(OddDownloadsTest, WithoutACatalogueTheRouteFileIsOnTheShelfAtWorst) {
  AddRoute("line.zip", "Line");
  const auto before = RouteFiles();
  Remove(DataPath("routes.ini"));
  EXPECT_EQ(AddRoute("line.zip", "Odd", {odd_}), 1);
  options.answerYes = true;
  EXPECT_EQ(Run("add"), 0) << Last("error");
  EXPECT_EQ(Originals("Not_Installed").size(), 1u);
  if (RouteFiles().empty()) Run(Command{.name = "shelf", .putBack = 1});
  EXPECT_TRUE(RouteFiles() == before);
  EXPECT_EQ(RowsFromOriginals(), Strings{"Line"});
}

TEST_F(OddDownloadsTest, AnotherFormatIsOfferedByItsOwnNameAndGoesWhole) {
  const std::string odd = TarBytes({{"route.zip", ZipBytes(RouteEntries("Odd", {odd_}))}});
  Drop("other.zip", RouteEntries("Other"));
  EXPECT_EQ(AddDownload("odd.tar", odd), 1);
  for (const bool yes : {false, true}) {
    EXPECT_EQ(Run("start"), 0);
    EXPECT_EQ(Names(Download("")), (Strings{"odd.tar", "other.zip"}));
    options.answerYes = yes;
    EXPECT_EQ(Run("add"), yes ? 0 : 1);
    EXPECT_TRUE(Contains(BoxTexts().at(0), "\r\n\r\nodd.tar\r\n\r\n")) << BoxTexts()[0];
  }
  EXPECT_EQ(Originals("Not_Installed"), (NamedTexts{{"odd.tar", odd}}));
  EXPECT_EQ(Fate("odd") + ", " + Fate("other"), "MSC, Installed ADD ALL qnz");
  EXPECT_FALSE(Exists(AppPath("routes\\tsQuillon-odd.jpg"))) << "nor any other trace of the zip made of it";
  EXPECT_FALSE(Exists(AppPath("routes\\route_info\\Quillon-odd")));
  EXPECT_EQ(Run("add"), 0);
  EXPECT_EQ(BoxTexts(), Strings{}) << "once only";
}

TEST_F(OddDownloadsTest, NamesThatAreTakenForOthersOrForNoneAreRefused) {
  ASSERT_EQ(AddDownload("known .tar", RouteTar("Known")), 0);
  Strings refused = {"foo .tar", "bar .tar", "known.tar", "...tar", " .tar"};
  if (!HasDeviceNames()) refused.push_back("CON.tar");
  Drop("foo.zip", RouteEntries("Foo"));
  for (const auto& name : refused) WriteBytes(ToPath(Download("")) / name, RouteTar(name));
  EXPECT_EQ(AddDownload("bar.tar", RouteTar("Bar")), 0) << Last("error");
  const auto classes = Texts("verdict", "class");
  EXPECT_EQ(std::count(classes.begin(), classes.end(), "BAD"), std::ssize(refused));
  for (const auto& name : refused) EXPECT_TRUE(HasBytes(Originals("bad_zip_files"), RouteTar(name))) << name;
  EXPECT_EQ(Rows(), (Strings{"Bar", "Foo", "Known"}));
  EXPECT_EQ(Texts("row", "zip"), (Strings{"bar", "foo", "known "}));
  EXPECT_EQ(RowsFromOriginals(), (Strings{"Bar", "Foo", "Known"}));
}

TEST_F(OddDownloadsTest, ABombInsideADownloadCostsOnlyItself) {
  auto bomb = RouteEntries("Bomb");
  for (int i = 0; i < 1000; ++i) bomb.push_back({.name = std::to_string(i), .data = "x", .shared = true});
  Drop("program.zip", {Entry("a.exe", ZipBytes(bomb, {.stub = SmallPe(), .offsetsPastStub = true}))});
  Write(Download("nested.zip"), Nested(ZipBytes(bomb)));
  Write(Download("tar.tar"), TarBytes({{"route.zip", ZipBytes(bomb)}}));
  EXPECT_EQ(AddRoute("other.zip", "Other"), 0) << Last("error");
  const auto reasons = Texts("verdict", "reason");
  EXPECT_EQ(std::count_if(reasons.begin(), reasons.end(),
                          [](const auto& reason) { return Contains(reason, "entries overlap"); }),
            2);
  EXPECT_EQ(Fate("program") + ", " + Fate("other"), "Not_Installed EXE, Installed ADD ALL qnz");
  EXPECT_EQ(Rows(), Strings{"Other"});
}

TEST_F(OddDownloadsTest, ANewOriginalStandsAloneWhateverItsFormat) {
  std::string older;
  for (const auto& [file, bytes] :
       std::vector<std::pair<std::string, std::string>>{{"foo.zip", ZipBytes(RouteEntries("Old"))},
                                                        {"foo.tgz", RouteTar("Mid")},
                                                        {"foo.tar", RouteTar("New")}}) {
    EXPECT_EQ(AddDownload(file, bytes), 0) << Last("error");
    EXPECT_EQ(Originals("Installed"), (NamedTexts{{file, bytes}}));
    EXPECT_TRUE(older.empty() || HasBytes(Tree(AppPath("rescued")), older)) << file;
    older = bytes;
  }
  EXPECT_EQ(Rows(), Strings{"Old"}) << "the route was known";
  EXPECT_EQ(RowsFromOriginals(), Strings{"New"});
}

TEST_F(OddDownloadsTest, TheOnlyRouteFileIsStillKnownWhileItIsExchanged) {
  AddRoute("foo.zip", "Old");
  fs::rename(AppPath("routes\\foo.qnz"), AppPath("routes\\foo.zip"));
  Write(DataPath("intake.tsl"), "stores foo\r\n");
  EXPECT_EQ(Rows(), Strings{"Old"});
}

/// After so many calls nothing can be changed any more, as when the process is killed.
struct Death : Fault {
  explicit Death(int calls) : left(calls) {}
  FileCode Strike() override { return --left >= 0 ? FileCode::Ok : FileCode::AccessDenied; }
  int left;
};

TEST_F(OddDownloadsTest, AnIntakeThatIsCutShortAnywhereIsDoneOnceMore) {
  const std::string nested = TarBytes({{"route.zip", ZipBytes(RouteEntries("Nested"))}});
  const NamedTexts downloads = {
      {"foo.tar", RouteTar("New")}, {"nested.tar", nested}, {"pit.tar", noRoute_}, {"line.zip", Nested("x")}};
  auto installed = downloads;
  installed["pit.tar"] = RouteTar("Pit");
  installed["line.zip"] = Nested(ZipBytes(RouteEntries("Line")));
  for (const std::string file : {"pit.tar", "line.zip"}) ASSERT_EQ(AddDownload(file, installed[file]), 0);
  ASSERT_EQ(AddRoute("foo.zip", "Old"), 0);
  const TestFolder start;
  const auto copyAll = [](const std::string& from, const std::string& to) {
    for (const char* place : {"/app", "/game"}) {
      RemoveAll(ToPath(to + place));
      fs::copy(ToPath(from + place), ToPath(to + place), fs::copy_options::recursive);
    }
  };
  copyAll(Root(), start.Root());
  bool cut = true;
  for (int calls = 0; cut && !HasFailure(); calls += 2 * SweepStep() - 1) {
    SCOPED_TRACE(calls);
    copyAll(start.Root(), Root());
    for (const auto& [file, bytes] : downloads) Write(Download(file), bytes);
    Death death(calls);
    makeFiles = [&] { return std::make_unique<FaultyFiles>(death); };
    Run("add");
    cut = death.left < 0;
    makeFiles = nullptr;
    EXPECT_EQ(Run("start"), 0) << Last("error");
    for (const std::string made : {"foo.zip", "nested.zip", "Quillon-nested.zip"})
      EXPECT_FALSE(Exists(Download(made))) << made;
    for (const std::string known : {"foo", "pit", "Quillon-line"}) {
      EXPECT_TRUE(Exists(AppPath("routes\\" + known + ".qnz"))) << known;
      EXPECT_EQ(Stored("activities\\activities\\" + known), Strings{"morning.act"}) << known;
    }
    EXPECT_EQ(Run("add"), 0) << Last("error");
    EXPECT_EQ(Names(Download("")), Strings{});
    EXPECT_EQ(Rows(), (Strings{"Line", "Nested", "Old", "Pit"}));
    EXPECT_TRUE(Originals("Installed") == installed);
    for (const std::string file : {"pit.tar", "line.zip"})
      EXPECT_TRUE(Originals("Not_Installed")[file] == downloads.at(file)) << file;
    EXPECT_EQ(ReadBytes(AppPath("routes\\consists\\foo\\local.con")), "trains/consists/local.con of New");
  }
}

}  // namespace
}  // namespace quillon
