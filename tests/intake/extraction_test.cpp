// Which zips are routes, and what is lifted out of them.
#include "tests/intake/IntakeTest.h"

namespace quillon {
namespace {

class ExtractionTest : public IntakeTest {
 protected:
  Texts NamesIn(const std::string& folder) const {
    return program.Names(program.AppPath("routes\\" + folder));
  }
  bool Made(const std::string& below) const { return program.Exists(program.AppPath("routes\\" + below)); }
};

TEST_F(ExtractionTest, ARouteIsWhatHoldsATrackFileOfItsOwn) {
  const auto track = [](const std::string& name) { return Track(name, "T"); };
  program.Drop("default.zip", {Entry("a.txt"), track("Routes/USA2/Usa2.TRK"), track("Routes/Foo/foo.trk")});
  program.Drop("QN-USA2.zip", {track("Routes/USA2/usa2.trk")});
  program.Drop("QNPacked-USA2.zip", {track("Routes/USA2/usa2.trk")});
  program.Drop("QNPacked-none.zip", {Entry("tiles/a.t")});
  program.Drop("first.zip", {Entry("a.txt"), track("foo.trk"), track("usa1.trk")});
  program.Drop("backup.zip", {Entry("something.trk.bak"), Entry("tiles/a.t")});
  program.Drop("folder.zip", {Entry("my.trks/readme.txt")});
  program.Run("add");
  for (const std::string zip : {"default", "QN-USA2", "QNPacked-none"})
    EXPECT_EQ(Fate(zip), "Not_Installed MSC") << zip;
  for (const std::string zip : {"QNPacked-USA2", "first", "backup", "folder"})
    EXPECT_EQ(Fate(zip), "Installed ADD ALL qnz") << zip;
  EXPECT_EQ(NamesIn("route_info\\backup"), Texts{});
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
  program.Drop("kinds.zip", entries);
  program.Run("add");
  EXPECT_EQ(NamesIn("route_info\\kinds"),
            (Texts{"r.trk", "x.bmp", "x.diz", "x.doc", "x.gif", "x.htm", "x.html", "x.jpg", "x.mp3", "x.nfo",
                   "x.pcx", "x.pdf", "x.png", "x.rtf", "x.txt"}));
  EXPECT_EQ(program.ReadBytes(program.AppPath("routes\\route_info\\kinds\\x.txt")), "later");
  EXPECT_EQ(NamesIn("activities\\activities\\kinds"), (Texts{"x.act", "x.asv"}));
  EXPECT_EQ(NamesIn("activities\\services\\kinds"), Texts{"x.srv"});
  EXPECT_EQ(NamesIn("activities\\paths\\kinds"), Texts{"x.pat"});
  EXPECT_EQ(NamesIn("activities\\traffic\\kinds"), Texts{"x.trf"});
  EXPECT_EQ(NamesIn("consists\\kinds"), Texts{"x.con"});
  EXPECT_EQ(NamesIn("route_pics\\kinds"), (Texts{"x.bmp", "x.gif", "x.jpg", "x.pcx"}));

  // Pictures follow pages only.
  program.AddRoute("plain.zip", "Plain", {Entry("x.bmp"), Entry("x.pcx"), Entry("x.jpg")});
  EXPECT_EQ(NamesIn("route_info\\plain"), (Texts{"readme.txt", "route.trk", "x.jpg"}));
  EXPECT_EQ(program.ReadBytes(program.AppPath("routes\\tsplain.jpg")),
            program.ReadBytes(program.AppPath("resources\\Do_Not_Delete!\\qnnoimage.jpg")));
}

TEST_F(ExtractionTest, OnlyCustomFilesSurviveASecondIntake) {
  program.AddRoute("foo.zip", "Foo", {Entry("old.txt"), Entry("old.asv"), Entry("old.pcx")});
  for (const std::string folder :
       {"ENVFILES\\TEXTURES", "Extras", "LO_TILES", "SHAPES", "SOUND", "TD", "TILES", "TERRTEX\\SNOW",
        "TEXTURES\\AUTUMN", "TEXTURES\\AUTUMNSNOW", "TEXTURES\\NIGHT", "TEXTURES\\SNOW", "TEXTURES\\SPRING",
        "TEXTURES\\SPRINGSNOW", "TEXTURES\\WINTER", "TEXTURES\\WINTERSNOW", "TUTOR", "WORLD"})
    EXPECT_TRUE(Made("custom\\foo\\" + folder)) << folder;
  program.Write(program.AppPath("routes\\custom\\foo\\SHAPES\\mine.s"), "mine");
  program.Remove(program.AppPath("routes\\custom\\foo\\WORLD"));
  for (const std::string stale : {"activities\\services\\foo\\stale.srv", "activities\\paths\\foo\\stale.pat",
                                  "activities\\traffic\\foo\\stale.trf", "consists\\foo\\sub\\stale.con"})
    program.Write(program.AppPath("routes\\" + stale), "stale");
  program.AddRoute("foo.zip", "Foo");
  EXPECT_TRUE(Made("custom\\foo\\SHAPES\\mine.s"));
  EXPECT_FALSE(Made("custom\\foo\\WORLD"));
  EXPECT_EQ(NamesIn("route_info\\foo"), (Texts{"readme.txt", "route.trk"}));
  EXPECT_EQ(NamesIn("route_pics\\foo"), Texts{});
  EXPECT_EQ(NamesIn("activities\\activities\\foo"), Texts{"morning.act"});
  EXPECT_EQ(NamesIn("activities\\services\\foo"), Texts{"morning.srv"});
  EXPECT_EQ(NamesIn("activities\\paths\\foo"), Texts{"morning.pat"});
  EXPECT_EQ(NamesIn("activities\\traffic\\foo"), Texts{"morning.trf"});
  EXPECT_EQ(NamesIn("consists\\foo"), Texts{"local.con"});
}

}  // namespace
}  // namespace quillon
