// The main cycle, once by mouse and once by keys: add a route, choose it, load it.
#include "catalogue/MainScreen.h"
#include "core/host/Desktop.h"
#include "core/text/Text.h"
#include "intake/InitProgScreen.h"
#include "tests/screens/ScreensTest.h"

namespace quillon {
namespace {

class MainCycleTest : public ScreensTest {
 protected:
  /// The screen behind `ok` is modal: its button is clicked as soon as the work is done.
  void WhenFinished(const char* screen, const std::function<void()>& act) {
    auto* timer = new QTimer(&timers_);
    QObject::connect(timer, &QTimer::timeout, timer, [this, timer, screen, act] {
      if (!IsOpen(screen) || !ButtonOf(screen, "btnOK").isEnabled()) return;
      timer->deleteLater();
      timer->stop();
      act();
    });
    timer->start(10);
  }

 private:
  QObject timers_;
};

TEST_F(MainCycleTest, ByMouse) {
  Drop("foo.zip", RouteEntries("Foo Line"));
  Start();
  EXPECT_EQ(TextOf("frmMain", "lblRouteName"), "No route loaded.");

  Click("frmMain", "btnManage");
  ASSERT_TRUE(IsOpen("frmRoutes"));
  EXPECT_FALSE(IsOpen("frmMain"));
  std::string finish;
  WhenFinished("frmInitProg", [&] {
    finish = ModelOf<InitProgScreen>("frmInitProg").bar.caption;
    Click("frmInitProg", "chkReport");
    Click("frmInitProg", "btnOK");
  });
  Click("frmRoutes", "cmdAddRoutes");
  EXPECT_EQ(finish, "Finished adding 1 new route.");
  EXPECT_FALSE(program_->Get().shared.ShowIntakeReport);
  Click("frmRoutes", "btnOK");

  Click("frmMain", "btnRouteList");
  auto& list = Control<HoverList>("frmMain", "ListRoutes");
  EXPECT_FALSE(ButtonOf("frmMain", "btnLoad").isVisible());
  Hover(list, RowAt(list, 0));
  EXPECT_EQ(Ini("routes.ini", "Current", "Temp"), "Foo Line") << "hovering is selecting";
  EXPECT_EQ(TextOf("frmMain", "lblRouteName"), "No route loaded.");
  Press(list, 0);
  EXPECT_EQ(TextOf("frmMain", "lblRouteName"), "Foo Line");
  EXPECT_FALSE(list.isVisible());
  EXPECT_TRUE(WaitFor([&] { return ButtonOf("frmMain", "btnLoad").isVisible(); }));

  bool others = true;
  WhenFinished("frmLoad", [&] {
    finish = TextOf("frmLoad", "lblMessage");
    others = ButtonOf("frmMain", "btnManage").isEnabled() || ButtonOf("frmMain", "btnExit").isEnabled();
    Click("frmLoad", "btnOK");
  });
  WhenFinished("frmCustomConsist", [&] { Click("frmCustomConsist", "btnOK"); });
  Click("frmMain", "btnLoad");
  EXPECT_TRUE(finish.starts_with("Foo Line is now loaded into Train Simulator.")) << finish;
  EXPECT_FALSE(others) << "nothing else can be started during a load";
  EXPECT_TRUE(ButtonOf("frmMain", "btnManage").isEnabled());
  EXPECT_EQ(TextOf("frmMain", "lblLoaded"), "Currently loaded route");
  EXPECT_TRUE(Exists(WorkingPath("foo.trk")) || Exists(WorkingPath("route.trk")));

  Click("frmMain", "btnExit");
  EXPECT_TRUE(program_->Screens().Ended());
}

TEST_F(MainCycleTest, ByKeys) {
  for (const std::string name : {"Alpha", "Beta", "Gamma"})
    StoreRoute(LowerCase(name), name, RouteEntries(name));
  Start();
  auto& main = View("frmMain");
  ButtonOf("frmMain", "btnRouteList").setFocus();
  QTest::keyClick(&ButtonOf("frmMain", "btnRouteList"), Qt::Key_Return);
  auto& list = Control<HoverList>("frmMain", "ListRoutes");
  ASSERT_TRUE(list.hasFocus());
  const auto selected = [&] { return Ini("routes.ini", "Current", "Temp"); };
  QTest::keyClick(&list, Qt::Key_Down);
  EXPECT_EQ(selected(), "Alpha");
  QTest::keyClick(&list, Qt::Key_End);
  EXPECT_EQ(selected(), "Gamma");
  QTest::keyClick(&list, 'b');
  EXPECT_EQ(selected(), "Beta") << "typing finds";
  QTest::keyClick(&list, Qt::Key_Escape);
  EXPECT_FALSE(list.isVisible());
  EXPECT_EQ(TextOf("frmMain", "lblRouteName"), "Beta");

  Click("frmMain", "btnRouteList");
  QTest::keyClick(&list, Qt::Key_Home);
  QTest::keyClick(&list, Qt::Key_Return);
  EXPECT_EQ(TextOf("frmMain", "lblRouteName"), "Alpha");
  ASSERT_TRUE(WaitFor([&] { return ButtonOf("frmMain", "btnLoad").isVisible(); }));
  ASSERT_TRUE(QTest::qWaitForWindowActive(&main));
  for (const char* screen : {"frmLoad", "frmCustomConsist"})
    WhenFinished(screen, [&, screen] { QTest::keyClick(&View(screen), Qt::Key_Return); });
  QTest::keyClick(&main, Qt::Key_L, Qt::AltModifier);
  EXPECT_TRUE(WaitFor([&] { return Ini("routes.ini", "Current", "Loaded") == "alpha"; }));
  EXPECT_TRUE(WaitFor([&] { return !IsOpen("frmLoad") && !IsOpen("frmCustomConsist"); }));

  ASSERT_TRUE(QTest::qWaitForWindowActive(&main));
  const auto& exit = ButtonOf("frmMain", "btnExit");
  EXPECT_TRUE(WaitFor([&] { return exit.hasFocus(); })) << "another Return must not load again";
  QTest::keyClick(&main, Qt::Key_R, Qt::AltModifier);
  ASSERT_TRUE(WaitFor([&] { return IsOpen("frmRoutes"); }));
  QTest::keyClick(&View("frmRoutes"), Qt::Key_Escape);
  EXPECT_TRUE(IsOpen("frmMain"));
}

TEST_F(MainCycleTest, AnErrorEndsTheProgramAndSaysWhy) {
  StoreRoute("foo", "Foo", RouteEntries("Foo"));
  Start();
  Remove(AppPath("routes\\tsfoo.jpg"));
  Click("frmMain", "btnRouteList");
  auto& list = Control<HoverList>("frmMain", "ListRoutes");
  AnswerBoxes("Close");
  QTimer::singleShot(0, [&] { Hover(list, RowAt(list, 0)); });
  EXPECT_EQ(frontEnd_.Run(), 1) << "the preview that Timer1 loads is missing";
  EXPECT_NE(boxes_.find("File not found"), std::string::npos) << boxes_;
  EXPECT_NE(boxes_.find("tsfoo.jpg"), std::string::npos) << boxes_;
}

TEST_F(MainCycleTest, TheGameStartsInPlaceOfTheProgram) {
  StoreRoute("foo", "Foo", RouteEntries("Foo"));
  Start();
  Click("frmMain", "btnRouteList");
  auto& list = Control<HoverList>("frmMain", "ListRoutes");
  Hover(list, RowAt(list, 0));
  Press(list, 0);
  ASSERT_TRUE(WaitFor([&] { return ButtonOf("frmMain", "btnLoad").isVisible(); }));
  WhenFinished("frmLoad", [&] { Click("frmLoad", "btnStart"); });
  WhenFinished("frmCustomConsist", [&] { Click("frmCustomConsist", "btnOK"); });
  Click("frmMain", "btnLoad");
  EXPECT_TRUE(program_->Screens().Ended());
  EXPECT_EQ(frontEnd_.game, Game() + "\\train.exe");
}

TEST_F(MainCycleTest, AnotherStartBringsTheWindowBack) {
  Start();
  View("frmMain").showMinimized();
  ASSERT_TRUE(program_->CallOther());
  EXPECT_TRUE(WaitFor([&] { return !View("frmMain").isMinimized(); }));
}

TEST_F(MainCycleTest, WhatWasDeliveredIsLaidAgain) {
  const std::string file = DataPath("misc_info\\tsnone.jpg"), bytes = ReadBytes(file);
  Remove(file);
  program_ = std::make_unique<RunningProgram>(App(), frontEnd_);
  frontEnd_.Serve(*program_);
  AnswerBoxes("Lay them again and go on");
  ASSERT_EQ(frontEnd_.Run(), DesktopFrontEnd::kStartAgain) << boxes_;
  EXPECT_EQ(ReadBytes(file), bytes);
  program_.reset();
  Start();
  EXPECT_TRUE(IsOpen("frmMain"));
}

TEST_F(MainCycleTest, ASecondProgramIsRefused) {
  const auto lock = TakeInstanceLock(AppPath("quillon.lock"));
  ASSERT_NE(lock, nullptr);
  const auto before = Tree(App());
  AnswerBoxes("OK");
  Start();
  EXPECT_EQ(boxes_, "Quillon|Quillon is already running.");
  EXPECT_TRUE(program_->Screens().Ended());
  EXPECT_EQ(Tree(App()), before);
}

}  // namespace
}  // namespace quillon
