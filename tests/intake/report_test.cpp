// The page that tells what became of each zip.
#include "intake/IntakeReport.h"

#include "core/text/Text.h"
#include "headless/HeadlessFrontEnd.h"
#include "stage/RunningProgram.h"
#include "tests/intake/IntakeTest.h"

namespace quillon {
namespace {

class IntakeReportTest : public IntakeTest {
 protected:
  /// The page of this record; true when the flag that asked for it has been cleared.
  bool Report(const std::string& record) {
    Write(DataPath("misc_info\\routereport.ini"), record);
    return Report();
  }
  bool Report() {
    output_.events.clear();
    HeadlessFrontEnd frontEnd(output_, options);
    RunningProgram program(App(), frontEnd);
    program.Get().shared.ShowIntakeReport = true;
    WriteIntakeReport(program.Get());
    return !program.Get().shared.ShowIntakeReport;
  }
  std::string Page() const { return ReadBytes(DataPath("misc_info\\routereport.html")); }
  /// The lines of the lists, and those of empty ones, with "GREEN " and so on for what all have in common.
  Strings Listed() const {
    const std::string page = Page(),
                      start = ReplaceAll("-------", "-", "&nbsp;") + "<font size =-1 color = \"";
    Strings lines;
    for (auto at = page.find(start); at != page.npos; at = page.find(start, at + 1)) {
      std::string line = page.substr(at + start.size(), page.find('\r', at) - at - start.size());
      for (const auto& [what, with] : std::vector<std::pair<std::string, std::string>>{
               {"\"><b>", " "}, {"</b></font></font><BR>", "|"}, {"</b></font>", ""}})
        line = ReplaceAll(line, what, with);
      lines.push_back(line);
    }
    return lines;
  }
  /// The counts of the four sections.
  Strings Counts() const {
    Strings counts;
    for (const auto& line : Lines(Page()))
      for (const std::string_view colour : {"#009911>", "#DD0000>"})
        if (const auto at = line.find(colour); at != line.npos)
          counts.push_back(line.substr(at + colour.size(), line.find('<', at) - at - colour.size()));
    return counts;
  }

  RecordedOutput output_;
};

TEST_F(IntakeReportTest, TheManagerWritesAndOpensItUnlessItIsNotWanted) {
  Drop("Quillon-foo.zip", RouteEntries("<i>Foo</i> & Quillon-Bar"));
  Drop("name.zip.zip", RouteEntries("Name"));
  Drop("patch.zip", {Entry("readme.txt")});
  Drop("setup.zip", {Entry("setup.exe")});
  Write(Download("bad.zip"), "bad");
  EXPECT_EQ(Run(Command{.name = "add", .report = false}), 0);
  EXPECT_TRUE(Events("open").empty());
  EXPECT_FALSE(Exists(DataPath("misc_info\\routereport.html")));
  EXPECT_TRUE(Report());

  const std::string zip = "</b><font size =-2 color = \"Black\"> (";
  EXPECT_EQ(Listed(), (Strings{"Green name" + zip + "name.zip)</font><b>|",  // the catalogue knows no "name"
                               "Green &lt;i&gt;Foo&lt;/i&gt; & Bar" + zip + "foo.zip)</font><b>|",
                               "Red setup.zip|", "Red patch.zip|", "Red bad.zip|"}));
  EXPECT_EQ(Counts(), (Strings{"2", "1", "1", "1"}));

  Drop("readme.zip", {});  // on the delivered list
  EXPECT_EQ(Run("add"), 0);
  EXPECT_EQ(Texts("open", "path"),
            Strings{App() + "\\resources\\Do_Not_Delete!\\misc_info\\routereporttemp.html"});
  EXPECT_EQ(Listed(), (Strings{"GREEN No new routes were automatically added.",
                               "GREEN No special installer files were found.", "Red readme.zip|",
                               "GREEN No corrupted zip files were found."}));
  EXPECT_EQ(Counts(), (Strings{"0", "0", "1", "0"}));
}

TEST_F(IntakeReportTest, TheRecordIsReadLineByLine) {
  EXPECT_TRUE(
      Report("EXE:early.zip=\r\n[Added routes]\r\n=\r\nADD:a=ADD:.zip.zip=\r\nADD:b.zip=\r\n[Bad zips]\r\n"
             "BAD:x][*][.zip=\r\nMSC:EXE:readme.exe=\r\nALL:a.qnz=\r\nxBAD:no.zip=\r\n"));
  const std::string zip = "</b><font size =-2 color = \"Black\"> (";
  EXPECT_EQ(Listed(), (Strings{"Green a" + zip + "a.zip)</font><b>|", "Green b" + zip + "b.zip)</font><b>|",
                               "Red early.zip|", "Red EXE:readme.exe|", "Red x1.zip|"}));
  EXPECT_EQ(Counts(), (Strings{"2", "1"})) << "a section that the record lacks has no head";
}

TEST_F(IntakeReportTest, TheFrameIsAsUsersKnowIt) {
  EXPECT_TRUE(Report("[Added routes]\r\n[Manual install]\r\n[Patch or other]\r\n[Bad zips]\r\n"));
  const std::string page = Page(), forward = ReadBytes(DataPath("misc_info\\routereporttemp.html"));
  const std::string start = "<html>\r\n<head>\r\n<meta name=\"GENERATOR\" content=\"Quillon\">\r\n";
  EXPECT_TRUE(page.starts_with(start + "<title>Quillon Routes Report ")) << page;
  const std::string frame =
      "</b></font>\r\n<font BASEFONT SIZE=1 face=\"Arial\" SIZE=1>\r\n<BR><BR><table WIDTH=640 Cellpadding=4 "
      "Border=0>\r\n<TR><TD>\r\n\r\n\r\n";
  EXPECT_TRUE(Contains(page, frame +
                                 "<TR><TD BGCOLOR=#EEE8C4><FONT SIZE=4 FACE=\"Tahoma\" color = \"#000080\""
                                 "><u><b>Routes added:</u> <font color = #009911>0</b></font></font><BR>"));
  EXPECT_TRUE(
      Contains(page, "original zip files scan be found by clicking the <B>\"Route Files\"</b> button"));
  const std::string end = "</TD></TR></table>\r\n</font></body>\r\n";
  EXPECT_TRUE(page.ends_with("</a></font></CENTER>\r\n" + end));
  EXPECT_TRUE(
      forward.starts_with(start +
                          "<META HTTP-EQUIV=\"Refresh\" content=\"0;URL=routereport.html\">\r\n"
                          "<title>Quillon Routes Report</title>\r\n</head>\r\n<body BGCOLOR=\"#FFFFFF\">\r\n"
                          "<font face=\"Tahoma\" size =\"4\"><b>Quillon Routes Added Results for: "))
      << forward;
  EXPECT_TRUE(forward.ends_with(frame + end));
}

TEST_F(IntakeReportTest, WithoutARecordItSaysSo) {
  Remove(DataPath("misc_info\\routereport.ini"));
  EXPECT_FALSE(Report());
  ASSERT_EQ(output_.events.size(), 1u);
  EXPECT_EQ(output_.events[0]["title"], "No list yet.");
  EXPECT_EQ(output_.events[0]["text"], "No list yet.  Add some routes to generate one.");
  EXPECT_FALSE(Exists(DataPath("misc_info\\routereport.html")));
}

}  // namespace
}  // namespace quillon
