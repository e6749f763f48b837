// The board of all routes by keys, and the way out of a start that a missing preview ends.
#include <QLineEdit>

#include "catalogue/MainScreen.h"
#include "screens/controls/FlapBoard.h"
#include "tests/screens/ScreensTest.h"

namespace quillon {
namespace {

class TimetableViewTest : public ScreensTest {
 protected:
  TimetableViewTest() {
    for (const auto& [zip, name] : {std::pair{"a", "Alder Valley"}, {"b", "Birkdale"}, {"c", "Cöln"}})
      StoreRoute(zip, name, RouteEntries(name));
  }
  /// Does so on the board as soon as it can be worked with.
  void OnBoard(const std::function<void(FlapBoard&, QLineEdit&)>& act) {
    QTimer ready;
    QObject::connect(&ready, &QTimer::timeout, [&] {
      if (!IsOpen("frmTimetable") || View("frmTimetable").findChild<QPushButton*>("btnOK") == nullptr) return;
      auto& board = Control<FlapBoard>("frmTimetable", "ListTimetable");
      if (board.model()->rowCount() == 0) return;
      ready.stop();
      act(board, Control<QLineEdit>("frmTimetable", "txtFilter"));
    });
    ready.start(10);
    Click("frmMain", "btnTimetable");
    EXPECT_FALSE(IsOpen("frmTimetable"));
  }
};

TEST_F(TimetableViewTest, FindsRemovesAndClosesByKeys) {
  Start();
  for (const char* button : {"Yes", "OK"}) AnswerBoxes(button);
  OnBoard([this](FlapBoard& board, QLineEdit& filter) {
    QTest::keyClicks(&filter, "coln");
    EXPECT_EQ(board.model()->rowCount(), 1);
    EXPECT_EQ(TextOf("frmTimetable", "lblName"), "Cöln");
    QTest::keyClick(&filter, Qt::Key_Escape);
    ASSERT_TRUE(IsOpen("frmTimetable")) << "first all routes come back";
    EXPECT_EQ(board.model()->rowCount(), 3);
    EXPECT_TRUE(View("frmTimetable").styleSheet().isEmpty()) << "boxes over it would take it on";
    // As a batch of events brings them: nothing has been told in between.
    QTest::keyClick(&board, Qt::Key_Home);
    QTest::keyClick(&board, Qt::Key_Down, Qt::ShiftModifier);
    QTest::keyClick(&board, Qt::Key_Delete);
    EXPECT_EQ(board.model()->rowCount(), 1) << boxes_;
    QTest::keyClick(&board, Qt::Key_End);
    QTest::keyClick(&board, Qt::Key_Escape);
  });
  QApplication::processEvents();  // what was still to be told is told to nobody
  EXPECT_FALSE(Exists(AppPath("routes\\a.qnz")) || Exists(AppPath("routes\\b.qnz")));
  EXPECT_TRUE(Exists(AppPath("routes\\c.qnz")));
}

TEST_F(TimetableViewTest, EnterClosesTheBoardAndLoads) {
  Start();
  QTimer finished;
  QObject::connect(&finished, &QTimer::timeout, [&] {
    if (IsOpen("frmLoad") && ButtonOf("frmLoad", "btnOK").isEnabled()) Click("frmLoad", "btnOK");
  });
  finished.start(10);
  OnBoard([this](FlapBoard& board, QLineEdit&) {
    EXPECT_EQ(View("frmTimetable").focusWidget(), &board) << "also after the rows were read";
    QTest::keyClick(&board, Qt::Key_B);
    EXPECT_EQ(TextOf("frmTimetable", "lblName"), "Birkdale");
    QTest::keyClick(&board, Qt::Key_Return);
  });
  EXPECT_EQ(Loaded(), "b");
  EXPECT_EQ(TextOf("frmMain", "lblRouteName"), "Birkdale");
}

TEST_F(TimetableViewTest, AMissingPreviewIsRepairedAndTheProgramGoesOn) {
  SetIni("routes.ini", "Current", "Loaded", "b");
  Remove(AppPath("routes\\tsb.jpg"));
  AnswerBoxes("Repair and go on");
  program_ = std::make_unique<RunningProgram>(App(), frontEnd_);
  frontEnd_.Serve(*program_);
  EXPECT_EQ(frontEnd_.Run(), DesktopFrontEnd::kStartAgain) << boxes_;
  EXPECT_TRUE(Exists(AppPath("routes\\tsb.jpg")));
  Start();
  EXPECT_EQ(TextOf("frmMain", "lblRouteName"), "Birkdale");
}

}  // namespace
}  // namespace quillon
