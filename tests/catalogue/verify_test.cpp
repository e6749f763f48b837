// The catalogue against the files: what is found, what a repair brings back, and what works after it.
#include "core/text/Text.h"
#include "tests/world/TestProgram.h"

namespace quillon {
namespace {

class VerifyTest : public ProgramTest {
 protected:
  VerifyTest() {
    FirstRun();
    options.answerYes = true;
    EXPECT_EQ(AddRoute("foo.zip", "Line"), 0);
    EXPECT_EQ(AddRoute("bar.zip", "Line"), 0);
    EXPECT_EQ(AddRoute("baz.zip", "Other"), 0);
  }
  int Verify(bool repair = false, bool deep = false) {
    return Run(Command{.name = "verify", .deep = deep, .repair = repair});
  }
  /// "kind zip", with a star when it was repaired.
  Strings Findings() const {
    Strings found;
    for (const auto& event : Events("finding"))
      found.push_back(event["kind"].get<std::string>() + " " + event["zip"].get<std::string>() +
                      (event["repaired"].get<bool>() ? " *" : ""));
    return found;
  }
  /// A repair that leaves nothing, and a second look that finds nothing.
  void ExpectHealed(const Strings& findings) {
    EXPECT_EQ(Verify(true), 0);
    EXPECT_EQ(Findings(), findings);
    EXPECT_EQ(Verify(), 0);
    EXPECT_EQ(Findings(), Strings());
  }
};

TEST_F(VerifyTest, ALostCatalogueComesBackAndAllGoesOn) {
  for (const std::string catalogue : {"", "\x01\x02[[no catalogue\n=\n"}) {
    Write(DataPath("routes.ini"), catalogue);
    EXPECT_EQ(Verify(), 3);
    EXPECT_EQ(Findings(), (Strings{"no entry bar", "no entry baz", "no entry foo"}));
    ExpectHealed({"no entry bar *", "no entry baz *", "no entry foo *"});
    EXPECT_EQ(Run("routes"), 0);
    EXPECT_EQ(Texts("row"), (Strings{"Line", "Line (2)", "Other"}));
  }
  ASSERT_EQ(Run("load", "Line (2)"), 0);
  EXPECT_EQ(Loaded(), "foo");
  ASSERT_EQ(AddRoute("new.zip", "Line"), 0);
  EXPECT_EQ(Ini("routes.ini", "new", "Name"), "Line (3)");
  ASSERT_EQ(Run("remove", "Line"), 0);
  ASSERT_EQ(Run("clean"), 0);
  EXPECT_EQ(Verify(), 0);
}

TEST_F(VerifyTest, ARepairLeavesSelectionAndLoadedRouteAndCountsOnlyUp) {
  ASSERT_EQ(Run("load", "Other"), 0);
  DeleteSection("routes.ini", "bar");
  DeleteSection("routes.ini", "Line (2)");
  DeleteSection("routes.ini", "Versions");
  ExpectHealed({"no entry bar *"});
  EXPECT_EQ(Current({"Temp", "Loaded"}), "Other|baz");
  EXPECT_EQ(Ini("routes.ini", "bar", "Name"), "Line (2)");
  EXPECT_EQ(Ini("routes.ini", "Versions", "Line"), "2");

  // Half an entry can't be chosen either; its name is free.
  DeleteSection("routes.ini", "Other");
  ExpectHealed({"no entry baz *"});
  EXPECT_EQ(Ini("routes.ini", "Other", "Zip"), "baz");
  SetIni("routes.ini", "Versions", "Line", "9");
  DeleteSection("routes.ini", "foo");
  EXPECT_EQ(Verify(true), 0);
  EXPECT_EQ(Ini("routes.ini", "Versions", "Line"), "9");
  EXPECT_EQ(Ini("routes.ini", "foo", "Name"), "Line") << "that name still led to it";
}

TEST_F(VerifyTest, AMissingPreviewEndsTheStartOfAllOthersButIsRepaired) {
  ASSERT_EQ(Run("load", "Other"), 0);
  Remove(AppPath("routes\\tsbaz.jpg"));
  EXPECT_EQ(Run("start"), 1);
  EXPECT_EQ(LastError(), 53);
  EXPECT_EQ(Verify(), 3);
  EXPECT_EQ(Run("start"), 1) << "a look changes nothing";
  ExpectHealed({"no preview baz *"});
  EXPECT_EQ(Run("start"), 0);
  EXPECT_EQ(MainTexts({"lblRouteName"}), "Other");
  Remove(AppPath("routes\\tsbaz.jpg"));
  Write(DataPath("misc_info\\custom_previews\\tsbaz.jpg"), "own");
  ExpectHealed({"no preview baz *"});
  EXPECT_EQ(ReadBytes(AppPath("routes\\tsbaz.jpg")), "own");
}

TEST_F(VerifyTest, WhatCanNotBeHealedIsToldAndLeftAlone) {
  Remove(AppPath("routes\\foo.qnz"));
  Write(AppPath("routes\\Saves\\ghost\\one.sav"), "1");
  std::string bytes = ReadBytes(AppPath("routes\\bar.qnz"));
  const auto tile = bytes.find("PK\x03\x04", 1);
  bytes[tile + 45] = static_cast<char>(bytes[tile + 45] ^ 0x55);
  Write(AppPath("routes\\bar.qnz"), bytes);
  Write(AppPath("routes\\baz.qnz"), "no zip");
  const auto before = Tree(AppPath("routes"));
  EXPECT_EQ(Verify(true), 3);
  EXPECT_EQ(Findings(), (Strings{"no file foo", "store without route ghost", "damaged baz"}));
  EXPECT_EQ(Verify(true, true), 3);
  EXPECT_EQ(Findings(), (Strings{"no file foo", "store without route ghost", "damaged baz", "damaged bar"}));
  EXPECT_EQ(Tree(AppPath("routes")), before);
  // A removal leaves nothing that would be found.
  ASSERT_EQ(Run("remove", "Line (2)"), 0);
  EXPECT_EQ(Verify(), 3);
  EXPECT_EQ(Findings(), (Strings{"no file foo", "store without route ghost", "damaged baz"}));
}

TEST_F(VerifyTest, ASampleInstallationFitsTogetherAndLoads) {
  const std::string folder = FromPath(ToPath(Root()) / "many");
  ASSERT_EQ(Run(Command{.name = "sample", .argument = folder, .routes = 200}), 0);
  options.app = FromPath(ToPath(folder) / "app");
  EXPECT_EQ(Verify(), 0);
  EXPECT_EQ(Findings(), Strings());
  EXPECT_EQ(Run("load", "Ox"), 0);
  EXPECT_EQ(MainTexts({"lblRouteName"}), "Ox");
}

}  // namespace
}  // namespace quillon
