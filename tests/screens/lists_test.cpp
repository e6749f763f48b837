// The lists and lamps of the main screen.
#include <QToolTip>

#include "catalogue/MainScreen.h"
#include "core/text/Text.h"
#include "tests/screens/ScreensTest.h"

namespace quillon {
namespace {

class ListsTest : public ScreensTest {
 protected:
  MainScreen& Main() { return ModelOf<MainScreen>("frmMain"); }
  HoverList& Routes() { return Control<HoverList>("frmMain", "ListRoutes"); }
  void StoreMany(int count) {
    for (int i = 10; i < 10 + count; ++i)
      StoreRoute("r" + std::to_string(i), "Route " + std::to_string(i), {});
  }
  std::string Loaded() { return Ini("routes.ini", "Current", "Loaded"); }
};

TEST_F(ListsTest, ThePreviewFollowsThePointerWithADelay) {
  StoreMany(3);
  Start();
  Click("frmMain", "btnRouteList");
  const std::string before = Main().imgRoute;
  Hover(Routes(), RowAt(Routes(), 1));
  EXPECT_EQ(Main().imgRoute, before);
  EXPECT_TRUE(WaitFor([&] { return Main().imgRoute.ends_with("tsr11.jpg"); }));
  EXPECT_FALSE(Main().Timer1.enabled);
}

TEST_F(ListsTest, ThePointerNearAnEdgeScrollsToTheEnd) {
  StoreMany(20);
  Start();
  Click("frmMain", "btnRouteList");
  Hover(Routes(), {40, 75});
  EXPECT_TRUE(WaitFor([&] { return Main().ListRoutes.top == 15; })) << Main().ListRoutes.top;
  QTest::qWait(30);
  EXPECT_EQ(Main().ListRoutes.top, 15) << "five rows fit";
  Hover(Routes(), {40, 40});
  EXPECT_FALSE(Main().TimerDown.enabled);
  EXPECT_EQ(Ini("routes.ini", "Current", "Zip"), "r27");
  Hover(Routes(), {40, 1});
  EXPECT_TRUE(WaitFor([&] { return Main().ListRoutes.top == 0; }));
}

TEST_F(ListsTest, ARightPressOffersRemovalAndNoChangesNothing) {
  StoreMany(2);
  Start();
  const auto routes = Tree(AppPath("routes"));
  Click("frmMain", "btnRouteList");
  Press(Routes(), 1, Qt::RightButton);
  auto& tools = Control<HoverList>("frmMain", "toolsList");
  ASSERT_TRUE(tools.isVisible());
  EXPECT_FALSE(ButtonOf("frmMain", "btnLoad").isEnabled());
  EXPECT_EQ(Main().toolsListHeader.rows, (Strings{"Route Name: Route 11", "Zipfile Name: r11"}));
  Hover(tools, RowAt(tools, 0));
  EXPECT_EQ(Main().toolsList.current, -1) << "the question can't be chosen";
  Hover(tools, RowAt(tools, 1));
  EXPECT_EQ(Main().toolsList.current, 1);
  AnswerBoxes("No");
  Press(tools, 1);
  EXPECT_EQ(boxes_, "Remove route?|Are you sure you want to completely remove Route 11 from Quillon?");
  EXPECT_FALSE(tools.isVisible());
  EXPECT_TRUE(ButtonOf("frmMain", "btnLoad").isEnabled());
  EXPECT_EQ(Tree(AppPath("routes")), routes);
}

TEST_F(ListsTest, TheLoadedRouteIsOfferedToBeMadePermanent) {
  StoreMany(1);
  SetIni("routes.ini", "Current", "Loaded", "r10");
  Start();
  Click("frmMain", "btnRouteList");
  Press(Routes(), 0, Qt::RightButton);
  EXPECT_TRUE(Main().PermanentMode);
  EXPECT_EQ(Main().toolsList.rows.front(), " Make this route permanent?");
  EXPECT_EQ(Main().toolsListHeader.rows.front(), "Route Name: Route 10 (Loaded)");
  auto& tools = Control<HoverList>("frmMain", "toolsList");
  Press(tools, 2);
  EXPECT_FALSE(tools.isVisible());
  EXPECT_EQ(Loaded(), "r10");
}

TEST_F(ListsTest, TheSignalOfTheLoadedRouteOpensItsPage) {
  StoreMany(2);
  SetIni("routes.ini", "Current", "Loaded", "r10");
  Write(DataPath("misc_info\\playable.ini"),
        "[r10]\r\nPlayable=9\r\nOf=12\r\n[Quillon-route]\r\nRoute=r10\r\n");
  Start();
  auto& sign = ButtonOf("frmMain", "signPlayable");
  ASSERT_EQ(View("frmMain").childAt(Control<QLabel>("frmMain", "lblPlayable").geometry().center()), &sign);
  Click("frmMain", "btnRouteList");
  Hover(Routes(), RowAt(Routes(), 1));
  EXPECT_FALSE(sign.isVisible());
  Hover(Routes(), RowAt(Routes(), 0));
  QTest::keyClick(&sign, Qt::Key_Return);
  EXPECT_FALSE(Routes().isVisible());
  EXPECT_EQ(frontEnd_.opened, program_->Get().app.CausesOfLoaded());
}

TEST_F(ListsTest, AClickBesideTheListClosesIt) {
  StoreMany(2);
  Start();
  Click("frmMain", "btnRouteList");
  Hover(Routes(), RowAt(Routes(), 1));
  QTest::mouseClick(&View("frmMain"), Qt::LeftButton, {}, {500, 300});
  EXPECT_FALSE(Routes().isVisible());
  EXPECT_TRUE(ButtonOf("frmMain", "btnExit").isVisible());
  EXPECT_EQ(TextOf("frmMain", "lblRouteName"), "Route 11") << "the row under the pointer stays the choice";
}

TEST_F(ListsTest, InfoFilesAreShownOverTheBoard) {
  StoreMany(1);
  Write(AppPath("routes\\route_info\\r10\\readme.txt"), "");
  Write(AppPath("routes\\route_info\\r10\\track.bmp"), "");
  Start();
  Click("frmMain", "btnRouteList");
  Press(Routes(), 0);
  Click("frmMain", "btnInfo");
  auto& info = Control<HoverList>("frmMain", "infoList");
  EXPECT_TRUE(info.isVisible());
  EXPECT_EQ(Main().infoList.rows, Strings{"readme.txt"});
  QTest::keyClick(&info, Qt::Key_Escape);
  EXPECT_FALSE(info.isVisible());
  QTest::keyClick(&ButtonOf("frmMain", "btnInfo"), Qt::Key_Return);
  QTest::keyClick(&info, Qt::Key_Down);
  QTest::keyClick(&info, Qt::Key_Return);
  EXPECT_TRUE(frontEnd_.opened.ends_with("\\readme.txt")) << frontEnd_.opened;
}

TEST_F(ListsTest, ByKeysTheMenuOffersNoFirstAndNeverTheQuestion) {
  StoreMany(2);
  Start();
  Click("frmMain", "btnRouteList");
  QTest::keyClick(&Routes(), Qt::Key_Down);
  QTest::keyClick(&Routes(), Qt::Key_F10, Qt::ShiftModifier);
  auto& tools = Control<HoverList>("frmMain", "toolsList");
  ASSERT_TRUE(tools.hasFocus());
  const auto current = [&](Qt::Key key) {
    QTest::keyClick(&tools, key);
    return Main().toolsList.current;
  };
  EXPECT_EQ(Main().toolsList.current, 2);
  EXPECT_EQ(current(Qt::Key_Up), 1);
  EXPECT_EQ(current(Qt::Key_Up), 1);
  EXPECT_EQ(current(Qt::Key_End), 2);
  EXPECT_EQ(current(Qt::Key_Home), 1);
  AnswerBoxes("No");
  QTest::keyClick(&tools, Qt::Key_Return);
  EXPECT_TRUE(Contains(boxes_, "completely remove Route 10")) << boxes_;
  EXPECT_FALSE(tools.isVisible());
}

TEST_F(ListsTest, TheListOpensAtTheChoice) {
  StoreMany(40);
  SetIni("routes.ini", "Current", "Loaded", "r30");
  Start();
  ASSERT_EQ(TextOf("frmMain", "lblRouteName"), "Route 30");
  Click("frmMain", "btnRouteList");
  EXPECT_EQ(Main().ListRoutes.top, 18);
  EXPECT_EQ(Main().ListRoutes.current, -1);
  QTest::keyClick(&Routes(), Qt::Key_Down);
  EXPECT_EQ(Ini("routes.ini", "Current", "Zip"), "r30");
  QTest::keyClick(&Routes(), Qt::Key_Down);
  EXPECT_EQ(Ini("routes.ini", "Current", "Zip"), "r31");
}

TEST_F(ListsTest, ALongNameIsToldWhole) {
  const std::string name(103, 'x');
  StoreRoute("r", name, {});
  StoreRoute("s", "Y", {});
  Start();
  Click("frmMain", "btnRouteList");
  QTest::keyClick(&Routes(), Qt::Key_Home);
  EXPECT_EQ(QToolTip::text().toStdString(), name);
  QTest::keyClick(&Routes(), Qt::Key_End);
  EXPECT_TRUE(WaitFor([] { return !QToolTip::isVisible(); }));
}

TEST_F(ListsTest, OnlyTheBackgroundClosesTheListAndTheCloseButtonTheWindow) {
  StoreMany(2);
  Start();
  Click("frmMain", "btnRouteList");
  for (const char* label : {"imgRoute", "lblRouteName"})
    QTest::mouseClick(&Control<QLabel>("frmMain", label), Qt::LeftButton);
  EXPECT_TRUE(Routes().isVisible());
  QTest::mouseClick(&Control<QLabel>("frmMain", "lblRightClick"), Qt::LeftButton);
  EXPECT_FALSE(Routes().isVisible());
  Click("frmMain", "btnRouteList");
  View("frmMain").close();
  EXPECT_TRUE(program_->Screens().Ended());
}

TEST_F(ListsTest, AButtonBlinksToSayWhatToDoNext) {
  Start();
  EXPECT_EQ(program_->Get().shared.FlashTarget, "manage") << "there is no route yet";
  EXPECT_TRUE(WaitFor([&] { return Main().btnManage.picture == "manageover"; }, 2000));
  EXPECT_TRUE(WaitFor([&] { return Main().btnManage.picture == "manageoff"; }, 2000));
  EXPECT_EQ(Main().btnLoad.picture, "loadoff");
  EXPECT_FALSE(TextOf("frmMain", "lblHint").empty());
}

TEST_F(ListsTest, WithoutTheGameTheWayToItIsShown) {
  Remove(GamePath("train.exe"));
  Start();
  EXPECT_NE(TextOf("frmMain", "lblHint").find("Train Simulator was not found"), std::string::npos);
  AnswerBoxes("OK");
  Click("frmMain", "btnLoad");
  EXPECT_EQ(
      boxes_,
      "Train Simulator not found!|You must enter the correct path to Train Simulator on the Quillon Options "
      "screen.");
  Click("frmMain", "btnOptions");
  EXPECT_EQ(TextOf("frmOptions", "lblHint"), "There is no train.exe in this folder.");
  EXPECT_TRUE(WaitFor([&] { return program_->Get().shared.FlashTarget == "locate"; }));
}

}  // namespace
}  // namespace quillon
