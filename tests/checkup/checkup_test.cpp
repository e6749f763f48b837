// The Checkup over a small game: who is judged good, what is recorded, what is moved.
#include "core/text/Text.h"
#include "tests/world/TestProgram.h"

namespace quillon {
namespace {

class CheckupTest : public ProgramTest {
 protected:
  CheckupTest() {
    EXPECT_EQ(FirstRun(), 0);
    Remove(GamePath("TRAINS\\CONSISTS"));
    fs::create_directories(Game() + "/TRAINS/CONSISTS");
    Remove(GamePath("TRAINS\\TRAINSET"));
    Train("Dash9", "DASH9.ENG");
    Train("Ore", "hopper.wag");
  }

  void Train(const std::string& folder, const std::string& file) {
    Write(Game() + "/TRAINS/TRAINSET/" + folder + "/" + file, "");
  }
  void Consist(const std::string& file, const std::string& items, const std::string& name = {}) {
    const std::string title = name.empty() ? CutAtLastDot(file) : name;
    Write(Game() + "/TRAINS/CONSISTS/" + file,
          EncodeGameText("Train (\r\n\tTrainCfg ( \"" + title + "\"\r\n" + items + "\r\n)\r\n"));
  }
  void Service(const std::string& route, const std::string& file, const std::string& consist,
               const std::string& name = "any") {
    Write(Game() + "/ROUTES/" + route + "/Services/" + file,
          EncodeGameText("Service_Definition (\r\n\tName ( \"" + name + "\" )\r\n\tTrain_Config ( " +
                         consist + " )\r\n)\r\n"));
  }
  void Activity(const std::string& route, const std::string& file, const std::string& text) {
    Write(Game() + "/ROUTES/" + route + "/Activities/" + file, EncodeGameText(text));
  }
  int Checkup() { return Run("checkup"); }
  /// All files were changed an hour ago.
  void Age() const {
    const auto before = fs::file_time_type::clock::now() - std::chrono::hours(1);
    for (const auto& file : fs::recursive_directory_iterator(Game()))
      if (file.is_regular_file()) fs::last_write_time(file, before);
  }
  /// The records of a section, without the empty one.
  Strings Records(const std::string& section) const {
    Strings records;
    bool in = false;
    for (const auto& line : Lines(ReadBytes(DataPath("misc_info\\trains\\finalreport.ini")))) {
      if (line.starts_with("["))
        in = line == "[" + section + "]";
      else if (in && line != "=")
        records.push_back(line);
    }
    return records;
  }
  std::string Double(const std::string& file) const {
    return Ini("misc_info\\trains\\engdoubles.ini", file, "OtherFolder");
  }
  bool InGame(const std::string& consist) const { return Exists(GamePath("TRAINS\\CONSISTS\\" + consist)); }
  bool BackedUp(const std::string& consist) const {
    return Exists(GamePath("TRAINS\\CONSISTS\\QN-Backed-up-consists\\" + consist));
  }
};

TEST_F(CheckupTest, ItemsAreTakenApartByQuotesBlanksAndEnds) {
  Train("Amtrak West", "dash 9.eng");
  Train("amtrak", "dash9.eng");
  const std::pair<const char*, bool> items[] = {
      {"EngineData ( Dash9 Dash9 )", true},
      {"enginedata ( DASH9 dash9 )", true},
      {"EngineData ( Dash9 \"Dash9\" )", true},
      {"EngineData ( \"Dash 9\" \"Amtrak West\" )", true},
      {"EngineData ( \"Dash 9\" Amtrak West )", true},
      {"EngineData ( Dash9 Dash9 )\tand a comment", true},
      {"EngineData ( Dash9 Dash9 )\nEngineData ( no where )", true},  // a lone LF ends the item, not the line
      {"EngineData ( Dash9 Dash9 ) WagonData ( hopper Ore )", false},  // the engine's end is the line's
      {"WagonData ( hopper Ore )", true},
      {"WagonData ( Dash9 Dash9 )", true},  // the cache is the engines', too
      {"EngineData (Dash9 Dash9)", true},
      {"EngineData( no where )", true},  // no such token
      {"EngineData ( Dash9 Dash8 )", false},
      {"EngineData ( EngineData ( a f ) )", false},
  };
  int number = 0;
  for (const auto& [item, good] : items) {
    const std::string file = "c" + std::to_string(10 + number++) + ".con";
    Consist(file, item);
  }
  ASSERT_EQ(Checkup(), 0) << Last("error");
  number = 0;
  for (const auto& [item, good] : items)
    EXPECT_EQ(InGame("c" + std::to_string(10 + number++) + ".con"), good) << item;
}

TEST_F(CheckupTest, TheDatabaseHoldsOneLevelAndRemembersTheLastDouble) {
  for (const char* folder : {"a", "b", "c"}) Train(folder, "x.eng");
  Train("a/deep", "deep.eng");
  Train(".", "loose.eng");
  Train("a", "default.wag");
  Consist("asks.con",
          "EngineData ( x z )\r\nEngineData ( deep a )\r\nEngineData ( loose a )\r\n"
          "WagonData ( default a )\r\nEngineData ( dash9 z )");
  ASSERT_EQ(Checkup(), 0);
  EXPECT_EQ(Double("x.eng"), "c");
  EXPECT_EQ(Records("Missing Locomotives"),
            (Strings{"ENG:X.eng Folder: Z=c", "ENG:Deep.eng Folder: A=none", "ENG:Loose.eng Folder: A=none",
                     "ENG:Dash9.eng Folder: Z=dash9"}));
  EXPECT_EQ(Records("Missing Wagons"), Strings{"WAG:Default.wag Folder: A=none"});
  EXPECT_EQ(Records("Problem Consists"), Strings{"CON:Asks.con="});
}

TEST_F(CheckupTest, BadConsistsGoAndComeBack) {
  Consist("Good.con", "EngineData ( dash9 dash9 )");
  Consist("BAD.CON", "EngineData ( ghost dash9 )");
  ASSERT_EQ(Checkup(), 0);
  EXPECT_TRUE(InGame("good.con") && BackedUp("bad.con"));
  EXPECT_FALSE(InGame("bad.con"));
  ASSERT_EQ(Checkup(), 0);
  EXPECT_EQ(Records("Problem Consists"), Strings{"CON:Bad.con="}) << "a bad one is told of again";

  Train("dash9", "ghost.eng");
  ASSERT_EQ(Checkup(), 0);
  EXPECT_TRUE(InGame("bad.con"));
  EXPECT_FALSE(BackedUp("bad.con"));

  Remove(GamePath("TRAINS\\TRAINSET\\dash9\\ghost.eng"));
  Write(GamePath("TRAINS\\CONSISTS\\QN-Backed-up-consists\\bad.con"), "an older backup");
  ASSERT_EQ(Checkup(), 0);
  EXPECT_FALSE(InGame("bad.con"));
  EXPECT_EQ(ReadBytes(GamePath("TRAINS\\CONSISTS\\QN-Backed-up-consists\\bad.con")), "an older backup");
}

TEST_F(CheckupTest, WhatHasNotChangedIsNotLookedIntoAgain) {
  const std::string log = DataPath("misc_info\\trains\\conarray.log");
  const auto host = MakeHostFileSystem();
  const auto isLookedInto = [&] {
    FileSystem::Stamp before, after;
    host->GetStamp(log, before);
    EXPECT_EQ(Checkup(), 0);
    host->GetStamp(log, after);
    return !(after == before);
  };
  Consist("a.con", "EngineData ( ghost dash9 )");
  Consist("QN-Backed-up-consists/a.con", "EngineData ( dash9 dash9 )");
  Age();
  ASSERT_EQ(Checkup(), 0);
  EXPECT_EQ(Records("Problem Consists"), Strings{"CON:A.con="});
  ASSERT_EQ(Checkup(), 0);
  EXPECT_TRUE(InGame("a.con")) << "the older backup is another consist";
  EXPECT_EQ(Records("Problem Consists"), Strings{});
  const std::string page = DataPath("misc_info\\causes.html");
  fs::permissions(page, fs::perms::owner_read);
  ASSERT_EQ(Checkup(), 0);
  EXPECT_TRUE(Contains(ReadBytes(page), "Nothing, since the Checkup of"));
  const auto events = Events("caption");
  EXPECT_FALSE(isLookedInto());
  EXPECT_EQ(Events("caption"), events);
  Train("Dash9", "new.eng");
  EXPECT_TRUE(isLookedInto());

  Consist("bad.con", "EngineData ( ghost dash9 )");
  Age();
  ASSERT_EQ(Checkup(), 0);
  fs::rename(Game() + "/TRAINS/CONSISTS/QN-Backed-up-consists/bad.con", Game() + "/TRAINS/CONSISTS/bad.con");
  EXPECT_TRUE(isLookedInto()) << "the user has put it back";
  EXPECT_FALSE(InGame("bad.con"));
}

TEST_F(CheckupTest, ServicesAreJudgedByTheirConsist) {
  Consist("one.con", "EngineData ( dash9 dash9 )", "The First");
  Consist("moved.con", "EngineData ( ghost dash9 )", "Moved By Name");
  Service("USA1", "a.srv", "one");
  Service("USA1", "b.srv", "\"the first\"");
  Service("USA1", "c.srv", "nowhere");
  Service("USA1", "d.srv", "moved");
  Service("USA1", "e.srv", "moved by name");
  Service("USA1", "f.srv", "ONE");
  ASSERT_EQ(Checkup(), 0);
  EXPECT_EQ(Records("Problem Services"),
            (Strings{"SRV:Usa1][C.srv Consist: Nowhere.con=", "SRV:Usa1][D.srv Consist: Moved.con="}));
  EXPECT_EQ(Records("Problem Consists"), (Strings{"CON:Moved.con=", "CON:Nowhere.con (MISSING!)="}));
  const std::string folder = Game() + "\\Routes\\usa1\\services\\";
  const auto verdict = [&](const std::string& file) {
    return Ini("misc_info\\trains\\services.ini", folder + file, "Verified");
  };
  EXPECT_EQ(verdict("a.srv") + verdict("c.srv") + verdict("e.srv"), "YesNoYes");
  EXPECT_EQ(verdict("f.srv"), kMissing) << "its consist was verified before: it leaves no section";
}

TEST_F(CheckupTest, AServiceWithoutAConsistTakesTheOneBefore) {
  Write(Game() + "/ROUTES/Europe1/Services/0.srv", "Service_Definition (\r\n)\r\n");
  Service("Europe1", "1.srv", "nowhere");
  Write(Game() + "/ROUTES/Europe1/Services/2.srv", "nothing at all");
  ASSERT_EQ(Checkup(), 0);
  EXPECT_EQ(Records("Problem Services"), (Strings{"SRV:Europe1][1.srv Consist: Nowhere.con=",
                                                  "SRV:Europe1][2.srv Consist: Nowhere.con="}));
}

TEST_F(CheckupTest, ActivitiesAreJudgedByServicesAndTrains) {
  Consist("one.con", "EngineData ( dash9 dash9 )");
  Service("USA1", "Way Freight.srv", "one");
  Service("USA1", "player.srv", "one");
  Service("USA1", "bad.srv", "nowhere");
  const std::string good =
      "\tName ( \"Good\" )\r\n\tPlayer_Service_Definition ( \"Player\"\r\n"
      "\tService_Definition ( \"Way Freight\" 3600\r\n\tEngineData ( dash9 dash9 )\r\n";
  Activity("USA1", "good.act", good);
  Activity("USA1", "player.act", "\tName ( \"No Player\" )\r\n\tPlayer_Service_Definition ( missing\r\n");
  Activity("USA1", "other.act",
           ReplaceAll(good, "\"Way Freight\" 3600", "bad 10\r\n\tService_Definition ( gone 20"));
  Activity("USA1", "train.act", "WagonData ( ghost Ore )\r\n");
  Activity("Quillon-route", "mine.act", "\tName ( Mine )\r\n\tService_Definition ( gone 20\r\n");
  ASSERT_EQ(Checkup(), 0) << Last("error");
  EXPECT_EQ(Records("Problem Activities"),
            (Strings{"ACT:Quillon-route][ \"Mine\"=mine.act", "ACT:Usa1][ \"Good\"=other.act",
                     "ACT:Usa1][ \"No Player\"=player.act", "ACT:Usa1][ unknown=train.act"}));
  EXPECT_EQ(
      Records("Services-Activities"),
      (Strings{"SRVACT:Quillon-route][Gone.srv MISSING: \"Mine\"=", "SRVACT:Usa1][Bad.srv MISSING: \"Good\"=",
               "SRVACT:Usa1][Missing.srv MISSING: \"No Player\"="}));
  EXPECT_EQ(Records("Missing Wagons"), Strings{"WAG:Ghost.wag Folder: Ore=none"});
}

TEST_F(CheckupTest, AFatalItemNamesFileAndLineAndTheNextRunGoesOn) {
  Consist("bad.con", "EngineData ( ghost dash9 )");
  Consist("fatal.con", "EngineData ( alone )");
  EXPECT_EQ(Checkup(), 1);
  EXPECT_EQ(LastError(), 5);
  EXPECT_TRUE(LastErrorPath().ends_with("fatal.con"));
  EXPECT_TRUE(Contains(std::string(Last("error")["reason"]), "line 3")) << Last("error");
  EXPECT_TRUE(BackedUp("bad.con"));
  EXPECT_EQ(Records("Problem Consists"), Strings{"CON:Bad.con="}) << "what was found so far is on the disk";
  Remove(GamePath("TRAINS\\CONSISTS\\fatal.con"));
  EXPECT_EQ(Checkup(), 0);

  Write(Game() + "/TRAINS/CONSISTS/open.con", "TrainCfg ( open");
  EXPECT_EQ(Checkup(), 1);
  EXPECT_TRUE(LastErrorPath().ends_with("open.con"));
}

TEST_F(CheckupTest, WhatOneRunReadLastIsCarriedIntoTheNext) {
  Consist("zed.con", "EngineData ( dash9 dash9 )");
  KeepSession();
  ASSERT_EQ(Checkup(), 0);
  Write(Game() + "/TRAINS/CONSISTS/a.con", "no name at all");
  ASSERT_EQ(Checkup(), 0);
  EXPECT_TRUE(Contains(ReadBytes(DataPath("misc_info\\trains\\conarray.log")),
                       "ConsistFileArray(1): a.con\r\nAdded to ConsistCfg(1): zed\r\n\r\n"));
}

TEST_F(CheckupTest, StrangeNamesDoNotKeepTheReportAway) {
  Train("caf\xC3\xA9", "x.eng");
  Consist("accents.con", "EngineData ( \xC3\xA9\"x\" caf\xC3\xA9 )\r\nEngineData ( x caf\xC3\xA9 )");
  Activity("USA1", "odd.act", "\tName ( \"a\rCON:\rb\" )\r\n\tService_Definition (  Caf\xC3\xA9 3600\r\n");
  ASSERT_EQ(Checkup(), 0) << Last("error");
  EXPECT_EQ(Records("Missing Locomotives"), Strings{"ENG:\xC3\x89x.eng Folder: Caf\xC3\xA9=none"});
  EXPECT_TRUE(Contains(ReadBytes(DataPath("misc_info\\trains\\finalreport.ini")), "SRVACT:Usa1][Caf.srv"));
  EXPECT_TRUE(Exists(DataPath("misc_info\\report.html")));
}

TEST_F(CheckupTest, WithoutTheGameItSaysSo) {
  EXPECT_EQ(Checkup(), 0);
  Remove(GamePath("train.exe"));
  EXPECT_EQ(Checkup(), 3);
}

TEST_F(CheckupTest, TheReportShowsEveryKindOfFault) {
  Consist("bad.con", "EngineData ( ghost dash9 )\r\nWagonData ( hopper dash9 )");
  Service("USA1", "srv.srv", "no<b>where");
  Activity("USA1", "one.act", "\tName ( One )\r\n\tService_Definition ( gone 20\r\n");
  Activity("USA1", "two.act", "\tName ( Two )\r\n\tService_Definition ( gone 20\r\n");
  ASSERT_EQ(Checkup(), 0);
  EXPECT_TRUE(Contains(Texts("open", "path").front(), "temp.html"));
  const std::string page = ReadBytes(DataPath("misc_info\\report.html"));
  const std::string n = "&nbsp;&nbsp;&nbsp;&nbsp;&nbsp;", red = "<font SIZE =-1 color=\"Red\">";
  for (const std::string& part :
       {"<font size =-1 color = \"Blue\"><b><BR>Usa1 <BR>" + n + "</font>" + red +
            " \"One\" </B><font color = \"Black\" SIZE =-2 >( one.act )</font><b></b></font></font><BR>\r\n"
            "<font size =-1 color = \"Blue\"><b></font>" +
            n + red + " \"Two\" </B>",
        red + "Srv.srv </font></B><font size=-2 color=#000000>needs the consist:</font><b><font size=-1 "
              "color=\"Red\"> No&lt;b&gt;where.con</b></font></font><BR>\r\n",
        n + "<font size =-1 color = \"Red\"><b>Bad.con</b></font><BR>\r\n",
        n + "<font size =-1 color = \"Red\"><b>No&lt;b&gt;where.con <font size=-2 "
            "color=#000000>(MISSING!)</font></b>",
        "\r\n" + n +
            "<font size =-1 color = \"Red\"><b>Ghost.eng </b></font><font size=-2 color =#000000>should be "
            "in "
            "a folder named </font><font size=-1 color = \"Red\"><b> Dash9.</b></font><BR><BR>\r\n",
        "<font size=-1 color = \"Green\"><b>Hopper.wag </b></font><font size=-2 color =#000000>should be in "
        "a folder "
        "named </font><font size=-1 color = \"Red\"><b> Dash9.</b></font><BR>\r\n" +
            n +
            "<font size=-2>An alternate version was found in a folder named </font><font size=-1 color = "
            "\"Blue\"><b>"
            "ore.</b></font>\r\n<BR><BR>\r\n"})
    EXPECT_TRUE(Contains(page, part)) << part;
  EXPECT_FALSE(Contains(page, "were found.") || Contains(page, "no missing"));
  EXPECT_TRUE(page.ends_with("</TD></TR></table>\r\n</font></body>\r\n"));
}

TEST_F(CheckupTest, TheReportIsWrittenOnceMoreWheneverTheManagerComesBack) {
  KeepSession();
  ASSERT_EQ(Checkup(), 0);
  Remove(DataPath("misc_info\\report.html"));
  ASSERT_EQ(Run("help", "frmRoutes"), 0);
  EXPECT_TRUE(Exists(DataPath("misc_info\\report.html")));
  const std::string page = ReadBytes(DataPath("misc_info\\report.html"));
  for (const char* none : {"No problem activities were found.", "No problem services were found.",
                           "No problem consists were found.", "There are no missing locomotives.",
                           "There are no missing wagons."})
    EXPECT_TRUE(Contains(page, none)) << none;
  ASSERT_EQ(Run("report"), 0);
  EXPECT_FALSE(IsShown("frmActivityCheck"));
  EXPECT_TRUE(Contains(Texts("open", "path").front(), "temp.html"));
}

}  // namespace
}  // namespace quillon
