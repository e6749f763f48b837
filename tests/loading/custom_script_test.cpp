// The custom script of a route, line by line.
#include "core/text/Text.h"
#include "tests/world/TestProgram.h"

namespace quillon {
namespace {

class CustomScriptTest : public ProgramTest {
 protected:
  CustomScriptTest() {
    EXPECT_EQ(FirstRun(), 0);
    StoreRoute("valley", "Valley",
               {Entry("valley/valley.trk", "track"), Entry("valley/Tiles/v.t"),
                Entry("valley/Shapes/own.s", "own shape"), Entry("valley/TerrTex/Snow/field.ace", "field"),
                Entry("valley/Sound/old.wav", "old")});
    StoreRoute("hill", "Hill", {Entry("hill/hill.trk", "track")});
    SetIni("scripts.ini", "valley", "Script", "Valley Line");
  }

  int LoadWith(const std::string& script) {
    Write(DataPath("misc_info\\custom_scripts\\Valley Line\\custom.cst"), script);
    return Run("load", "Valley");
  }
  bool Lists(const std::string& list, const std::string& below) const {
    return Contains(ReadBytes(DataPath(list)), Game() + "\\Routes\\Quillon-route\\" + below + "\r\n");
  }
};

TEST_F(CustomScriptTest, CopiesCoverAndTheNextLoadGivesBack) {
  Write(GamePath("ROUTES\\USA2\\Textures\\rock.ace"), "rock");
  Play("Textures\\rock.ace", "default rock");
  ASSERT_EQ(LoadWith("copy \\Shapes\\, \\Marks\\ ! own.s\r\n"
                     "TSCOPY whatever \\Routes\\USA2\\Textures\\ ,\\Textures\\! rock.ace \r\n"
                     "copy \\Shapes\\, \\Marks\\ ! missing.s\r\n"
                     "copy \\Shapes\\, \\Star\\ ! *.s\r\n"
                     "copy \\Shapes\\, \\Marks\\ !\r\n"
                     "copy \\Shapes\\, \\Many\\ ! o?n.s\r\n"
                     " copy \\Shapes\\, \\Blank\\ ! own.s\r\n"),
            0);
  EXPECT_EQ(Working("Marks\\own.s"), "own shape");
  EXPECT_EQ(Working("Textures\\rock.ace"), "rock");
  EXPECT_EQ(Working("Textures\\ts-bak-rock.ace"), "default rock");
  EXPECT_TRUE(Lists("current.tsl", "Marks\\own.s") && Lists("current.tsl", "Textures\\rock.ace"));
  EXPECT_TRUE(Lists("default.tsl", "Textures\\ts-bak-rock.ace"));
  EXPECT_FALSE(Exists(WorkingPath("Star")) || Exists(WorkingPath("Blank")));
  EXPECT_EQ(Working("Many\\own.s"), "own shape");
  ASSERT_EQ(Run("load", "Hill"), 0) << Last("error");
  EXPECT_FALSE(Exists(WorkingPath("Many\\own.s"))) << "a line with a wildcard names all that matches";
  EXPECT_EQ(Working("Textures\\rock.ace"), "default rock");
  EXPECT_FALSE(Exists(WorkingPath("Marks\\own.s")) || Exists(WorkingPath("Textures\\ts-bak-rock.ace")));
}

TEST_F(CustomScriptTest, WhatALineHasCopiedIsThereForTheNextOne) {
  Play("Shapes\\ts-bak-own.s", "a backup");
  EXPECT_NE(LoadWith("copy \\Shapes\\, \\Marks\\ ! own.s\r\n"
                     "copy \\Marks\\, \\More\\ ! own.s\r\n"
                     "rename \\More\\, own.s ! first.s\r\n"
                     "copy \\Shapes\\, \\More\\ ! own.s\r\n"
                     "copy \\Shapes\\, \\More\\ ! OWN.S\r\n"
                     "copy \\Shapes\\, \\Swap\\ ! ts-bak-own.s\r\n"
                     "copy \\Shapes\\, \\Swap\\ ! own.s\r\n"
                     "copy \\Shapes\\, \\Swap\\ ! ts-bak-own.s\r\n"
                     "copy without an end\r\n"),
            0);
  EXPECT_EQ(Working("More\\first.s"), "own shape");
  EXPECT_EQ(Working("More\\own.s"), "own shape");
  EXPECT_EQ(Working("More\\ts-bak-own.s"), "own shape") << "the second copy covers the first";
  EXPECT_EQ(Working("Swap\\own.s"), "own shape");
  EXPECT_EQ(Working("Swap\\ts-bak-own.s"), "a backup");
  EXPECT_EQ(Working("Swap\\ts-bak-ts-bak-own.s"), "a backup");
  ASSERT_EQ(Run("load", "Hill"), 0) << Last("error");
  EXPECT_FALSE(Exists(WorkingPath("Marks\\own.s")) || Exists(WorkingPath("Swap\\ts-bak-ts-bak-own.s")))
      << "what a script has copied before it failed is listed";
  ASSERT_EQ(Run("clean"), 0) << Last("error");
  EXPECT_FALSE(Exists(WorkingPath("More")) || Exists(WorkingPath("Swap")));
}

TEST_F(CustomScriptTest, DeletesRenamesAndClearsAttributes) {
  Write(AppPath("routes\\extra.txt"), "below the application folder");
  ASSERT_EQ(LoadWith("del \\Sound\\, old.wav !\r\n"
                     "delete \\Shapes\\, own.s !\r\n"
                     "rename \\Shapes\\, own.s ! new.s\r\n"
                     "RemoveFromQN \\routes\\, extra.txt !\r\n"
                     "removefromqn \\routes\\, *.qnz !\r\n"
                     "deldir \\TerrTex\\Snow\\,\r\n"
                     "setattr \\Shapes\\, nothing.s !\r\n"),
            0);
  EXPECT_FALSE(Exists(WorkingPath("Sound\\old.wav")) || Exists(WorkingPath("Shapes\\own.s")));
  EXPECT_EQ(Working("Shapes\\new.s"), "own shape");
  EXPECT_FALSE(Exists(AppPath("routes\\extra.txt")) || Exists(WorkingPath("TerrTex\\Snow")));
  EXPECT_TRUE(Exists(AppPath("routes\\valley.qnz")));
}

TEST_F(CustomScriptTest, HeavySnowCoversEveryListedTexture) {
  Write(GamePath("ROUTES\\Europe2\\TerrTex\\Snow\\oegenfield3.ace"), "deep snow");
  Write(DataPath("misc_info\\snowmaker.tsl"), "field.ace\r\nnew.ace\r\n");
  ASSERT_EQ(LoadWith("!HeavySnow\r\n"), 0);
  EXPECT_EQ(Working("TerrTex\\Snow\\field.ace") + Working("TerrTex\\Snow\\new.ace"), "deep snowdeep snow");
  EXPECT_EQ(Working("TerrTex\\Snow\\ts-bak-field.ace"), "field");
  EXPECT_FALSE(Lists("current.tsl", "TerrTex\\snow\\field.ace"));
}

TEST_F(CustomScriptTest, MessagesGatherAndTheLastOneIsShown) {
  ASSERT_EQ(LoadWith("msgstart\r\nmsg++ One \r\nmsgbox\r\nmsgend\r\nmsgstart\r\nMSG++Two\r\nMsgEnd\r\n"), 0);
  Strings told;
  for (const auto& event : Events("text"))
    if (event["screen"] == "frmCustomMessage") told.push_back(event["text"]);
  EXPECT_EQ(told, (Strings{"\r\n One ", "\r\n One \r\nTwo"}));
  EXPECT_TRUE(IsShown("frmCustomMessage"));
  ASSERT_EQ(Run("load", "Hill"), 0);
  EXPECT_FALSE(IsShown("frmCustomMessage"));
}

TEST_F(CustomScriptTest, ALineThatCannotBeTakenApartEndsTheLoad) {
  const std::string commands[] = {"copying is a comment",     "copy \\Shapes\\ own.s",
                                  "del , \\Sound\\ !",        "tscopy \\a\\, \\b\\ rock.ace",
                                  "rename ! \\a\\, b",        "deldir \\Shapes\\",
                                  "setattr \\Shapes\\, own.s"};
  for (const auto& command : commands) {
    EXPECT_EQ(LoadWith("msg++before\r\n" + command + "\r\n"), 1) << command;
    EXPECT_EQ(LastError(), 5) << command;
    EXPECT_TRUE(LastErrorPath().ends_with("custom.cst"));
    EXPECT_TRUE(std::string(Last("error")["reason"]).starts_with("line 2 ")) << Last("error");
    EXPECT_EQ(Loaded(), "No Data!") << "the load is not recorded";
  }
  EXPECT_EQ(LoadWith("rename \\Shapes\\, own.s ! own.s\r\n"), 0) << "a name may be its own new name";
  EXPECT_EQ(LoadWith("copy \\Shapes\\, \\Marks\\ ! own.s\r\nrename \\, valley.trk ! Valley.trk\r\n"
                     "copy \\Shapes\\, \\Shapes\\ ! x\r\nrename \\Shapes\\, own.s ! ..\\valley.trk\r\n"),
            1);
  EXPECT_EQ(LastError(), 58);
}

TEST_F(CustomScriptTest, AStrangersNameLeadsNowhereElse) {
  SetIni("scripts.ini", "valley", "Script", "..\\..\\..\\..\\routes\\custom\\valley");
  Write(AppPath("routes\\custom\\valley\\custom.cst"), "removefromqn \\routes\\, hill.qnz !\r\n");
  ASSERT_EQ(Run("load", "Valley"), 0);
  EXPECT_TRUE(Exists(AppPath("routes\\hill.qnz")));
}

}  // namespace
}  // namespace quillon
