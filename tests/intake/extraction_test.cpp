// Which zips are routes, and what is lifted out of them.
#include "tests/intake/IntakeTest.h"

namespace quillon {
namespace {

class ExtractionTest : public IntakeTest {
 protected:
  /// The names in each of a route's folders.
  void ExpectFolders(const std::string& zip, const std::map<std::string, Strings>& folders) const {
    for (const auto& [folder, names] : folders) EXPECT_EQ(Stored(folder + "\\" + zip), names) << folder;
  }
};

TEST_F(ExtractionTest, ARouteIsWhatHoldsATrackFileOfItsOwn) {
  const auto track = [](const std::string& name) { return Track(name, "T"); };
  const std::map<std::string, std::vector<ZipEntry>> patches = {
      {"default", {Entry("a.txt"), track("Routes/USA2/Usa2.TRK"), track("Routes/Foo/foo.trk")}},
      {"QN-USA2", {track("Routes/USA2/usa2.trk")}},
      {"QNPacked-none", {Entry("tiles/a.t")}}};
  const std::map<std::string, std::vector<ZipEntry>> routes = {
      {"QNPacked-USA2", {track("Routes/USA2/usa2.trk")}},
      {"first", {Entry("a.txt"), track("foo.trk"), track("usa1.trk")}},
      {"backup", {Entry("something.trk.bak"), Entry("tiles/a.t")}},
      {"folder", {Entry("my.trks/readme.txt")}}};
  for (const auto& zips : {patches, routes})
    for (const auto& [zip, entries] : zips) Drop(zip + ".zip", entries);
  Run("add");
  for (const auto& zip : patches) EXPECT_EQ(Fate(zip.first), "Not_Installed MSC") << zip.first;
  for (const auto& zip : routes) EXPECT_EQ(Fate(zip.first), "Installed ADD ALL qnz") << zip.first;
  EXPECT_EQ(Stored("route_info\\backup"), Strings{});
  EXPECT_EQ(NameOf("backup"), "backup");
  EXPECT_EQ(Finish(), "Finished adding 4 new routes.");
}

TEST_F(ExtractionTest, EachKindOfFileGoesToItsFolder) {
  std::vector<ZipEntry> entries = {Track("r/r.trk", "R"), Entry("r/tiles/a.t")};
  for (const std::string end :
       {"TXT", "diz", "nfo", "rtf", "doc", "html", "htm", "pdf", "gif", "jpg",   "mp3", "png",
        "act", "asv", "srv", "pat", "trf", "con",  "bmp", "pcx", "ace", "shtml", "jpeg"})
    entries.push_back(Entry("some/folder/x." + end, end));
  entries.push_back(Entry("other/X.txt", "later"));
  Drop("kinds.zip", entries);
  Run("add");
  ExpectFolders("kinds", {{"route_info",
                           {"r.trk", "x.bmp", "x.diz", "x.doc", "x.gif", "x.htm", "x.html", "x.jpg", "x.mp3",
                            "x.nfo", "x.pcx", "x.pdf", "x.png", "x.rtf", "x.txt"}},
                          {"activities\\activities", {"x.act", "x.asv"}},
                          {"activities\\services", {"x.srv"}},
                          {"activities\\paths", {"x.pat"}},
                          {"activities\\traffic", {"x.trf"}},
                          {"consists", {"x.con"}},
                          {"route_pics", {"x.bmp", "x.gif", "x.jpg", "x.pcx"}}});
  EXPECT_EQ(ReadBytes(AppPath("routes\\route_info\\kinds\\x.txt")), "later");

  // Pictures follow pages only.
  AddRoute("plain.zip", "Plain", {Entry("x.bmp"), Entry("x.pcx"), Entry("x.jpg")});
  ExpectFolders("plain", {{"route_info", {"readme.txt", "route.trk", "x.jpg"}}});
  EXPECT_EQ(ReadBytes(AppPath("routes\\tsplain.jpg")), ReadBytes(DataPath("qnnoimage.jpg")));
}

TEST_F(ExtractionTest, OnlyCustomFilesSurviveASecondIntake) {
  AddRoute("foo.zip", "Foo", {Entry("old.txt"), Entry("old.asv"), Entry("old.pcx")});
  const std::string custom = App() + "\\routes\\custom\\foo\\";
  for (const std::string folder :
       {"ENVFILES\\TEXTURES", "Extras", "LO_TILES", "SHAPES", "SOUND", "TD", "TILES", "TERRTEX\\SNOW",
        "TEXTURES\\AUTUMN", "TEXTURES\\AUTUMNSNOW", "TEXTURES\\NIGHT", "TEXTURES\\SNOW", "TEXTURES\\SPRING",
        "TEXTURES\\SPRINGSNOW", "TEXTURES\\WINTER", "TEXTURES\\WINTERSNOW", "TUTOR", "WORLD"})
    EXPECT_TRUE(Exists(custom + folder)) << folder;
  Write(custom + "SHAPES\\mine.s", "mine");
  Remove(custom + "WORLD");
  for (const std::string stale : {"activities\\services\\foo\\stale.srv", "activities\\paths\\foo\\stale.pat",
                                  "activities\\traffic\\foo\\stale.trf", "consists\\foo\\sub\\stale.con"})
    Write(AppPath("routes\\" + stale), "stale");
  AddRoute("foo.zip", "Foo");
  EXPECT_TRUE(Exists(custom + "SHAPES\\mine.s") && !Exists(custom + "WORLD"));
  ExpectFolders("foo", {{"route_info", {"readme.txt", "route.trk"}},
                        {"route_pics", {}},
                        {"activities\\activities", {"morning.act"}},
                        {"activities\\services", {"morning.srv"}},
                        {"activities\\paths", {"morning.pat"}},
                        {"activities\\traffic", {"morning.trf"}},
                        {"consists", {"local.con"}}});
}

}  // namespace
}  // namespace quillon
